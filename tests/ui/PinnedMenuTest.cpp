#include "bookmarks/UserAgents.h"
#include "pinned/PinnedBookmarkMenu.h"
#include "platform/appkit/Menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using appkit::Menu;
using appkit::MenuItem;
using perchly::Bookmark;
using perchly::IconSizeChoice;
using perchly::UserAgentChoice;
using testing::ElementsAre;
using testing::IsEmpty;

namespace agents = perchly::agents;

perchly::PinnedBookmarkMenuActions namedActions()
{
    using appkit::Action;
    return { .detachWindow = Action("detachWindow:"),
        .toggleReloadOnOpen = Action("toggleReloadOnOpen:"),
        .toggleAlwaysOnTop = Action("toggleAlwaysOnTop:"),
        .togglePrefersDetached = Action("togglePrefersDetached:"),
        .toggleOpenInSystemBrowser = Action("toggleOpenInSystemBrowser:"),
        .changeUserAgent = Action("changeUserAgent:"),
        .changeIconSize = Action("changeIconSize:"),
        .editCustomIcon = Action("editCustomIcon:"),
        .togglePinnedStatus = Action("togglePinnedStatus:"),
        .removeFromMenubar = Action("removeFromMenubar:") };
}

/// The menu of a bookmark's status item.
class PinnedMenuTest : public testing::Test {
protected:
    [[nodiscard]] std::shared_ptr<Menu> menu() const { return makePinnedBookmarkMenu(bookmark, namedActions()); }

    [[nodiscard]] static const MenuItem& row(const Menu& menu, std::string_view title)
    {
        for (const auto& item : menu.items()) {
            if (item->title() == title)
                return *item;
        }
        throw std::runtime_error("No row " + std::string(title));
    }

    [[nodiscard]] std::shared_ptr<Menu> submenu(std::string_view title) const { return row(*menu(), title).submenu(); }

    [[nodiscard]] static std::vector<std::string> rows(const Menu& menu)
    {
        std::vector<std::string> rows;
        for (const auto& item : menu.items())
            rows.push_back(item->isSeparator() ? "-" : item->title() + "|" + item->action().name());
        return rows;
    }

    [[nodiscard]] static std::vector<std::string> checkedRows(const Menu& menu)
    {
        std::vector<std::string> checked;
        for (const auto& item : menu.items()) {
            if (item->isOn())
                checked.push_back(item->title());
        }
        return checked;
    }

    Bookmark bookmark { .title = "This", .url = "https://site.example/", .isAlwaysOnTop = false };
};

TEST_F(PinnedMenuTest, HasItsRowsInOrder)
{
    EXPECT_THAT(rows(*menu()),
        ElementsAre("Detach Window|detachWindow:", "-", "Reload on Every Open|toggleReloadOnOpen:",
            "Always on Top|toggleAlwaysOnTop:", "Always Open in Window|togglePrefersDetached:",
            "Open in System Browser|toggleOpenInSystemBrowser:", "Browser Agent|", "Icon Size|",
            "Change Custom Icon...|editCustomIcon:", "-",
            "Pin to Quick Access|togglePinnedStatus:", "Remove from Menubar|removeFromMenubar:"));
    EXPECT_THAT(rows(*submenu("Browser Agent")),
        ElementsAre("System Default (18.0)|changeUserAgent:", "Safari 17.5|changeUserAgent:", "Chrome|changeUserAgent:",
            "Firefox|changeUserAgent:", "iPad|changeUserAgent:", "iPhone|changeUserAgent:"));
    EXPECT_THAT(rows(*submenu("Icon Size")),
        ElementsAre(
            "Small|changeIconSize:", "Medium|changeIconSize:", "Large|changeIconSize:", "Extra Large|changeIconSize:"));
}

TEST_F(PinnedMenuTest, HasNoKeyEquivalentsAndAllRowsCanBeChosen)
{
    const auto whole = menu();
    for (const auto& part : { whole, submenu("Browser Agent"), submenu("Icon Size") }) {
        for (const auto& item : part->items()) {
            EXPECT_EQ(item->keyEquivalent(), "");
            EXPECT_EQ(item->isEnabled(), !item->isSeparator()) << item->title();
        }
    }
}

TEST_F(PinnedMenuTest, ChecksTheFlagsThatAreSet)
{
    EXPECT_THAT(checkedRows(*menu()), IsEmpty());
    const std::pair<bool Bookmark::*, const char*> flags[] = {
        { &Bookmark::shouldReloadOnOpen, "Reload on Every Open" },
        { &Bookmark::isAlwaysOnTop, "Always on Top" },
        { &Bookmark::prefersDetached, "Always Open in Window" },
        { &Bookmark::openInSystemBrowser, "Open in System Browser" },
        { &Bookmark::isPinned, "Pin to Quick Access" },
    };
    for (const auto& [flag, title] : flags) {
        bookmark.*flag = true;
        EXPECT_THAT(checkedRows(*menu()), ElementsAre(title));
        bookmark.*flag = false;
    }
    bookmark.isAddedToMenuBar = true;
    EXPECT_THAT(checkedRows(*menu()), IsEmpty());
}

TEST_F(PinnedMenuTest, ChecksTheUserAgentThatTheBookmarkHas)
{
    EXPECT_THAT(checkedRows(*submenu("Browser Agent")), ElementsAre("System Default (18.0)"));
    const std::pair<std::string_view, const char*> choices[]
        = { { agents::safari17, "Safari 17.5" }, { agents::chrome, "Chrome" }, { agents::firefox, "Firefox" },
              { agents::iPad, "iPad" }, { agents::iPhone, "iPhone" } };
    for (const auto& [agent, title] : choices) {
        bookmark.userAgent = std::string(agent);
        EXPECT_THAT(checkedRows(*submenu("Browser Agent")), ElementsAre(title));
    }
}

TEST_F(PinnedMenuTest, ChecksNoUserAgentForOneOfTheUsersOwn)
{
    for (const auto& own : { std::string("Mine/1.0"), std::string(), std::string(perchly::agents::safari18),
             std::string(perchly::agents::chrome) + " " }) {
        bookmark.userAgent = own;
        EXPECT_THAT(checkedRows(*submenu("Browser Agent")), IsEmpty()) << own;
    }
}

TEST_F(PinnedMenuTest, ChecksTheIconSizeWithinATenthOfAPoint)
{
    const std::pair<double, const char*> sizes[] = { { 13, "Small" }, { 12.92, "Small" }, { 15, "Medium" },
        { 15.08, "Medium" }, { 18, "Large" }, { 22, "Extra Large" } };
    EXPECT_THAT(checkedRows(*submenu("Icon Size")), ElementsAre("Medium"));
    for (const auto& [size, title] : sizes) {
        bookmark.menubarIconSize = size;
        EXPECT_THAT(checkedRows(*submenu("Icon Size")), ElementsAre(title)) << size;
    }
}

TEST_F(PinnedMenuTest, ChecksNoIconSizeForOneInBetween)
{
    for (const auto size : { 20.0, 16.0, 0.0, 15.2, 12.8 }) {
        bookmark.menubarIconSize = size;
        EXPECT_THAT(checkedRows(*submenu("Icon Size")), IsEmpty()) << size;
    }
}

TEST_F(PinnedMenuTest, RowsCarryTheBookmark)
{
    const auto whole = menu();
    for (const auto& item : whole->items()) {
        if (!item->action())
            continue;
        const auto* carried = std::any_cast<Bookmark>(&item->representedObject());
        ASSERT_NE(carried, nullptr) << item->title();
        EXPECT_EQ(*carried, bookmark);
    }
}

TEST_F(PinnedMenuTest, RowsOfTheBrowserAgentCarryBookmarkAndUserAgent)
{
    std::vector<std::optional<std::string>> carriedAgents;
    const auto part = submenu("Browser Agent");
    for (const auto& item : part->items()) {
        const auto* carried = std::any_cast<UserAgentChoice>(&item->representedObject());
        ASSERT_NE(carried, nullptr) << item->title();
        EXPECT_EQ(carried->bookmark, bookmark);
        carriedAgents.push_back(carried->userAgent);
    }
    EXPECT_THAT(carriedAgents,
        ElementsAre(std::nullopt, std::string(perchly::agents::safari17), std::string(perchly::agents::chrome),
            std::string(perchly::agents::firefox), std::string(perchly::agents::iPad),
            std::string(perchly::agents::iPhone)));
}

TEST_F(PinnedMenuTest, RowsOfTheIconSizeCarryBookmarkAndPoints)
{
    std::vector<double> points;
    const auto part = submenu("Icon Size");
    for (const auto& item : part->items()) {
        const auto* carried = std::any_cast<IconSizeChoice>(&item->representedObject());
        ASSERT_NE(carried, nullptr) << item->title();
        EXPECT_EQ(carried->bookmark, bookmark);
        points.push_back(carried->points);
    }
    EXPECT_THAT(points, ElementsAre(13.0, 15.0, 18.0, 22.0));
}

} // namespace
