#include "platform/foundation/Character.h"

#include "platform/linux/desktop/GObject.h"

namespace foundation {
namespace {

constexpr gunichar zeroWidthJoiner = 0x200D;

bool isRegionalIndicator(gunichar character)
{
    return character >= 0x1F1E6 && character <= 0x1F1FF;
}

bool isSkinTone(gunichar character)
{
    return character >= 0x1F3FB && character <= 0x1F3FF;
}

/// What stands after the first part of a Hangul syllable.
bool isHangulVowelOrEnd(gunichar character)
{
    return (character >= 0x1160 && character <= 0x11FF) || (character >= 0xD7B0 && character <= 0xD7FF);
}

/// Belongs to the character before it.
bool extends(gunichar character)
{
    return g_unichar_ismark(character) || character == zeroWidthJoiner || isSkinTone(character)
        || isHangulVowelOrEnd(character) || (character >= 0xE0020 && character <= 0xE007F); // tags, in flags
}

/// Where the first character as a reader sees it ends.
const char* endOfFirstCharacter(const char* start)
{
    auto before = g_utf8_get_char(start);
    const auto* end = g_utf8_next_char(start);
    auto isFlag = isRegionalIndicator(before);
    for (; *end; end = g_utf8_next_char(end)) {
        const auto next = g_utf8_get_char(end);
        const auto completesFlag = isFlag && isRegionalIndicator(next);
        if (!extends(next) && before != zeroWidthJoiner && !completesFlag)
            break;
        isFlag = false;
        before = next;
    }
    return end;
}

} // namespace

std::string uppercasedFirstCharacter(std::string_view text)
{
    const desktop::GLibPointer<> valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    if (!*valid.get())
        return {};
    const auto* end = endOfFirstCharacter(valid.get());
    return desktop::GLibPointer<>(g_utf8_strup(valid.get(), end - valid.get())).get();
}

} // namespace foundation
