#pragma once

#include <string_view>

namespace foundation {

/// The text without the white space and line breaks (of Unicode, in UTF-8) at both of its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

} // namespace foundation
