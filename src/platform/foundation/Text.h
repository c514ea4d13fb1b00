#pragma once

#include "platform/foundation/Geometry.h"

#include <string>
#include <string_view>

namespace foundation {

/// The text without the white space and line breaks (of Unicode, in UTF-8) at both of its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// The text with a space for each character that ends a line.
[[nodiscard]] std::string inOneLine(std::string_view text);

/// With as few digits as tell the number from all others.
[[nodiscard]] std::string shortest(double number);

/// "{600, 700}"
[[nodiscard]] std::string description(Size size);

} // namespace foundation
