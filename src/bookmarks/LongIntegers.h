#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace perchly {

/// The document with "e0" behind every integer that may exceed 64 bits; none when it holds no such integer.
/// What was no JSON before is none after. `padding` bytes of spare capacity are reserved behind the copy.
[[nodiscard]] std::optional<std::string> withLongIntegersAsFloats(std::string_view document, std::size_t padding);

} // namespace perchly
