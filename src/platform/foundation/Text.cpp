#include "platform/foundation/Text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace foundation {
namespace {

using namespace std::literals;

constexpr auto whiteSpaces = std::to_array<std::string_view>({
    " "sv,
    "\t"sv,
    "\n"sv,
    "\v"sv,
    "\f"sv,
    "\r"sv,
    "\u0085"sv,
    "\u00A0"sv,
    "\u1680"sv,
    "\u2000"sv,
    "\u2001"sv,
    "\u2002"sv,
    "\u2003"sv,
    "\u2004"sv,
    "\u2005"sv,
    "\u2006"sv,
    "\u2007"sv,
    "\u2008"sv,
    "\u2009"sv,
    "\u200A"sv,
    "\u2028"sv,
    "\u2029"sv,
    "\u202F"sv,
    "\u205F"sv,
    "\u3000"sv,
});

constexpr auto lineEnds
    = std::to_array<std::string_view>({ "\n"sv, "\v"sv, "\f"sv, "\r"sv, "\u0085"sv, "\u2028"sv, "\u2029"sv });

} // namespace

std::string_view trimmed(std::string_view text)
{
    const auto leads = [&text](std::string_view space) { return text.starts_with(space); };
    const auto ends = [&text](std::string_view space) { return text.ends_with(space); };
    for (auto space = std::ranges::find_if(whiteSpaces, leads); space != whiteSpaces.end();
         space = std::ranges::find_if(whiteSpaces, leads))
        text.remove_prefix(space->size());
    for (auto space = std::ranges::find_if(whiteSpaces, ends); space != whiteSpaces.end();
         space = std::ranges::find_if(whiteSpaces, ends))
        text.remove_suffix(space->size());
    return text;
}

std::string inOneLine(std::string_view text)
{
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const auto leads = [&text](std::string_view end) { return text.starts_with(end); };
        const auto* end = std::ranges::find_if(lineEnds, leads);
        const auto isEnd = end != lineEnds.end();
        line += isEnd ? ' ' : text.front();
        text.remove_prefix(isEnd ? end->size() : 1);
    }
    return line;
}

std::string shortest(double number)
{
    std::array<char, 32> digits {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return { digits.data(), end };
}

std::string description(Size size)
{
    return "{" + shortest(size.width) + ", " + shortest(size.height) + "}";
}

} // namespace foundation
