#pragma once

#include <filesystem>
#include <optional>
#include <system_error>

namespace foundation {

/// What the program brings along: beside it in a build folder, in a neighbour of its folder where it is installed.
[[nodiscard]] inline std::optional<std::filesystem::path> findWithProgram(const std::filesystem::path& name)
{
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto& base : { folder, folder.parent_path() }) {
        if (auto found = base / name; std::filesystem::exists(found, error))
            return found;
    }
    return std::nullopt;
}

} // namespace foundation
