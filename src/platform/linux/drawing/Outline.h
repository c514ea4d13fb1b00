#pragma once

#include "platform/linux/drawing/Surface.h"

#include <optional>
#include <string>

namespace drawing {

/// The coverage of a square picture as a drawing of one path that takes the surroundings' colour, in a file that every
/// status area and toolkit can recolour: whatever the picture came from, hosts get to see nothing but that path. None
/// where there is no coverage or one that a path does not show: large parts half transparent.
[[nodiscard]] std::optional<std::string> outlineOf(const Surface& picture);

} // namespace drawing
