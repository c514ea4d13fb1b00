#include "platform/foundation/Bundle.h"

#include <system_error>

namespace foundation {

namespace {

/// The build folder holds the program beside share/, an installation in a neighbour of it.
std::filesystem::path findResourceFolder()
{
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    auto built = folder / "share" / "perchly";
    if (std::filesystem::exists(built, error))
        return built;
    return folder.parent_path() / "share" / "perchly";
}

} // namespace

const Bundle& Bundle::mainBundle()
{
    static const Bundle bundle;
    return bundle;
}

std::optional<std::filesystem::path> Bundle::pathForResource(std::string_view name) const
{
    static const std::filesystem::path resourceFolder = findResourceFolder();
    auto path = resourceFolder / name;
    std::error_code ignored;
    if (name.empty() || !std::filesystem::exists(path, ignored))
        return std::nullopt;
    return path;
}

} // namespace foundation
