#include "bookmarks/BookmarkPresets.h"

#include "bookmarks/Bookmark.h"
#include "bookmarks/UserAgents.h"
#include "platform/foundation/FatalError.h"

#include <cmath>

namespace perchly {
namespace {

template <class Row, std::size_t count>
const Row& rowAt(const std::array<Row, count>& table, std::size_t index)
{
    if (index >= count)
        foundation::fatalError("There is no such preset");
    return table[index];
}

} // namespace

constinit const std::array<UserAgentPreset, 7> addDialogUserAgentPresets { {
    { "System Default (Safari 18.0)", std::nullopt },
    { "Safari 17.5", agents::safari17 },
    { "Chrome (macOS)", agents::chrome },
    { "Firefox (macOS)", agents::firefox },
    { "iPad (Safari)", agents::iPad },
    { "iPhone (Safari)", agents::iPhone },
    { "Custom...", customUserAgentMarker },
} };

constinit const std::array<UserAgentPreset, 6> pinnedMenuUserAgentPresets { {
    { "System Default (18.0)", std::nullopt },
    { "Safari 17.5", agents::safari17 },
    { "Chrome", agents::chrome },
    { "Firefox", agents::firefox },
    { "iPad", agents::iPad },
    { "iPhone", agents::iPhone },
} };

constinit const std::array<IconSizePreset, 4> iconSizePresets { {
    { "Small (13)", "Small", 13 },
    { "Medium (15)", "Medium", 15 },
    { "Large (18)", "Large", 18 },
    { "Extra Large (22)", "Extra Large", 22 },
} };

const UserAgentPreset& userAgentPresetAt(std::size_t index)
{
    return rowAt(addDialogUserAgentPresets, index);
}

const IconSizePreset& iconSizePresetAt(std::size_t index)
{
    return rowAt(iconSizePresets, index);
}

bool isCurrentUserAgent(const UserAgentPreset& preset, const Bookmark& bookmark)
{
    return preset.value == bookmark.userAgent;
}

bool isCurrentIconSize(double points, const Bookmark& bookmark)
{
    constexpr auto tolerance = 0.1;
    return std::abs(points - bookmark.menubarIconSize.value_or(defaultIconSize)) < tolerance;
}

} // namespace perchly
