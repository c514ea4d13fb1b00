#pragma once

#include "platform/foundation/Result.h"
#include "platform/foundation/URLRequest.h"

#include <functional>
#include <memory>
#include <string>

namespace foundation {

/// Downloads in the background, through one cache for all.
class URLSession {
public:
    static URLSession& sharedSession();

    /// The bytes that came, whatever the server's status; an error where no answer came to its end. A side may take no
    /// more than a certain size, and longer than a certain time, for an error too.
    using CompletionHandler = std::function<void(Result<std::string> data)>;

    /// Follows redirects. The handler is called once, on a thread of the session's.
    void dataTask(const URLRequest& request, CompletionHandler completionHandler);

    URLSession(const URLSession&) = delete;
    URLSession& operator=(const URLSession&) = delete;

private:
    URLSession();
    ~URLSession();

    struct Native;
    std::unique_ptr<Native> native_;
};

} // namespace foundation
