#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/linux/PageProcess.h"
#include "ui/SurfacesTest.h"

#include <cstdlib>

namespace {

using perchly::test::killPageProcesses;
using perchly::test::waitUntil;

/// What of windows and pages only this system's own means show.
class DetachedBrowserTest : public SurfacesTest {
protected:
    /// Its page's process ends, and the page has come back.
    void killPage(const perchly::Bookmark& bookmark, const std::string& path)
    {
        const auto before = server.requestCount(path);
        ASSERT_GT(killPageProcesses(), 0);
        ASSERT_TRUE(waitUntil([&] { return server.requestCount(path) == before + 1; }));
        ASSERT_TRUE(showsPage(browserOf(bookmark), path));
    }

    [[nodiscard]] static bool isDrawn(const Browser& browser)
    {
        (void)valueIn(browser, "drawn = ''; requestAnimationFrame(() => { drawn = 'drawn' }); drawn");
        return comesTo(browser, "drawn", "drawn");
    }

    [[nodiscard]] GtkWindow* toplevelOf(const perchly::Bookmark& bookmark) const
    {
        return windowOf(bookmark)->native().window;
    }
};

TEST_F(DetachedBrowserTest, AWindowHasATitleBarAndMayBeClosedAndResized)
{
    openWindow(first, "/first");
    auto* window = toplevelOf(first);

    for (const auto* property : { "decorated", "deletable", "resizable" }) {
        auto value = FALSE;
        g_object_get(window, property, &value, nullptr);
        EXPECT_TRUE(value) << property;
    }
}

TEST_F(DetachedBrowserTest, AWindowsPageBeginsAHundredPointsFromTheLowerLeftCornerOfTheScreen)
{
    first.preferredWidth = 500;
    first.preferredHeight = 450;
    openWindow(first, "/first");
    auto* toplevel = toplevelOf(first);
    const auto screen = desktop::screenSpace(gtk_widget_get_display(GTK_WIDGET(toplevel))).mainMonitor;

    EXPECT_TRUE(waitUntil([&] {
        return desktop::X11Window(GTK_WIDGET(toplevel)).position()
            == desktop::PixelPoint { screen.x + 100, screen.bottom() - 100 - 450 };
    }));
}

TEST_F(DetachedBrowserTest, TheUserClosesAWindow)
{
    openWindow(first, "/first");
    const auto window = windowOf(first);

    gtk_window_close(window->native().window);

    EXPECT_TRUE(waitUntil([&] { return windowOf(first) == nullptr; }));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(DetachedBrowserTest, AClickOpensThePopoverUnderTheItemThatWasClicked)
{
    controller->statusItem()->button()->native().lastClick = { 1000, 15 };
    item->button()->native().lastClick = { 400, 15 };
    const auto middle = [this](const perchly::Bookmark& bookmark) {
        const auto frame = browserOf(bookmark)->view()->window()->frame();
        return frame.origin.x + frame.size.width / 2;
    };
    first.preferredWidth = second.preferredWidth = 400;

    click(first);
    EXPECT_TRUE(waitUntil([&] { return std::abs(middle(first) - 400) <= 1; }));
    controller->showBookmarkInPopover(second);
    EXPECT_TRUE(waitUntil([&] { return std::abs(middle(second) - 1000) <= 1; }));
}

TEST_F(DetachedBrowserTest, APageThatDiedOutOfSightIsThereInThePopover)
{
    openPopover(first, "/first");
    popover().performClose();
    killPage(first, "/first");

    click(first);

    EXPECT_EQ(valueIn(browserOf(first), "document.title"), "First");
    EXPECT_TRUE(isDrawn(browserOf(first)));
}

TEST_F(DetachedBrowserTest, APageThatDiedOutOfSightIsThereInAWindow)
{
    openPopover(first, "/first");
    popover().performClose();
    killPage(first, "/first");

    openWindow(first, "/first");

    EXPECT_EQ(valueIn(browserOf(first), "document.title"), "First");
    EXPECT_TRUE(isDrawn(browserOf(first)));
}

TEST_F(DetachedBrowserTest, APageThatDiedInItsWindowIsThereAgain)
{
    openWindow(first, "/first");

    killPage(first, "/first");

    EXPECT_EQ(valueIn(browserOf(first), "document.title"), "First");
    EXPECT_TRUE(isDrawn(browserOf(first)));
    EXPECT_TRUE(windowOf(first)->isVisible());
}

TEST_F(DetachedBrowserTest, APageThatDiesOnItsWayIsThereAgain)
{
    openPopover(first, "/first");
    controller->openDetachedWindow(first);

    killPage(first, "/first");

    EXPECT_TRUE(waitUntil([&] { return browserOf(first)->view()->window() == windowOf(first); }));
    EXPECT_EQ(valueIn(browserOf(first), "document.title"), "First");
    EXPECT_TRUE(isDrawn(browserOf(first)));
}

} // namespace
