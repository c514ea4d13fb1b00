#include "platform/appkit/Menu.h"
#include "ui/SurfacesTest.h"

#include <stdexcept>

namespace {

using perchly::Bookmark;
using perchly::test::waitUntil;

/// The ways to a bookmark's browser, and when each loads the page again.
class PinnedBookmarkTest : public SurfacesTest {
protected:
    /// As the row of that bookmark in the main status item's menu does.
    void chooseInMenu(Bookmark bookmark) const
    {
        bookmark.isPinned = true;
        store().updateBookmark(bookmark);
        foundation::NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);
        for (const auto& row : controller->statusItem()->menu()->items()) {
            if (row->title() == bookmark.title)
                return row->performAction();
        }
        throw std::runtime_error("No row " + bookmark.title);
    }

    [[nodiscard]] static Bookmark reloading(Bookmark bookmark)
    {
        bookmark.shouldReloadOnOpen = true;
        return bookmark;
    }

    [[nodiscard]] bool isLoadedAgain(const std::string& path, std::size_t count = 2) const
    {
        return waitUntil([&] { return server.requestCount(path) == count; });
    }
};

TEST_F(PinnedBookmarkTest, EachBookmarkHasOneBrowserForEver)
{
    const auto browser = browserOf(first);

    EXPECT_EQ(browserOf(first), browser);
    EXPECT_NE(browserOf(second), browser);
    EXPECT_EQ(browser->currentBookmarkId(), first.id);
    EXPECT_TRUE(showsPage(browser, "/first"));
}

TEST_F(PinnedBookmarkTest, ABrowserIsKnownByTheBookmarksIdAlone)
{
    const auto browser = browserOf(first);
    auto changed = first;
    changed.title = "Renamed";
    changed.url = server.url("/second");

    EXPECT_EQ(browserOf(changed), browser);
    EXPECT_TRUE(showsPage(browser, "/first"));
    EXPECT_EQ(server.requestCount("/second"), 0U);
}

TEST_F(PinnedBookmarkTest, NoBookmarkAndTheIdGeneralMeanTheGeneralBrowser)
{
    auto& surfaces = controller->surfaces();
    EXPECT_EQ(surfaces.generalBrowserViewController(), nullptr);

    const auto general = surfaces.browserViewControllerForBookmark(nullptr);

    EXPECT_EQ(surfaces.generalBrowserViewController(), general);
    EXPECT_EQ(browserOf({ .id = "general", .url = server.url("/first") }), general);
    EXPECT_NE(browserOf(first), general);
    EXPECT_TRUE(showsPage(general, "/"));
    EXPECT_EQ(general->currentBookmarkId(), std::nullopt);
}

TEST_F(PinnedBookmarkTest, TheGeneralBrowserWithoutAHomePageIsEmptyButLoaded)
{
    foundation::UserDefaults::standard().removeObjectForKey(perchly::preferences::homePageURL);

    const auto general = controller->surfaces().browserViewControllerForBookmark(nullptr);

    EXPECT_TRUE(general->isViewLoaded());
    EXPECT_EQ(addressIn(general), "");
    EXPECT_FALSE(general->webView()->isLoading());
}

TEST_F(PinnedBookmarkTest, AClickShowsTheBrowserInThePopoverAtTheBookmarksSize)
{
    first.preferredWidth = 480;
    first.preferredHeight = 400;

    click(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(browserInPopover(), browserOf(first));
    EXPECT_EQ(popover().contentSize(), (foundation::Size { 480, 400 }));
    EXPECT_EQ(windowOf(first), nullptr);
    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
    EXPECT_TRUE(isLaidOut(browserOf(first), { 480, 400 }));
}

TEST_F(PinnedBookmarkTest, AClickOnABookmarkThatTheStoreDoesNotKnowWorks)
{
    click({ .id = "stranger", .url = server.url("/second") });

    EXPECT_TRUE(popover().isShown());
    EXPECT_TRUE(showsPage(browserInPopover(), "/second"));
}

TEST_F(PinnedBookmarkTest, AClickOnAnotherBookmarkReplacesTheBrowserInThePopover)
{
    click(first);

    click(second);

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(browserInPopover(), browserOf(second));
    EXPECT_TRUE(isLaidOut(browserOf(second), { 600, 700 }));
}

TEST_F(PinnedBookmarkTest, ClickedAgainABookmarkShowsTheSamePage)
{
    click(first);
    ASSERT_TRUE(showsPage(browserOf(first), "/first"));
    popover().performClose();
    ASSERT_EQ(browserInPopover(), nullptr);

    click(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_FALSE(browserOf(first)->webView()->isLoading());
    EXPECT_TRUE(comesTo(browserOf(first), "document.visibilityState", "visible"));
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(PinnedBookmarkTest, ClickedAgainABookmarkThatReloadsOnOpenIsLoadedAgain)
{
    click(reloading(first));
    ASSERT_TRUE(showsPage(browserOf(first), "/first"));
    const auto loads = server.requestCount("/first");
    popover().performClose();

    click(reloading(first));

    EXPECT_TRUE(isLoadedAgain("/first", loads + 1));
}

TEST_F(PinnedBookmarkTest, AClickLoadsABlankBrowserAgain)
{
    openPopover(first, "/first");
    makeBlank(first);

    click(first);

    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
}

TEST_F(PinnedBookmarkTest, TheMenuLoadsABlankBrowserAgain)
{
    openPopover(first, "/first");
    makeBlank(first);

    chooseInMenu(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
}

TEST_F(PinnedBookmarkTest, TheMenuShowsABookmarkWithAWindowInThePopover)
{
    first.prefersDetached = true;
    openWindow(first, "/first");

    chooseInMenu(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(browserInPopover(), browserOf(first));
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(PinnedBookmarkTest, TheListShowsABlankBrowserAsItIs)
{
    openPopover(first, "/first");
    makeBlank(first);

    controller->showBookmarkInPopover(reloading(first));

    EXPECT_EQ(browserInPopover(), browserOf(first));
    EXPECT_FALSE(browserOf(first)->webView()->isLoading());
    EXPECT_EQ(addressIn(browserOf(first)), "about:blank");
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(PinnedBookmarkTest, TheListIgnoresThatABookmarkPrefersAWindow)
{
    first.prefersDetached = true;

    openPopover(first, "/first");

    EXPECT_EQ(windowOf(first), nullptr);
}

TEST_F(PinnedBookmarkTest, DetachingLoadsABlankBrowserAgain)
{
    openPopover(first, "/first");
    popover().performClose();
    makeBlank(first);

    controller->openDetachedWindow(first);

    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
}

TEST_F(PinnedBookmarkTest, DetachingDoesNotReload)
{
    openPopover(first, "/first");

    openWindow(reloading(first), "/first");

    EXPECT_FALSE(browserOf(first)->webView()->isLoading());
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(PinnedBookmarkTest, AClickOpensAWindowForABookmarkThatPrefersOne)
{
    first.prefersDetached = true;

    click(first);

    ASSERT_NE(windowOf(first), nullptr);
    EXPECT_EQ(windowOf(first)->contentViewController(), browserOf(first));
    EXPECT_TRUE(windowOf(first)->isVisible());
    EXPECT_FALSE(popover().isShown());
    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
}

TEST_F(PinnedBookmarkTest, AClickThatOpensAWindowDoesNotReload)
{
    openPopover(first, "/first");
    popover().performClose();
    auto detached = reloading(first);
    detached.prefersDetached = true;

    click(detached);

    ASSERT_NE(windowOf(first), nullptr);
    EXPECT_FALSE(browserOf(first)->webView()->isLoading());
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(PinnedBookmarkTest, AClickBringsTheOpenWindowForward)
{
    openWindow(first, "/first");
    openWindow(second, "/second");

    click(first);

    EXPECT_TRUE(isKey(*windowOf(first)));
    EXPECT_FALSE(popover().isShown());
    EXPECT_EQ(browserInPopover(), nullptr);
}

TEST_F(PinnedBookmarkTest, AClickThatBringsAWindowForwardNeitherReloadsNorOpensAnother)
{
    auto detached = reloading(first);
    detached.prefersDetached = true;
    openWindow(detached, "/first");
    const auto window = windowOf(first);
    const auto loads = server.requestCount("/first");

    click(detached);

    EXPECT_EQ(windowOf(first), window);
    EXPECT_FALSE(browserOf(first)->webView()->isLoading());
    EXPECT_EQ(server.requestCount("/first"), loads);
}

} // namespace
