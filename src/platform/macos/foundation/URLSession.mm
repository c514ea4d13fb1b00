#include "platform/foundation/URLSession.h"

#include "platform/macos/foundation/Conversions.h"

namespace foundation {

struct URLSession::Native {
    NSURLSession* session = NSURLSession.sharedSession;
};

namespace {

/// Nothing is asked for but the address.
bool isPlain(const URLRequest& request)
{
    return request.headerFields.empty() && request.timeoutInterval == defaultTimeoutInterval;
}

Result<std::string> resultFrom(NSData* data, NSError* error)
{
    if (error)
        return errorFrom(error);
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

} // namespace

URLSession::URLSession()
    : native_(std::make_unique<Native>())
{
}

URLSession::~URLSession() = default;

URLSession& URLSession::sharedSession()
{
    static URLSession session;
    return session;
}

void URLSession::dataTask(const URLRequest& request, CompletionHandler completionHandler)
{
    auto finish
        = ^(NSData* data, NSURLResponse* response, NSError* error) { completionHandler(resultFrom(data, error)); };
    NSURLSession* session = native_->session;
    NSURLSessionDataTask* task = isPlain(request)
        ? [session dataTaskWithURL:nativeURL(request.url) completionHandler:finish]
        : [session dataTaskWithRequest:nativeRequest(request) completionHandler:finish];
    [task resume];
}

} // namespace foundation
