#pragma once

#import <Foundation/Foundation.h>

#include "platform/foundation/Result.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/URLRequest.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace foundation {

/// Nil for what is no UTF-8.
[[nodiscard]] inline NSString* nativeTextOrNil(std::string_view text)
{
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

/// What is no UTF-8 is read byte by byte instead, so that nothing is lost: AppKit traps at nil.
[[nodiscard]] inline NSString* nativeText(std::string_view text)
{
    if (NSString* native = nativeTextOrNil(text))
        return native;
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSISOLatin1StringEncoding];
}

/// Empty for nil.
[[nodiscard]] inline std::string textFrom(NSString* native)
{
    const std::size_t length = [native lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    return length == 0 ? std::string() : std::string(native.UTF8String, length);
}

/// The framework's address to the letter.
[[nodiscard]] inline URL urlFrom(NSURL* native)
{
    return URL::verbatim(textFrom(native.absoluteString), textFrom(native.host));
}

/// From bytes: URLWithString: would refuse, or encode, what an engine's address may hold.
[[nodiscard]] inline NSURL* nativeURL(const URL& url)
{
    const auto& text = url.absoluteString();
    return [NSURL URLWithDataRepresentation:[NSData dataWithBytes:text.data() length:text.size()] relativeToURL:nil];
}

[[nodiscard]] inline NSURLRequest* nativeRequest(const URLRequest& request)
{
    const std::chrono::duration<double> timeout = request.timeoutInterval;
    NSMutableURLRequest* native = [NSMutableURLRequest requestWithURL:nativeURL(request.url)
                                                          cachePolicy:NSURLRequestUseProtocolCachePolicy
                                                      timeoutInterval:timeout.count()];
    for (const auto& [name, value] : request.headerFields)
        [native setValue:nativeText(value) forHTTPHeaderField:nativeText(name)];
    return native;
}

[[nodiscard]] inline NSString* nativePath(const std::filesystem::path& path)
{
    const auto& bytes = path.native();
    return [NSFileManager.defaultManager stringWithFileSystemRepresentation:bytes.data() length:bytes.size()];
}

[[nodiscard]] inline std::filesystem::path pathFrom(NSString* native)
{
    return native.fileSystemRepresentation;
}

[[nodiscard]] inline Error errorFrom(NSError* native)
{
    return { textFrom(native.localizedDescription) };
}

} // namespace foundation
