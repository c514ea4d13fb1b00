#pragma once

#include "platform/foundation/Result.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace foundation {

/// The file system as the application uses it. Stateless; main thread.
class FileManager {
public:
    static FileManager& defaultManager();

    /// The user's folder for applications' own data, or none where the system names none.
    [[nodiscard]] std::optional<std::filesystem::path> applicationSupportDirectory() const;

    [[nodiscard]] bool fileExists(const std::filesystem::path& path) const;

    /// Creates the folder and those above it.
    Status createDirectory(const std::filesystem::path& path) const;

    /// Reading is bounded, so that a sparse giant chosen by mistake is an error and not the end of the process.
    static constexpr std::size_t largestFile = std::size_t { 1 } << 30U;

    /// The whole file. `padding` bytes of spare capacity are reserved behind it for parsers that read ahead. An error
    /// for what is no regular file, or larger than that.
    [[nodiscard]] Result<std::string> contentsOfFile(
        const std::filesystem::path& path, std::size_t padding = 0, std::size_t largestSize = largestFile) const;

    /// Replaces the file's contents in place: no temporary file, no backup. Blocks while it writes.
    Status write(std::string_view bytes, const std::filesystem::path& path) const;
};

} // namespace foundation
