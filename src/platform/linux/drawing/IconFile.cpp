#include "platform/linux/drawing/IconFile.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>

namespace drawing {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t headerSize = 6;
constexpr std::size_t entrySize = 16;

std::uint32_t number(std::string_view bytes, std::size_t offset, std::size_t count)
{
    std::uint32_t value = 0;
    for (std::size_t index = count; index-- > 0;)
        value = value << 8U | static_cast<unsigned char>(bytes[offset + index]);
    return value;
}

struct Entry {
    std::uint32_t width;
    std::uint32_t bits;
    std::string_view picture;
};

/// An entry that leads outside the file is empty.
Entry entryAt(std::string_view bytes, std::size_t place)
{
    const auto width = number(bytes, place, 1);
    const auto bits = number(bytes, place + 6, 2);
    const auto size = number(bytes, place + 8, 4);
    const auto offset = number(bytes, place + 12, 4);
    const bool isInside = offset <= bytes.size() && size <= bytes.size() - offset;
    // A width of 256 does not fit its byte.
    return { width ? width : 256, bits, isInside ? bytes.substr(offset, size) : std::string_view() };
}

} // namespace

std::optional<std::string> embeddedPicture(const std::string& bytes)
{
    if (!std::string_view(bytes).starts_with("\0\0\1\0"sv) || bytes.size() < headerSize)
        return std::nullopt;
    Entry best {};
    const auto count = number(bytes, 4, 2);
    for (std::size_t index = 0; index < count; ++index) {
        const auto place = headerSize + index * entrySize;
        if (place + entrySize > bytes.size())
            break;
        const auto entry = entryAt(bytes, place);
        if (!entry.picture.empty() && std::tie(entry.width, entry.bits) > std::tie(best.width, best.bits))
            best = entry;
    }
    if (!best.picture.starts_with("\x89PNG"))
        return std::nullopt;
    return std::string(best.picture);
}

} // namespace drawing
