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

constexpr gunichar capitalSigma = 0x03A3;
constexpr gunichar dottedCapitalI = 0x0130;

/// The character there: an error value where the bytes are none, null at the end.
gunichar decoded(const char* at, const char* end)
{
    return at < end ? g_utf8_get_char_validated(at, end - at) : 0;
}

bool isDamaged(gunichar character)
{
    return character >= 0xFFFFFFFE;
}

bool isLetter(gunichar character)
{
    return !isDamaged(character) && g_unichar_isalpha(character);
}

void append(std::string& text, gunichar character)
{
    char encoded[6];
    text.append(encoded, static_cast<std::size_t>(g_unichar_to_utf8(character, encoded)));
}

/// A capital sigma at the end of a word is a letter of its own in lower case.
gunichar lowerSigma(gunichar before, gunichar after)
{
    return isLetter(before) && !isLetter(after) ? 0x03C2 : 0x03C3;
}

/// What is no character stays as it is.
std::string lowercasedOneByOne(std::string_view text)
{
    std::string lower;
    lower.reserve(text.size() + 1);
    const auto* at = text.data();
    const auto* end = at + text.size();
    for (gunichar before = 0; at < end;) {
        const auto character = decoded(at, end);
        if (isDamaged(character)) {
            lower += *at++;
            continue;
        }
        at = g_utf8_next_char(at);
        if (character == capitalSigma)
            append(lower, lowerSigma(before, decoded(at, end)));
        else if (character == dottedCapitalI)
            lower += "i\u0307";
        else
            append(lower, g_unichar_tolower(character));
        before = character;
    }
    return lower;
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

std::string lowercased(std::string_view text)
{
    // Most texts are plain ASCII, and that needs no tables. GLib's own function for texts follows the user's language.
    std::string lower(text);
    auto every = 0U;
    for (auto& character : lower) {
        every |= static_cast<unsigned char>(character);
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character + ('a' - 'A'));
    }
    return every < 0x80 ? lower : lowercasedOneByOne(text);
}

} // namespace foundation
