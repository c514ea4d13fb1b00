#include "ui/SilentSound.h"
#include "ui/SurfacesTest.h"

namespace {

using appkit::WindowLevel;
using perchly::Bookmark;
using perchly::test::waitUntil;

class DetachedWindowTest : public SurfacesTest {
protected:
    [[nodiscard]] static Bookmark onTop(Bookmark bookmark, bool isAlwaysOnTop)
    {
        bookmark.isAlwaysOnTop = isAlwaysOnTop;
        return bookmark;
    }
};

TEST_F(DetachedWindowTest, IsNamedAfterItsBookmark)
{
    openWindow(first, "/first");

    EXPECT_EQ(windowOf(first)->title(), "First");
    EXPECT_EQ(windowOf(first)->className().find("Popover"), std::string::npos);
}

TEST_F(DetachedWindowTest, FloatsIfItsBookmarkIsAlwaysOnTop)
{
    controller->openDetachedWindow(onTop(first, true));
    controller->openDetachedWindow(onTop(second, false));

    EXPECT_EQ(windowOf(first)->level(), WindowLevel::Floating);
    EXPECT_EQ(windowOf(second)->level(), WindowLevel::Normal);
}

TEST_F(DetachedWindowTest, IsAsLargeAsItsBookmark)
{
    first.preferredWidth = 444;
    first.preferredHeight = 333;

    openWindow(first, "/first");

    EXPECT_TRUE(isLaidOut(browserOf(first), { 444, 333 }));
}

TEST_F(DetachedWindowTest, Is600By700WithoutASize)
{
    openWindow(first, "/first");

    EXPECT_TRUE(isLaidOut(browserOf(first), { 600, 700 }));
}

TEST_F(DetachedWindowTest, IsKnownExactlyWhileItIsOpen)
{
    EXPECT_EQ(windowOf(first), nullptr);
    controller->openDetachedWindow(first);
    const auto window = windowOf(first);
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(windowOf(second), nullptr);

    window->close();

    EXPECT_EQ(windowOf(first), nullptr);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(DetachedWindowTest, OpenedTwiceStaysWhatAndWhereItIs)
{
    openWindow(first, "/first");
    openWindow(second, "/second");
    const auto window = windowOf(first);
    auto renamed = onTop(first, true);
    renamed.title = "Renamed";

    controller->openDetachedWindow(renamed);

    EXPECT_EQ(windowOf(first), window);
    EXPECT_EQ(window->title(), "First");
    EXPECT_EQ(window->level(), WindowLevel::Normal);
    letPass(std::chrono::milliseconds(100));
    EXPECT_TRUE(windowOf(second)->isKeyWindow());
}

TEST_F(DetachedWindowTest, TakesItsBrowserOutOfThePopoverAndClosesThat)
{
    openPopover(first, "/first");
    const auto browser = browserInPopover();

    controller->openDetachedWindow(first);

    EXPECT_FALSE(popover().isShown());
    EXPECT_EQ(browserInPopover(), nullptr);
    EXPECT_EQ(windowOf(first)->contentViewController(), browser);
    EXPECT_TRUE(waitUntil([&] { return browser->view()->window() == windowOf(first); }));
    EXPECT_TRUE(isKey(*windowOf(first)));
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(DetachedWindowTest, LeavesAPopoverWithAnotherBrowserAlone)
{
    openPopover(second, "/second");

    controller->openDetachedWindow(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(browserInPopover(), browserOf(second));
}

TEST_F(DetachedWindowTest, OutlivesThePopover)
{
    openWindow(first, "/first");
    openPopover(second, "/second");

    popover().performClose();

    EXPECT_NE(windowOf(first), nullptr);
    EXPECT_TRUE(windowOf(first)->isVisible());
    EXPECT_EQ(browserOf(first)->view()->window(), windowOf(first));
}

TEST_F(DetachedWindowTest, OfTheIdGeneralHasTheGeneralBrowser)
{
    const Bookmark general { .id = "general", .title = "General", .url = server.url("/first") };

    controller->openDetachedWindow(general);

    ASSERT_NE(windowOf(general), nullptr);
    EXPECT_EQ(windowOf(general)->contentViewController(), controller->surfaces().generalBrowserViewController());
}

TEST_F(DetachedWindowTest, ClosedPausesItsPage)
{
    server.serve("/sound.wav", { .body = perchly::test::silentSound(), .contentType = "audio/wav" });
    server.servePage("/music", "<audio id=player src=/sound.wav loop></audio>");
    const Bookmark music { .url = server.url("/music") };
    openWindow(music, "/music");
    const auto browser = browserOf(music);
    // A script of ours counts as the user's own touch.
    ASSERT_TRUE(comesTo(browser, "player.play(); String(player.currentTime > 0)", "true"));
    ASSERT_EQ(valueIn(browser, "String(player.paused)"), "false");

    windowOf(music)->close();

    EXPECT_TRUE(comesTo(browser, "String(player.paused)", "true"));
}

TEST_F(DetachedWindowTest, ClosedStopsTheLoad)
{
    server.serve("/slow", { .body = "<title>Slow</title>", .hold = perchly::test::Hold::BeforeHead });
    const Bookmark slow { .url = server.url("/slow") };
    controller->openDetachedWindow(slow);
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/slow") == 1; }));
    ASSERT_TRUE(browserOf(slow)->webView()->isLoading());

    windowOf(slow)->close();

    EXPECT_TRUE(waitUntil([&] { return !browserOf(slow)->webView()->isLoading(); }));
}

TEST_F(DetachedWindowTest, ClosedLeavesItsBrowserToThePopover)
{
    openWindow(first, "/first");
    const auto browser = browserOf(first);
    windowOf(first)->close();

    click(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(browserInPopover(), browser);
    EXPECT_EQ(browserOf(first), browser);
    EXPECT_TRUE(isLaidOut(browser, { 600, 700 }));
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(DetachedWindowTest, ClosedLeavesItsBrowserToANewWindow)
{
    openWindow(first, "/first");
    const auto browser = browserOf(first);
    const auto former = windowOf(first);
    former->close();

    openWindow(first, "/first");

    EXPECT_NE(windowOf(first), former);
    EXPECT_EQ(windowOf(first)->contentViewController(), browser);
    EXPECT_EQ(browser->view()->window(), windowOf(first));
    EXPECT_EQ(server.requestCount("/first"), 1U);
}

TEST_F(DetachedWindowTest, ClosedWhileThePopoverHasItsBrowserLeavesItThere)
{
    openWindow(first, "/first");
    openPopover(first, "/first");

    windowOf(first)->close();
    perchly::test::handlePendingEvents();

    EXPECT_EQ(windowOf(first), nullptr);
    EXPECT_EQ(browserInPopover(), browserOf(first));
    EXPECT_TRUE(popover().isShown());
    popover().performClose();
    EXPECT_EQ(browserOf(first)->view()->window(), nullptr);
}

TEST_F(DetachedWindowTest, FollowsItsBookmarksLevelAtOnce)
{
    openWindow(first, "/first");
    openWindow(second, "/second");

    controller->updateWindowLevel(onTop(first, true));

    EXPECT_EQ(windowOf(first)->level(), WindowLevel::Floating);
    EXPECT_EQ(windowOf(second)->level(), WindowLevel::Normal);
    controller->updateWindowLevel(onTop(first, false));
    EXPECT_EQ(windowOf(first)->level(), WindowLevel::Normal);
}

TEST_F(DetachedWindowTest, ALevelWithoutAWindowIsNothing)
{
    controller->updateWindowLevel(onTop(first, true));
    EXPECT_EQ(windowOf(first), nullptr);
    openWindow(first, "/first");
    windowOf(first)->close();

    controller->updateWindowLevel(onTop(first, true));

    EXPECT_EQ(windowOf(first), nullptr);
    controller->openDetachedWindow(first);
    EXPECT_EQ(windowOf(first)->level(), WindowLevel::Normal);
}

TEST_F(DetachedWindowTest, SurvivesThatItsBookmarkIsDeleted)
{
    openWindow(first, "/first");
    store().removeBookmark(first.id);
    foundation::NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);

    EXPECT_TRUE(windowOf(first)->isVisible());
    EXPECT_EQ(valueIn(browserOf(first), "document.title"), "First");
    windowOf(first)->close();
    EXPECT_EQ(windowOf(first), nullptr);
}

TEST_F(DetachedWindowTest, SurvivesThatItsBookmarkIsDeletedWhileItLoads)
{
    server.serve("/slow", { .body = "<title>Slow</title>", .hold = perchly::test::Hold::BeforeHead });
    const auto slow = stored({ .title = "Slow", .url = server.url("/slow") });
    controller->openDetachedWindow(slow);
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/slow") == 1; }));

    store().removeBookmark(slow.id);
    foundation::NotificationCenter::defaultCenter().post(perchly::notifications::bookmarksDidChange);
    server.release("/slow");

    EXPECT_TRUE(showsPage(browserOf(slow), "/slow"));
    EXPECT_TRUE(windowOf(slow)->isVisible());
}

TEST_F(DetachedWindowTest, IsOneHoweverOftenItIsAskedFor)
{
    for (auto count = 0; count < 5; ++count) {
        click(first);
        controller->openDetachedWindow(first);
    }

    EXPECT_FALSE(popover().isShown());
    EXPECT_EQ(browserInPopover(), nullptr);
    EXPECT_EQ(windowOf(first)->contentViewController(), browserOf(first));
    EXPECT_TRUE(isKey(*windowOf(first)));
    EXPECT_TRUE(waitUntil([&] { return browserOf(first)->view()->window() == windowOf(first); }));
    EXPECT_TRUE(isLaidOut(browserOf(first), { 600, 700 }));
    // The popover closed upon the page's load, which stopped that.
    browserOf(first)->goHome();
    EXPECT_TRUE(showsPage(browserOf(first), "/first"));
}

TEST_F(DetachedWindowTest, APopoverThatClosesWithoutABrowserDoesNotTouchIt)
{
    openWindow(first, "/first");

    controller->popoverDidClose();

    EXPECT_EQ(browserInPopover(), nullptr);
    EXPECT_EQ(browserOf(first)->view()->window(), windowOf(first));
}

TEST_F(DetachedWindowTest, GoesWithTheController)
{
    openWindow(first, "/first");
    openPopover(second, "/second");
    const std::weak_ptr<appkit::Window> window = windowOf(first);
    const std::weak_ptr<perchly::BrowserViewController> browser = browserOf(first);

    controller.reset();

    EXPECT_TRUE(window.expired());
    EXPECT_TRUE(waitUntil([&] { return browser.expired(); }));
}

} // namespace
