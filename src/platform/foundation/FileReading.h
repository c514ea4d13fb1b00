#pragma once

#include "platform/foundation/Result.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace foundation {

/// The whole file, with `padding` bytes of spare capacity behind it. What is no regular file is an error and never
/// waited for, and so is, before it is read, what is larger than the limit.
[[nodiscard]] Result<std::string> readFile(
    const std::filesystem::path& path, std::size_t padding, std::size_t largestSize);

} // namespace foundation
