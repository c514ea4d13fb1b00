#include "ui/SilentSound.h"
#include "ui/SurfacesTest.h"

namespace {

using perchly::test::waitUntil;

/// Moves and closings that come at an awkward moment.
class SurfaceOrderTest : public SurfacesTest { };

TEST_F(SurfaceOrderTest, ClosedBeforeItsPageBeganABookmarkIsLoadedAtTheNextClick)
{
    click(first);
    popover().performClose();

    // The stopped load has to end before the browser is known to be blank.
    const auto browser = browserOf(first);
    ASSERT_TRUE(waitUntil([&] { return !browser->webView()->isLoading(); }));
    click(first);

    EXPECT_TRUE(showsPage(browser, "/first"));
    EXPECT_TRUE(comesTo(browser, "document.body.textContent", "first"));
}

TEST_F(SurfaceOrderTest, AWindowOpenedBeforeThePageBeganDoesNotLoadWithoutEnd)
{
    click(first);
    controller->openDetachedWindow(first);

    EXPECT_TRUE(waitUntil([&] { return !browserOf(first)->webView()->isLoading(); }));
}

TEST_F(SurfaceOrderTest, ABrowserThatHasLeftThePopoverIsNotSilencedForTheNext)
{
    server.serve("/sound.wav", { .body = perchly::test::silentSound(), .contentType = "audio/wav" });
    server.servePage("/first", "<audio id=player src=/sound.wav loop></audio>");
    openPopover(first, "/first");
    controller->openDetachedWindow(first);
    ASSERT_FALSE(popover().isShown());
    // The order to pause that came with the move may still be on its way.
    ASSERT_TRUE(comesTo(browserOf(first), "player.play(); String(player.currentTime > 0)", "true"));

    openPopover(second, "/second");
    letPass(std::chrono::milliseconds(300));

    EXPECT_EQ(valueIn(browserOf(first), "String(player.paused)"), "false");
}

TEST_F(SurfaceOrderTest, AWindowThatLentItsBrowserKeepsTheSizeThatTheUserGaveIt)
{
    openWindow(first, "/first");
    const auto window = windowOf(first);
    window->setContentSize({ 520, 450 });
    ASSERT_TRUE(isLaidOut(browserOf(first), { 520, 450 }));
    openPopover(first, "/first");

    popover().performClose();

    EXPECT_TRUE(isLaidOut(browserOf(first), { 520, 450 }));
}

TEST_F(SurfaceOrderTest, AClickBringsTheBrowserBackIntoItsWindowAtOnce)
{
    openWindow(first, "/first");
    openPopover(first, "/first");
    ASSERT_EQ(browserInPopover(), browserOf(first));

    click(first);

    EXPECT_FALSE(popover().isShown());
    EXPECT_TRUE(waitUntil([&] { return browserOf(first)->view()->window() == windowOf(first); }));
}

TEST_F(SurfaceOrderTest, AWindowClosedWhileItsBrowserIsOnTheWayStaysEmpty)
{
    openPopover(first, "/first");
    controller->openDetachedWindow(first);
    const auto window = windowOf(first);
    ASSERT_NE(window, nullptr);

    window->close();
    letPass(std::chrono::milliseconds(50));
    click(first);

    EXPECT_TRUE(popover().isShown());
    EXPECT_TRUE(comesTo(browserOf(first), "document.body.textContent", "first"));
    EXPECT_TRUE(isLaidOut(browserOf(first), { 600, 700 }));
}

TEST_F(SurfaceOrderTest, SizesThatNoScreenHasStillOpen)
{
    for (const auto length : { -5.0, 0.0, 1e300 }) {
        first.preferredWidth = first.preferredHeight = length;
        controller->openDetachedWindow(first);
        const auto window = windowOf(first);
        ASSERT_NE(window, nullptr) << length;
        EXPECT_TRUE(window->isVisible()) << length;
        window->close();
        controller = perchly::StatusBarController::create();
    }
}

} // namespace
