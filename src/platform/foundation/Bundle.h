#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace foundation {

/// The files that the application brings along.
class Bundle {
public:
    static const Bundle& mainBundle();

    /// The file or folder of that name below the resource folder, or none.
    [[nodiscard]] std::optional<std::filesystem::path> pathForResource(std::string_view name) const;
};

} // namespace foundation
