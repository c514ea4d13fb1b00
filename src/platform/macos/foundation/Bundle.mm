#include "platform/foundation/Bundle.h"

#include "platform/macos/foundation/Conversions.h"

namespace foundation {

const Bundle& Bundle::mainBundle()
{
    static const Bundle bundle;
    return bundle;
}

std::optional<std::filesystem::path> Bundle::pathForResource(std::string_view name) const
{
    NSString* path = [NSBundle.mainBundle.resourcePath stringByAppendingPathComponent:nativeText(name)];
    if (name.empty() || ![NSFileManager.defaultManager fileExistsAtPath:path])
        return std::nullopt;
    return pathFrom(path);
}

} // namespace foundation
