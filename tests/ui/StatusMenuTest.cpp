#include "statusbar/StatusMenu.h"
#include "bookmarks/Bookmark.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using perchly::Bookmark;
using testing::ElementsAre;

/// Counts what its rows do.
struct Target {
    void act() { ++actions; }
    int actions = 0;
};

class StatusMenuTest : public testing::Test {
protected:
    [[nodiscard]] std::shared_ptr<appkit::Menu> menuFor(const std::vector<Bookmark>& bookmarks) const
    {
        const auto action
            = [this](const char* name) { return appkit::Action(name, std::weak_ptr(target), &Target::act); };
        return perchly::makeStatusMenu(bookmarks,
            { .showBrowserWindow = action("showBrowserWindow"),
                .showBookmarkList = action("showBookmarkList"),
                .showSettings = action("showSettings"),
                .showAbout = action("showAbout"),
                .quitApp = action("quitApp"),
                .pinnedBookmarkClicked = action("pinnedBookmarkClicked:"),
                .openInSystemBrowserClicked = action("openInSystemBrowserClicked:") });
    }

    /// Titles; a row of "-" for a separator, brackets around a disabled row.
    [[nodiscard]] static std::vector<std::string> rows(const appkit::Menu& menu)
    {
        std::vector<std::string> rows;
        for (const auto& item : menu.items()) {
            if (item->isSeparator())
                rows.emplace_back("-");
            else
                rows.push_back(item->isEnabled() ? item->title() : "[" + item->title() + "]");
        }
        return rows;
    }

    std::shared_ptr<Target> target = std::make_shared<Target>();
};

TEST_F(StatusMenuTest, SaysSoWhenNothingIsPinned)
{
    const auto menu = menuFor({ { .title = "Not pinned" } });

    EXPECT_THAT(rows(*menu),
        ElementsAre("Open Browser", "Bookmarks Manager", "-", "[No Pinned Bookmarks]", "-", "Settings...", "About", "-",
            "Quit"));
}

TEST_F(StatusMenuTest, ListsThePinnedBookmarksInTheirOrderUnderACaption)
{
    const auto menu
        = menuFor({ { .title = "B", .isPinned = true }, { .title = "C" }, { .title = "A", .isPinned = true } });

    EXPECT_THAT(rows(*menu),
        ElementsAre("Open Browser", "Bookmarks Manager", "-", "[Pinned Quick Access:]", "B", "A", "-", "Settings...",
            "About", "-", "Quit"));
}

TEST_F(StatusMenuTest, HasTheActionsAndTheirKeys)
{
    const auto menu = menuFor({});
    std::vector<std::string> keys;
    for (const auto& item : menu->items()) {
        if (!item->isSeparator())
            keys.push_back(item->action().name() + " " + item->keyEquivalent());
    }

    EXPECT_THAT(keys,
        ElementsAre("showBrowserWindow b", "showBookmarkList m", " ", "showSettings ,", "showAbout ", "quitApp q"));
}

TEST_F(StatusMenuTest, OffersEachPinnedBookmarkInTheSystemBrowser)
{
    const Bookmark bookmark { .title = "Pinned", .url = "example.com", .isPinned = true };
    const auto menu = menuFor({ bookmark });
    const auto& item = *menu->items().at(4);

    EXPECT_EQ(item.action().name(), "pinnedBookmarkClicked:");
    EXPECT_EQ(std::any_cast<Bookmark>(item.representedObject()), bookmark);
    ASSERT_NE(item.submenu(), nullptr);
    EXPECT_THAT(rows(*item.submenu()), ElementsAre("Open in System Browser"));
    const auto& elsewhere = *item.submenu()->items().front();
    EXPECT_EQ(elsewhere.action().name(), "openInSystemBrowserClicked:");
    EXPECT_EQ(std::any_cast<Bookmark>(elsewhere.representedObject()), bookmark);
    ASSERT_NE(elsewhere.image(), nullptr);
    EXPECT_EQ(elsewhere.image()->name(), "safari");
    EXPECT_EQ(elsewhere.image()->accessibilityDescription(), "Open in System Browser");
}

TEST_F(StatusMenuTest, ARowWhoseTargetIsGoneDoesNothing)
{
    const auto menu = menuFor({});
    menu->items().front()->performAction();
    EXPECT_EQ(target->actions, 1);

    const std::weak_ptr<Target> observed = target;
    target.reset();

    menu->items().front()->performAction();

    EXPECT_TRUE(observed.expired());
}

} // namespace
