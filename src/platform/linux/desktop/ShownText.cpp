#include "platform/linux/desktop/ShownText.h"

#include "platform/linux/desktop/GObject.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr std::string_view ellipsis = "\u2026";
constexpr std::string_view signOfNul = "\u2400";
constexpr std::size_t longestCharacter = 4; // bytes

std::string valid(std::string_view text)
{
    std::string whole;
    for (auto nul = text.find('\0'); nul != std::string_view::npos; nul = text.find('\0')) {
        whole += text.substr(0, nul);
        whole += signOfNul;
        text.remove_prefix(nul + 1);
    }
    whole += text;
    const GLibPointer<> made(g_utf8_make_valid(whole.data(), static_cast<gssize>(whole.size())));
    return made.get();
}

/// Where the text ends that is within the limit; a line's end is that of its last character.
const char* endWithin(const std::string& text, TextLimit limit)
{
    std::size_t lines = 1;
    const auto* place = text.c_str();
    for (std::size_t count = 0; *place != '\0'; ++count) {
        if (count == limit.characters || (*place == '\n' && lines++ == limit.lines))
            return place;
        place = g_utf8_next_char(place);
    }
    return place;
}

} // namespace

std::string shownText(std::string_view text, TextLimit limit)
{
    // The rest of a large text is not even looked at.
    const auto isLarge = text.size() / longestCharacter > limit.characters;
    auto shown = valid(isLarge ? text.substr(0, (limit.characters + 1) * longestCharacter) : text);
    const auto* end = endWithin(shown, limit);
    if (*end == '\0')
        return shown;
    if (limit.characters > 0
        && static_cast<std::size_t>(g_utf8_pointer_to_offset(shown.c_str(), end)) == limit.characters)
        end = g_utf8_prev_char(end);
    shown.resize(static_cast<std::size_t>(end - shown.c_str()));
    shown += ellipsis;
    return shown;
}

} // namespace desktop
