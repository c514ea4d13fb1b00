#pragma once

#include <string_view>

/// Keys of the user defaults.
namespace perchly::preferences {

/// A text; absent and empty both mean that there is no home page.
inline constexpr std::string_view homePageURL = "HomePageURL";

/// Where icons of sites are asked for, in place of the service that the program was built with: an address of the web,
/// others don't count. For maintainers; no window shows it.
inline constexpr std::string_view faviconServiceURL = "FaviconServiceURL";

} // namespace perchly::preferences
