#pragma once

#include <filesystem>

namespace perchly::tests {

/// Mounts a disk of 64 KiB on the folder, for this process alone and until it ends; false where that is not permitted.
[[nodiscard]] bool mountSmallDisk(const std::filesystem::path& folder);

} // namespace perchly::tests
