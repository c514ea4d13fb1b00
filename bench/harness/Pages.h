#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bench {

struct Resource {
    std::string type;
    std::string body;
};

/// The favicon service has no icon for this one.
inline constexpr std::string_view siteWithoutIcon = "letter.example";

/// What the page server serves, by its path: "/", a heading and a line; "/article", a page as they usually are, with
/// pictures from "/picture"; "/busy", one that never rests. The background of all is the one unmistakable colour, and
/// most of the middle of the screen shows it. Also icons: "/icon.svg", and "/s2/favicons" as the favicon service.
[[nodiscard]] std::optional<Resource> resourceAt(std::string_view address);

} // namespace bench
