#pragma once

#include <string>
#include <string_view>

namespace foundation {

/// What a reader takes for the text's first character, be it several code points, in upper case; empty for an empty
/// text.
[[nodiscard]] std::string uppercasedFirstCharacter(std::string_view text);

/// In lower case, whatever the user's language.
[[nodiscard]] std::string lowercased(std::string_view text);

} // namespace foundation
