#pragma once

#include <string>
#include <string_view>

namespace perchly {

/// The page that shows nothing.
inline constexpr std::string_view blankPageAddress = "about:blank";

/// The address as it is opened: "https://" goes in front of whatever does not begin with "http://" or "https://".
[[nodiscard]] inline std::string addressWithScheme(std::string_view address)
{
    if (address.starts_with("http://") || address.starts_with("https://"))
        return std::string(address);
    return "https://" + std::string(address);
}

} // namespace perchly
