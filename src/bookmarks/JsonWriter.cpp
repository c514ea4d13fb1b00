#include "bookmarks/JsonWriter.h"

#include "platform/foundation/Text.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <simdjson.h>
#include <utility>

namespace perchly {

namespace {

bool needsEscape(unsigned char c)
{
    return c < 0x20 || c == '"' || c == '\\';
}

/// Whether any of eight bytes, taken at once, needs an escape: the high bit of a byte marks a hit.
bool anyNeedsEscape(std::uint64_t word)
{
    constexpr std::uint64_t ones = 0x0101010101010101;
    constexpr std::uint64_t highs = 0x8080808080808080;
    const auto quote = word ^ (ones * '"');
    const auto backslash = word ^ (ones * '\\');
    const auto hits = ((word - ones * 0x20) & ~word) | ((quote - ones) & ~quote) | ((backslash - ones) & ~backslash);
    return (hits & highs) != 0;
}

/// How many bytes from the start can go out as they stand.
std::size_t plainPrefix(std::string_view text)
{
    std::size_t i = 0;
    for (std::uint64_t word = 0; i + sizeof word <= text.size(); i += sizeof word) {
        std::memcpy(&word, text.data() + i, sizeof word);
        if (anyNeedsEscape(word))
            break;
    }
    while (i < text.size() && !needsEscape(static_cast<unsigned char>(text[i])))
        ++i;
    return i;
}

void appendEscape(std::string& output, char c)
{
    constexpr std::string_view special = "\"\\\b\f\n\r\t";
    constexpr std::string_view letters = "\"\\bfnrt";
    constexpr std::string_view digits = "0123456789abcdef";
    if (const auto index = special.find(c); index != std::string_view::npos)
        output.append({ '\\', letters[index] });
    else
        output.append("\\u00").append({ digits[static_cast<unsigned char>(c) >> 4], digits[c & 0x0F] });
}

} // namespace

void JsonWriter::key(std::string_view name)
{
    separate();
    output_ += '"';
    output_ += name;
    output_ += indented_ ? "\" : " : "\":";
}

void JsonWriter::value(std::string_view text)
{
    output_ += '"';
    for (;;) {
        const auto plain = plainPrefix(text);
        output_ += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            break;
        appendEscape(output_, text.front());
        text.remove_prefix(1);
    }
    output_ += '"';
}

void JsonWriter::value(double number)
{
    isFinite_ = isFinite_ && std::isfinite(number);
    if (number == 0 && std::signbit(number)) {
        output_ += "-0.0"; // "-0" would be read as an integer, which has no sign at zero
        return;
    }
    output_ += foundation::shortest(number);
}

void JsonWriter::value(bool flag)
{
    output_ += flag ? "true" : "false";
}

std::optional<std::string> JsonWriter::finish() &&
{
    // One look at the whole: a text that ends amid a character cannot hide, for a quote follows it.
    if (!isFinite_ || !simdjson::validate_utf8(output_.data(), output_.size()))
        return std::nullopt;
    return std::move(output_);
}

void JsonWriter::begin(char bracket)
{
    output_ += bracket;
    ++depth_;
    isEmpty_ = true;
}

void JsonWriter::end(char bracket)
{
    --depth_;
    if (!isEmpty_)
        breakLine();
    output_ += bracket;
    isEmpty_ = false;
}

void JsonWriter::separate()
{
    if (!std::exchange(isEmpty_, false))
        output_ += ',';
    breakLine();
}

void JsonWriter::breakLine()
{
    if (!indented_)
        return;
    output_ += '\n';
    output_.append(2 * depth_, ' ');
}

} // namespace perchly
