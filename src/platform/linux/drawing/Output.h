#pragma once

#include "platform/linux/drawing/Request.h"

#include <gio/gio.h>

namespace drawing {

/// A PNG file, ay.
[[nodiscard]] GVariant* pngOf(const Surface& surface);

/// What the request asks for: a status item's pixmaps, a(iiay), of ARGB32, network order, straight alpha; or a PNG file
/// of the first size, ay. Empty where it cannot be drawn.
[[nodiscard]] GVariant* answerTo(const Request& request);

} // namespace drawing
