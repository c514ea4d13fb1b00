#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "ui/BrowserTest.h"

namespace {

using foundation::Rect;

/// A browser on the screen, 600 x 700 points. y grows upwards.
class BrowserLayoutTest : public BrowserTest {
protected:
    BrowserLayoutTest()
    {
        popover.setContentViewController(browser);
        popover.setContentSize({ 600, 700 });
        popover.show(item->button()->bounds(), *item->button(), appkit::RectEdge::MinY);
    }

    [[nodiscard]] bool isLaidOut()
    {
        return perchly::test::waitUntil([&] { return browser->webView()->frame() == Rect { { 2, 2 }, { 596, 658 } }; });
    }

    std::shared_ptr<appkit::StatusItem> item = appkit::StatusBar::systemStatusBar().statusItem();
    appkit::Popover popover;
};

double right(const Rect& frame)
{
    return frame.origin.x + frame.size.width;
}

double middle(const Rect& frame)
{
    return frame.origin.y + frame.size.height / 2;
}

TEST_F(BrowserLayoutTest, ThePageLiesUnderAToolbarOf40Points)
{
    EXPECT_TRUE(isLaidOut());
}

TEST_F(BrowserLayoutTest, TheToolbarReadsFromBackToReload)
{
    ASSERT_TRUE(isLaidOut());
    const auto field = toolbar().urlTextField->frame();
    const auto back = toolbar().backButton->frame();
    const auto forward = toolbar().forwardButton->frame();
    const auto home = toolbar().homeButton->frame();
    const auto pin = toolbar().pinButton->frame();
    const auto menu = toolbar().menuButton->frame();
    const auto bookmark = toolbar().addBookmarkButton->frame();
    const auto reload = toolbar().reloadButton->frame();

    EXPECT_EQ(back.origin.x, 8);
    EXPECT_EQ(forward.origin.x, right(back) + 2);
    EXPECT_EQ(home.origin.x, right(forward) + 2);
    EXPECT_EQ(field.origin.x, right(home) + 8);
    EXPECT_EQ(pin.origin.x, right(field) + 8);
    EXPECT_EQ(menu.origin.x, right(pin) + 2);
    EXPECT_EQ(bookmark.origin.x, right(menu) + 2);
    EXPECT_EQ(reload.origin.x, right(bookmark) + 2);
    EXPECT_EQ(right(reload), 592);

    EXPECT_EQ(field.size.height, 24);
    EXPECT_EQ(field.origin.y + field.size.height, 692);
    for (const auto& button : { back, forward, home, pin, menu, bookmark, reload }) {
        EXPECT_EQ(button.size.width, 26);
        EXPECT_EQ(middle(button), middle(field));
    }
}

TEST_F(BrowserLayoutTest, TheSpinnerSitsInsideTheEndOfTheAddressField)
{
    ASSERT_TRUE(isLaidOut());
    server.serve("/slow", { .body = "", .hold = perchly::test::Hold::BeforeHead });
    browser->loadURLString(server.url("/slow"), perchly::CurrentBookmark::Clear);
    ASSERT_TRUE(perchly::test::waitUntil([&] { return toolbar().progressIndicator->frame().size.width == 16; }));
    const auto field = toolbar().urlTextField->frame();
    const auto spinner = toolbar().progressIndicator->frame();

    EXPECT_EQ(right(spinner), right(field) - 4);
    EXPECT_EQ(spinner.size.height, 16);
    EXPECT_EQ(middle(spinner), middle(field));
}

} // namespace
