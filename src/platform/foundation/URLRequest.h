#pragma once

#include "platform/foundation/URL.h"

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace foundation {

inline constexpr std::chrono::milliseconds defaultTimeoutInterval = std::chrono::seconds(60);

/// What a web view or a download is asked to load, with the protocol's own cache policy.
struct URLRequest {
    URL url;
    /// How long a web view waits for the first answer, and a download for any.
    std::chrono::milliseconds timeoutInterval = defaultTimeoutInterval;
    /// Names and values, in place of the usual ones. Only for downloads.
    std::vector<std::pair<std::string, std::string>> headerFields = {};
};

} // namespace foundation
