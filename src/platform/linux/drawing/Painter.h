#pragma once

#include "platform/linux/drawing/Request.h"

#include <functional>

namespace drawing {

/// Draws the picture into the square of that size at the context's origin. False where there is nothing to draw.
using Painter = std::function<bool(cairo_t*, int size)>;

/// Loads what is to be drawn, once for all sizes. Null where that is impossible.
[[nodiscard]] Painter painterFor(const Request& request);

/// The picture in one size, in the request's colour; null where there is nothing to draw.
[[nodiscard]] Surface draw(const Painter& painter, const Request& request, int size);

} // namespace drawing
