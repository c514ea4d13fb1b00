#include "platform/foundation/Bundle.h"

#include "platform/linux/foundation/ProgramFolder.h"

#include <system_error>

namespace foundation {

const Bundle& Bundle::mainBundle()
{
    static const Bundle bundle;
    return bundle;
}

std::optional<std::filesystem::path> Bundle::pathForResource(std::string_view name) const
{
    static const auto resourceFolder = findWithProgram("share/perchly");
    if (name.empty() || !resourceFolder)
        return std::nullopt;
    auto path = *resourceFolder / name;
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return std::nullopt;
    return path;
}

} // namespace foundation
