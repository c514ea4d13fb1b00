#pragma once

#include "platform/foundation/URL.h"

#include <chrono>

namespace webkit {

inline constexpr std::chrono::milliseconds defaultTimeoutInterval = std::chrono::seconds(60);

/// What a web view is asked to load, with the protocol's own cache policy.
struct URLRequest {
    foundation::URL url;
    /// How long the first answer may take before the load is given up.
    std::chrono::milliseconds timeoutInterval = defaultTimeoutInterval;
};

} // namespace webkit
