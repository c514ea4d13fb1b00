#pragma once

#include "platform/linux/drawing/Surface.h"

#include <string>

namespace drawing {

/// No decoded picture is larger, whatever the file holds.
inline constexpr int largestPicture = 128;

/// The picture in the bytes of a file (PNG, JPEG, GIF, ICO, BMP, WebP, SVG), in the middle of a square that it just
/// fits; null where it does not decode. A large one is reduced, a small one stays as it is.
[[nodiscard]] Surface decodedPicture(const std::string& bytes);

/// The square picture at half its size.
[[nodiscard]] Surface halved(const Surface& picture);

/// Whether those bytes can only be a drawing, which has no pixels of its own.
[[nodiscard]] bool isDrawing(const std::string& bytes);

} // namespace drawing
