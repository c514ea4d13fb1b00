#pragma once

#include <optional>
#include <utility>

namespace desktop {

/// Where the pointer is, in the X11 screen's device pixels. None where there is no plain X11: a Wayland desktop tells
/// nobody. Asks over a connection that lasts for this call only, without the toolkit.
[[nodiscard]] std::optional<std::pair<int, int>> pointerPosition();

} // namespace desktop
