#include "platform/linux/statusarea/MenuLabel.h"

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/ShownText.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr TextLimit longestRow { .characters = 60 };
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

} // namespace

std::string menuLabel(std::string title)
{
    std::ranges::replace(title, '\0', ' ');
    const GLibPointer<> valid(g_utf8_make_valid(title.data(), static_cast<gssize>(title.size())));
    const auto line = inOneLine(valid.get());
    // A row without a letter would have no height on some desktops.
    if (line.find_first_not_of(' ') == std::string::npos)
        return noBreakBlank;
    return shownText(line, longestRow);
}

} // namespace desktop
