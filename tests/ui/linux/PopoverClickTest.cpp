#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/View.h"
#include "platform/appkit/ViewController.h"
#include "platform/appkit/Window.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "support/MainLoop.h"

#include <gtest/gtest.h>

namespace {

using appkit::Popover;
using appkit::StatusBarButton;
using perchly::test::waitUntil;

class Content : public appkit::ViewController {
protected:
    void loadView() override { setView(std::make_shared<appkit::View>(foundation::Rect { {}, { 200, 100 } })); }
};

/// At the moment when the popover has closed the host tells of the click: the button's action shows the popover.
struct Clicker : appkit::PopoverDelegate {
    void popoverDidClose() override
    {
        clicked->native().isBeingClicked = isDirectClick;
        popover->show(clicked->bounds(), *clicked, appkit::RectEdge::MinY);
        clicked->native().isBeingClicked = false;
        isShownAgain = popover->isShown();
    }

    Popover* popover = nullptr;
    std::shared_ptr<StatusBarButton> clicked;
    bool isDirectClick = true;
    std::optional<bool> isShownAgain;
};

class PopoverClickTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (auto* shown : { &popover, &other }) {
            shown->setContentSize({ 200, 100 });
            shown->setContentViewController(std::make_shared<Content>());
        }
        popover.setBehavior(appkit::PopoverBehavior::Transient);
        popover.setDelegate(clicker);
        clicker->popover = &popover;
        clicker->clicked = item->button();
    }

    /// The popover closes because another window takes the keyboard from it.
    void turnAway()
    {
        const auto button = item->button();
        popover.show(button->bounds(), *button, appkit::RectEdge::MinY);
        const auto window = popover.contentViewController()->view()->window();
        ASSERT_TRUE(waitUntil([&] { return window->isKeyWindow(); }));
        other.show(button->bounds(), *otherItem->button(), appkit::RectEdge::MinY);
        ASSERT_TRUE(waitUntil([&] { return clicker->isShownAgain.has_value(); }));
    }

    Popover popover;
    Popover other;
    std::shared_ptr<appkit::StatusItem> item = appkit::StatusBar::systemStatusBar().statusItem();
    std::shared_ptr<appkit::StatusItem> otherItem = appkit::StatusBar::systemStatusBar().statusItem();
    std::shared_ptr<Clicker> clicker = std::make_shared<Clicker>();
};

TEST_F(PopoverClickTest, TheClickThatClosedItDoesNotReopenIt)
{
    turnAway();

    EXPECT_EQ(clicker->isShownAgain, false);
}

TEST_F(PopoverClickTest, AClickOnAnotherItemShowsItThere)
{
    clicker->clicked = otherItem->button();

    turnAway();

    EXPECT_EQ(clicker->isShownAgain, true);
}

TEST_F(PopoverClickTest, ARowOfTheMenuShowsItAtOnce)
{
    clicker->isDirectClick = false;

    turnAway();

    EXPECT_EQ(clicker->isShownAgain, true);
}

} // namespace
