#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace bench {

struct Resource {
    std::string type;
    std::string body;
};

/// What the page server serves, by its path: "/", a heading and a line; "/article", a page as they usually are, with
/// pictures from "/picture"; "/busy", one that never rests. The background of all is the one unmistakable colour, and
/// most of the middle of the screen shows it.
[[nodiscard]] std::optional<Resource> resourceAt(std::string_view path);

} // namespace bench
