#include "platform/linux/statusarea/MenuLabel.h"

#include "platform/linux/desktop/GObject.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr auto mostCharacters = 60;
constexpr auto ellipsis = "\u2026";
constexpr auto noBreakBlank = "\u00a0";

/// Also what ends a text in C, and what ends a line in Unicode.
bool isControl(gunichar character)
{
    const auto type = g_unichar_type(character);
    return type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR || type == G_UNICODE_PARAGRAPH_SEPARATOR;
}

std::string inOneLine(const char* text)
{
    std::string line;
    for (const auto* next = text; *next != '\0'; next = g_utf8_next_char(next)) {
        if (isControl(g_utf8_get_char(next)))
            line += ' ';
        else
            line.append(next, static_cast<const char*>(g_utf8_next_char(next)));
    }
    return line;
}

std::string shortened(std::string line)
{
    if (g_utf8_strlen(line.c_str(), -1) <= mostCharacters)
        return line;
    const auto* end = g_utf8_offset_to_pointer(line.c_str(), mostCharacters - 1);
    return std::string(line.c_str(), end) + ellipsis;
}

} // namespace

std::string menuLabel(std::string title)
{
    std::ranges::replace(title, '\0', ' ');
    const GLibPointer<> valid(g_utf8_make_valid(title.data(), static_cast<gssize>(title.size())));
    auto line = inOneLine(valid.get());
    // A row without a letter would have no height on some desktops.
    if (line.find_first_not_of(' ') == std::string::npos)
        return noBreakBlank;
    return shortened(std::move(line));
}

} // namespace desktop
