#pragma once

#include <optional>
#include <string>

namespace drawing {

/// Icon files (ICO) hold a picture in several sizes. Where the best one is a PNG file of its own, its bytes; none where
/// it is not, or where the bytes are no icon file.
[[nodiscard]] std::optional<std::string> embeddedPicture(const std::string& bytes);

} // namespace drawing
