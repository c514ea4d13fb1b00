#include "bookmarks/LongIntegers.h"

#include <algorithm>

namespace perchly {

namespace {

constexpr std::size_t digitsThatAlwaysFit = 18;
constexpr std::string_view numberCharacters = "+-.0123456789Ee";

/// The end of the string whose opening quote stands at `start`.
std::size_t endOfString(std::string_view document, std::size_t start)
{
    for (auto i = start + 1; i < document.size(); ++i) {
        if (document[i] == '\\')
            ++i;
        else if (document[i] == '"')
            return i + 1;
    }
    return document.size();
}

/// JSON's integers have no leading zero, so a long one is no zero.
bool isLongInteger(std::string_view number)
{
    if (number.starts_with('-'))
        number.remove_prefix(1);
    return number.size() > digitsThatAlwaysFit && number.front() != '0'
        && std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

std::optional<std::string> withLongIntegersAsFloats(std::string_view document, std::size_t padding)
{
    std::string rewritten;
    std::size_t copied = 0;
    for (std::size_t i = 0; (i = document.find_first_of("\"-0123456789", i)) != std::string_view::npos;) {
        if (document[i] == '"') {
            i = endOfString(document, i);
            continue;
        }
        const auto end = std::min(document.find_first_not_of(numberCharacters, i), document.size());
        if (isLongInteger(document.substr(i, end - i))) {
            rewritten.append(document, copied, end - copied).append("e0");
            copied = end;
        }
        i = end;
    }
    if (copied == 0)
        return std::nullopt;
    rewritten.reserve(rewritten.size() + document.size() - copied + padding);
    rewritten.append(document, copied);
    return rewritten;
}

} // namespace perchly
