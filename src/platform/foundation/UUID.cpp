#include "platform/foundation/UUID.h"

#include <array>
#include <cstdint>
#include <random>
#include <string_view>

namespace foundation {

namespace {

std::array<std::uint8_t, 16> randomBytes()
{
    std::random_device device;
    std::array<std::uint8_t, 16> bytes {};
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const std::uint32_t word = device();
        for (std::size_t k = 0; k < 4; ++k)
            bytes[i + k] = static_cast<std::uint8_t>(word >> (8 * k));
    }
    return bytes;
}

} // namespace

std::string makeUUIDString()
{
    auto bytes = randomBytes();
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the RFC's variant

    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    return text;
}

} // namespace foundation
