#include "platform/foundation/FileManager.h"

#include "platform/foundation/FileReading.h"
#include "platform/macos/foundation/Conversions.h"

namespace foundation {

FileManager& FileManager::defaultManager()
{
    static FileManager manager;
    return manager;
}

std::optional<std::filesystem::path> FileManager::applicationSupportDirectory() const
{
    NSArray<NSURL*>* folders = [NSFileManager.defaultManager URLsForDirectory:NSApplicationSupportDirectory
                                                                    inDomains:NSUserDomainMask];
    if (folders.count == 0)
        return std::nullopt;
    return pathFrom(folders.firstObject.path);
}

bool FileManager::fileExists(const std::filesystem::path& path) const
{
    return [NSFileManager.defaultManager fileExistsAtPath:nativePath(path)];
}

Status FileManager::createDirectory(const std::filesystem::path& path) const
{
    NSError* error = nil;
    if (![NSFileManager.defaultManager createDirectoryAtPath:nativePath(path)
                                 withIntermediateDirectories:YES
                                                  attributes:nil
                                                       error:&error])
        return errorFrom(error);
    return success();
}

Result<std::string> FileManager::contentsOfFile(
    const std::filesystem::path& path, std::size_t padding, std::size_t largestSize) const
{
    return readFile(path, padding, largestSize);
}

Status FileManager::write(std::string_view bytes, const std::filesystem::path& path) const
{
    NSError* error = nil;
    NSData* data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
    // Without NSDataWritingAtomic: the file itself is written.
    if (![data writeToFile:nativePath(path) options:0 error:&error])
        return errorFrom(error);
    return success();
}

} // namespace foundation
