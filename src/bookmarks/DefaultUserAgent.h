#pragma once

#include <string_view>

namespace perchly {

/// What a web view calls itself for a bookmark that has no user agent of its own. Never stored.
inline constexpr std::string_view defaultUserAgent
    = "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) AppleWebKit/605.1.15 (KHTML, like Gecko) "
      "Version/18.0 Safari/605.1.15";

} // namespace perchly
