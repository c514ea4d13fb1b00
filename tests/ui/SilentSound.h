#pragma once

#include <cstdint>
#include <string>

namespace perchly::test {

/// A minute of silence in the simplest sound format there is.
inline std::string silentSound()
{
    const auto number = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int i = 0; i < bytes; ++i)
            text += static_cast<char>(value >> (8 * i) & 0xFF);
        return text;
    };
    constexpr std::uint32_t rate = 8000;
    constexpr std::uint32_t length = 60 * rate;
    return "RIFF" + number(36 + length, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) + number(rate, 4)
        + number(rate, 4) + number(1, 2) + number(8, 2) + "data" + number(length, 4) + std::string(length, '\x80');
}

} // namespace perchly::test
