#include "platform/foundation/URL.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <gio/gio.h>

namespace foundation {

namespace {

// What each part of an address may hold unescaped, beside letters and digits (RFC 3986).
constexpr std::string_view userMarks = "-._~!$&'()*+,;=:";
constexpr std::string_view hostMarks = "-._~!$&'()*+,;=";
constexpr std::string_view pathMarks = "-._~!$&'()*+,;=:@/";
constexpr std::string_view queryMarks = "-._~!$&'()*+,;=:@/?";

using CharacterSet = std::array<bool, 256>;

constexpr CharacterSet characterSet(std::string_view marks)
{
    CharacterSet set {};
    for (std::size_t c = 0; c < 128; ++c)
        set[c] = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    for (const char mark : marks)
        set[static_cast<unsigned char>(mark)] = true;
    return set;
}

constexpr auto userCharacters = characterSet(userMarks);
constexpr auto hostCharacters = characterSet(hostMarks);
constexpr auto pathCharacters = characterSet(pathMarks);
constexpr auto queryCharacters = characterSet(queryMarks);

bool startsWithEscape(std::string_view text)
{
    return text.size() >= 3 && text[0] == '%' && g_ascii_isxdigit(text[1]) && g_ascii_isxdigit(text[2]);
}

/// Appends the text with everything but the allowed characters and whole escapes percent-encoded.
void appendEncoded(std::string& output, std::string_view text, const CharacterSet& allowed)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (allowed[byte] || startsWithEscape(text.substr(i)))
            output += text[i];
        else
            output.append({ '%', digits[byte >> 4], digits[byte & 0x0F] });
    }
}

/// ASCII's control characters, and U+0080 to U+009F.
bool hasControlCharacter(std::string_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (g_ascii_iscntrl(text[i]) || (text[i] == '\xC2' && i + 1 < text.size() && text[i + 1] < '\xA0'))
            return true;
    }
    return false;
}

/// Cuts off and returns what stands before the first of the delimiters; all of it where there is none.
std::string_view takeUntil(std::string_view& text, std::string_view delimiters)
{
    const auto end = std::min(text.find_first_of(delimiters), text.size());
    const auto head = text.substr(0, end);
    text.remove_prefix(end);
    return head;
}

bool isScheme(std::string_view text)
{
    if (text.empty() || !g_ascii_isalpha(text.front()))
        return false;
    return std::all_of(
        text.begin(), text.end(), [](char c) { return g_ascii_isalnum(c) || c == '+' || c == '-' || c == '.'; });
}

/// Letters and marks of any script may stand in a host; blanks, controls and unassigned code points may not.
bool isInternational(std::string_view character)
{
    const gunichar c = g_utf8_get_char(character.data());
    return g_unichar_isgraph(c) && !g_unichar_iszerowidth(c);
}

/// Strict: the allowed characters, whole escapes, and what other scripts need.
bool isClean(std::string_view text, const CharacterSet& allowed)
{
    while (!text.empty()) {
        const auto byte = static_cast<unsigned char>(text.front());
        const bool escape = startsWithEscape(text);
        if (byte >= 0x80 ? !isInternational(text) : !allowed[byte] && !escape)
            return false;
        text.remove_prefix(static_cast<std::size_t>(g_utf8_next_char(text.data()) - text.data()));
    }
    return true;
}

bool isPort(std::string_view text)
{
    unsigned port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return text.empty() || (error == std::errc() && end == text.data() + text.size() && port <= 65535);
}

/// The host of "user:password@host:port", brackets kept, or none when any of the three is malformed.
std::optional<std::string_view> hostOfAuthority(std::string_view authority)
{
    if (const auto at = authority.find('@'); at != std::string_view::npos) {
        if (!isClean(authority.substr(0, at), userCharacters))
            return std::nullopt;
        authority.remove_prefix(at + 1);
    }
    const auto bracket = authority.starts_with('[') ? authority.find(']') : 0;
    if (bracket == std::string_view::npos)
        return std::nullopt;
    const auto colon = authority.find(':', bracket);
    const auto host = authority.substr(0, colon);
    if (colon != std::string_view::npos && !isPort(authority.substr(colon + 1)))
        return std::nullopt;
    return host;
}

bool isIPv6Literal(std::string_view host)
{
    if (host.size() < 2 || host.back() != ']')
        return false;
    const std::string address(host.substr(1, host.size() - 2));
    return address.find_first_of("%/") == std::string::npos && g_hostname_is_ip_address(address.c_str())
        && address.find(':') != std::string::npos;
}

bool isHost(std::string_view host)
{
    return host.starts_with('[') ? isIPv6Literal(host) : !host.empty() && isClean(host, hostCharacters);
}

std::string withoutBrackets(std::string_view host)
{
    return std::string(host.starts_with('[') ? host.substr(1, host.size() - 2) : host);
}

} // namespace

std::optional<URL> URL::parse(std::string_view text)
{
    if (hasControlCharacter(text) || !g_utf8_validate_len(text.data(), text.size(), nullptr))
        return std::nullopt;
    auto rest = text;
    const auto scheme = takeUntil(rest, ":/?#");
    if (!isScheme(scheme) || !rest.starts_with(':'))
        return std::nullopt;
    rest.remove_prefix(1);

    std::string address(scheme);
    address += ':';
    std::string host;
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        const auto authority = takeUntil(rest, "/?#");
        const bool needsHost = !(authority.empty() && g_ascii_strncasecmp(scheme.data(), "file:", 5) == 0);
        const auto found = hostOfAuthority(authority);
        if (needsHost && (!found || !isHost(*found)))
            return std::nullopt;
        address.append("//").append(authority);
        host = withoutBrackets(found.value_or(std::string_view()));
    }
    appendEncoded(address, takeUntil(rest, "?#"), pathCharacters);
    for (const std::string_view mark : { "?", "#" }) {
        if (!rest.starts_with(mark))
            continue;
        rest.remove_prefix(1);
        address += mark;
        appendEncoded(address, takeUntil(rest, mark == "?" ? "#" : ""), queryCharacters);
    }
    return URL(std::move(address), std::move(host));
}

} // namespace foundation
