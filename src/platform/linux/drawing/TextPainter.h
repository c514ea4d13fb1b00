#pragma once

#include "platform/linux/drawing/Painter.h"

namespace drawing {

/// Draws the text at the font's size, or smaller where the square is too small for it, centred by what is inked.
/// Letters get the request's colour; emoji keep their own.
[[nodiscard]] Painter painterForText(const Request& request);

} // namespace drawing
