#include "bookmarks/BookmarkPresets.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/UserAgents.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace perchly::tests {
namespace {

using testing::ElementsAre;

template <class Table, class Member>
auto column(const Table& table, Member member)
{
    std::vector<std::decay_t<decltype(table[0].*member)>> values;
    std::ranges::transform(table, std::back_inserter(values), member);
    return values;
}

std::vector<std::string_view> currentSizes(const Bookmark& bookmark)
{
    std::vector<std::string_view> titles;
    for (const auto& preset : iconSizePresets) {
        if (isCurrentIconSize(preset.points, bookmark))
            titles.push_back(preset.menuTitle);
    }
    return titles;
}

std::vector<std::string_view> currentUserAgents(const Bookmark& bookmark)
{
    std::vector<std::string_view> titles;
    for (const auto& preset : pinnedMenuUserAgentPresets) {
        if (isCurrentUserAgent(preset, bookmark))
            titles.push_back(preset.title);
    }
    return titles;
}

TEST(BookmarkPresetsTest, TheDialogListsSevenUserAgents)
{
    EXPECT_THAT(column(addDialogUserAgentPresets, &UserAgentPreset::title),
        ElementsAre("System Default (Safari 18.0)", "Safari 17.5", "Chrome (macOS)", "Firefox (macOS)", "iPad (Safari)",
            "iPhone (Safari)", "Custom..."));
    EXPECT_THAT(column(addDialogUserAgentPresets, &UserAgentPreset::value),
        ElementsAre(std::nullopt, agents::safari17, agents::chrome, agents::firefox, agents::iPad, agents::iPhone,
            customUserAgentMarker));
}

TEST(BookmarkPresetsTest, TheMenuListsSixUserAgentsByShortNames)
{
    EXPECT_THAT(column(pinnedMenuUserAgentPresets, &UserAgentPreset::title),
        ElementsAre("System Default (18.0)", "Safari 17.5", "Chrome", "Firefox", "iPad", "iPhone"));
    EXPECT_THAT(column(pinnedMenuUserAgentPresets, &UserAgentPreset::value),
        ElementsAre(std::nullopt, agents::safari17, agents::chrome, agents::firefox, agents::iPad, agents::iPhone));
}

TEST(BookmarkPresetsTest, IconsComeInFourSizes)
{
    EXPECT_THAT(column(iconSizePresets, &IconSizePreset::dialogTitle),
        ElementsAre("Small (13)", "Medium (15)", "Large (18)", "Extra Large (22)"));
    EXPECT_THAT(
        column(iconSizePresets, &IconSizePreset::menuTitle), ElementsAre("Small", "Medium", "Large", "Extra Large"));
    EXPECT_THAT(column(iconSizePresets, &IconSizePreset::points), ElementsAre(13, 15, 18, 22));
}

TEST(BookmarkPresetsTest, ABookmarkWithoutAUserAgentHasTheDefaultOne)
{
    EXPECT_THAT(currentUserAgents({}), ElementsAre("System Default (18.0)"));
}

TEST(BookmarkPresetsTest, AStoredUserAgentIsTheCurrentOne)
{
    EXPECT_THAT(currentUserAgents({ .userAgent = std::string(agents::chrome) }), ElementsAre("Chrome"));
}

TEST(BookmarkPresetsTest, ATypedUserAgentIsNoneOfThem)
{
    EXPECT_THAT(currentUserAgents({ .userAgent = "Typed/1.0" }), ElementsAre());
    EXPECT_THAT(currentUserAgents({ .userAgent = "" }), ElementsAre());
}

TEST(BookmarkPresetsTest, ABookmarkWithoutASizeIsMedium)
{
    EXPECT_THAT(currentSizes({}), ElementsAre("Medium"));
}

TEST(BookmarkPresetsTest, ASizeIsCurrentWithinATenthOfAPoint)
{
    EXPECT_THAT(currentSizes({ .menubarIconSize = 18.09 }), ElementsAre("Large"));
    EXPECT_THAT(currentSizes({ .menubarIconSize = 18.1 }), ElementsAre());
    EXPECT_THAT(currentSizes({ .menubarIconSize = 20 }), ElementsAre());
}

TEST(BookmarkPresetsTest, PresetsAreFoundByIndex)
{
    EXPECT_EQ(userAgentPresetAt(6).title, "Custom...");
    EXPECT_EQ(iconSizePresetAt(3).points, 22);
}

TEST(BookmarkPresetsDeathTest, AnIndexBeyondTheTableEndsTheProcess)
{
    EXPECT_DEATH((void)userAgentPresetAt(7), "Fatal error: There is no such preset");
    EXPECT_DEATH((void)iconSizePresetAt(4), "Fatal error: There is no such preset");
}

} // namespace
} // namespace perchly::tests
