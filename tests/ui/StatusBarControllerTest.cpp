#include "statusbar/StatusBarController.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/UserDefaults.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace {

using foundation::NotificationCenter;
using foundation::UserDefaults;
using perchly::Bookmark;
using perchly::BookmarkManager;

class StatusBarControllerTest : public testing::Test {
protected:
    StatusBarControllerTest()
    {
        server.servePage("/", "<title>Home</title><body>home</body>");
        server.servePage("/bookmark", "<title>Bookmark</title><body>bookmark</body>");
    }

    void setHomePage(std::string_view address)
    {
        UserDefaults::standard().setString(address, perchly::preferences::homePageURL);
    }

    [[nodiscard]] appkit::MenuItem& row(std::string_view title) const
    {
        for (const auto& item : controller->statusItem()->menu()->items()) {
            if (item->title() == title)
                return *item;
        }
        throw std::runtime_error("No row " + std::string(title));
    }

    [[nodiscard]] bool hasRow(std::string_view title) const
    {
        const auto menu = controller->statusItem()->menu();
        return std::ranges::any_of(menu->items(), [&](const auto& item) { return item->title() == title; });
    }

    [[nodiscard]] appkit::Popover& popover() const { return controller->surfaces().popover(); }

    [[nodiscard]] std::shared_ptr<perchly::BrowserViewController> shownBrowser() const
    {
        return std::dynamic_pointer_cast<perchly::BrowserViewController>(popover().contentViewController());
    }

    [[nodiscard]] bool showsPage(std::string_view path) const
    {
        return perchly::test::waitUntil([&] {
            const auto browser = shownBrowser();
            return popover().isShown() && browser && !browser->webView()->isLoading() && browser->webView()->url()
                && browser->webView()->url()->absoluteString() == server.url(path);
        });
    }

    Bookmark addPinnedBookmark()
    {
        Bookmark bookmark { .title = "Pinned here", .url = server.url("/bookmark"), .isPinned = true };
        BookmarkManager::shared().addBookmark(bookmark);
        NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);
        return bookmark;
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<perchly::StatusBarController> controller = perchly::StatusBarController::create();
};

TEST_F(StatusBarControllerTest, TheStatusItemShowsATemplateImage)
{
    const auto button = controller->statusItem()->button();

    ASSERT_NE(button, nullptr);
    ASSERT_NE(button->image(), nullptr);
    EXPECT_EQ(button->image()->name(), "AppStatusBarIcon");
    EXPECT_TRUE(button->image()->isTemplate());
    EXPECT_EQ(button->action().name(), "statusBarButtonClicked");
}

TEST_F(StatusBarControllerTest, TheMenuFollowsTheBookmarksAtOnce)
{
    auto bookmark = addPinnedBookmark();
    EXPECT_TRUE(hasRow("Pinned here"));

    BookmarkManager::shared().togglePin(bookmark.id);
    EXPECT_TRUE(hasRow("Pinned here"));
    NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);

    EXPECT_FALSE(hasRow("Pinned here"));
}

TEST_F(StatusBarControllerTest, OpenBrowserShowsTheHomePageAt600By700)
{
    setHomePage(server.url("/"));

    row("Open Browser").performAction();

    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(popover().contentSize(), (foundation::Size { 600, 700 }));
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(StatusBarControllerTest, OpenBrowserTwiceLeavesThePopoverOpenAndThePageAlone)
{
    setHomePage(server.url("/"));
    row("Open Browser").performAction();
    ASSERT_TRUE(showsPage("/"));

    row("Open Browser").performAction();

    EXPECT_TRUE(popover().isShown());
    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(StatusBarControllerTest, OpenBrowserLoadsTheHomePageIntoABlankBrowser)
{
    row("Open Browser").performAction();
    ASSERT_TRUE(popover().isShown());
    EXPECT_EQ(server.requestCount("/"), 0U);
    setHomePage(server.url("/"));

    row("Open Browser").performAction();

    EXPECT_TRUE(showsPage("/"));
}

TEST_F(StatusBarControllerTest, AHomePageThatIsEmptyIsNone)
{
    setHomePage("");

    row("Open Browser").performAction();

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(shownBrowser()->webView()->url(), std::nullopt);
}

TEST_F(StatusBarControllerTest, TheItemsOwnClickShowsTheBrowserAndClosesIt)
{
    setHomePage(server.url("/"));
    controller->statusItem()->button()->performClick();
    ASSERT_TRUE(showsPage("/"));
    EXPECT_TRUE(perchly::test::waitUntil([&] {
        const auto window = shownBrowser()->view()->window();
        return window && window->isKeyWindow();
    }));

    controller->statusItem()->button()->performClick();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return !popover().isShown(); }));
}

TEST_F(StatusBarControllerTest, ClosingThePopoverKeepsThePageForTheNextTime)
{
    setHomePage(server.url("/"));
    row("Open Browser").performAction();
    ASSERT_TRUE(showsPage("/"));
    const auto browser = shownBrowser();

    popover().performClose();
    ASSERT_TRUE(perchly::test::waitUntil([&] { return popover().contentViewController() == nullptr; }));
    row("Open Browser").performAction();

    EXPECT_TRUE(showsPage("/"));
    EXPECT_EQ(shownBrowser(), browser);
    EXPECT_EQ(server.requestCount("/"), 1U);
}

TEST_F(StatusBarControllerTest, ClosingThePopoverStopsTheLoad)
{
    server.serve("/slow", { .body = "<title>Slow</title>", .hold = perchly::test::Hold::BeforeHead });
    setHomePage(server.url("/slow"));
    row("Open Browser").performAction();
    ASSERT_TRUE(perchly::test::waitUntil([&] { return server.requestCount("/slow") == 1; }));
    const auto browser = shownBrowser();
    ASSERT_TRUE(browser->webView()->isLoading());

    popover().performClose();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return !browser->webView()->isLoading(); }));
    server.release("/slow");
}

TEST_F(StatusBarControllerTest, APinnedBookmarkOpensInItsOwnBrowser)
{
    const auto bookmark = addPinnedBookmark();

    row("Pinned here").performAction();

    EXPECT_TRUE(showsPage("/bookmark"));
    EXPECT_EQ(shownBrowser()->currentBookmarkId(), bookmark.id);
    EXPECT_EQ(controller->surfaces().generalBrowserViewController(), nullptr);
    row("Pinned here").performAction();
    EXPECT_TRUE(showsPage("/bookmark"));
    EXPECT_EQ(server.requestCount("/bookmark"), 1U);
}

TEST_F(StatusBarControllerTest, APinnedBookmarkThatReloadsOnOpenIsLoadedAgain)
{
    auto bookmark = addPinnedBookmark();
    row("Pinned here").performAction();
    ASSERT_TRUE(showsPage("/bookmark"));
    bookmark.shouldReloadOnOpen = true;
    BookmarkManager::shared().updateBookmark(bookmark);
    NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);

    row("Pinned here").performAction();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return server.requestCount("/bookmark") == 2; }));
}

TEST_F(StatusBarControllerTest, ABookmarkFromTheListIsShownWithoutAReload)
{
    auto bookmark = addPinnedBookmark();
    bookmark.shouldReloadOnOpen = true;
    controller->showBookmarkInPopover(bookmark);
    ASSERT_TRUE(showsPage("/bookmark"));

    controller->showBookmarkInPopover(bookmark);

    EXPECT_TRUE(showsPage("/bookmark"));
    EXPECT_EQ(server.requestCount("/bookmark"), 1U);
}

TEST_F(StatusBarControllerTest, ABookmarkCalledGeneralSharesTheGeneralBrowser)
{
    const Bookmark bookmark { .id = "general", .url = server.url("/bookmark") };

    controller->showBookmarkInPopover(bookmark);

    EXPECT_NE(shownBrowser(), nullptr);
    EXPECT_EQ(shownBrowser(), controller->surfaces().generalBrowserViewController());
}

TEST_F(StatusBarControllerTest, ARowWithoutABookmarkDoesNothing)
{
    appkit::MenuItem stray("Stray", {});

    controller->pinnedBookmarkClicked(stray);
    controller->openInSystemBrowserClicked(stray);

    EXPECT_FALSE(popover().isShown());
}

TEST_F(StatusBarControllerTest, ANewHomePageIsLoadedIntoTheGeneralBrowserOnly)
{
    NotificationCenter::defaultCenter().post(perchly::notifications::settingsDidChange);
    EXPECT_EQ(controller->surfaces().generalBrowserViewController(), nullptr);
    row("Open Browser").performAction();
    setHomePage(server.url("/"));

    NotificationCenter::defaultCenter().post(perchly::notifications::settingsDidChange);

    EXPECT_TRUE(showsPage("/"));
    UserDefaults::standard().removeObjectForKey(perchly::preferences::homePageURL);
    NotificationCenter::defaultCenter().post(perchly::notifications::settingsDidChange);
    EXPECT_TRUE(perchly::test::waitUntil([&] { return shownBrowser()->showsBlankPage(); }));
}

} // namespace
