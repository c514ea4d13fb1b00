#include "platform/appkit/Alert.h"
#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/desktop/X11Property.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/linux/ToplevelTitled.h"
#include "ui/ContentWindow.h"

#include <X11/Xatom.h>
#include <gdk/x11/gdkx.h>
#include <gtk/gtk.h>

#include <string_view>

namespace {

using appkit::Alert;
using perchly::test::toplevelTitled;
using perchly::test::waitUntil;

/// The place of the window with that title among all, counted from the lowest; negative for none.
int levelOf(std::string_view title)
{
    auto* window = toplevelTitled(title, true);
    if (!window)
        return -1;
    auto* display = gdk_display_get_default();
    const auto id = desktop::X11Window(GTK_WIDGET(window)).id();
    // There is no telling how many there are; the longest list that is complete is the list.
    for (auto count = 64UL; count > 0; --count) {
        const desktop::X11Property stacking(
            display, gdk_x11_display_get_xrootwindow(display), "_NET_CLIENT_LIST_STACKING", XA_WINDOW, count);
        if (!stacking.values())
            continue;
        for (auto index = 0UL; index < count; ++index) {
            if (stacking.values()[index] == id)
                return static_cast<int>(index);
        }
    }
    return -1;
}

bool comesToLieAbove(std::string_view upper, std::string_view lower)
{
    return waitUntil([=] { return levelOf(lower) >= 0 && levelOf(upper) > levelOf(lower); });
}

bool getsTheKeyboard(std::string_view title)
{
    return waitUntil([=] {
        auto* window = toplevelTitled(title, true);
        return window && gtk_window_is_active(window);
    });
}

/// Questions to the user of a window that floats.
class AlertStackingTest : public ContentWindowTest {
protected:
    AlertStackingTest()
    {
        window->setTitle("Floating");
        window->setLevel(appkit::WindowLevel::Floating);
        showWindow(content());
    }

    /// Asks and lets the user look at the question.
    template <class Look>
    void ask(std::string question, Look look)
    {
        Alert alert;
        alert.messageText = std::move(question);
        foundation::dispatchMainAsync([&] {
            look();
            alert.performClick(0);
        });
        alert.runModal();
    }
};

TEST_F(AlertStackingTest, AQuestionComesBeforeAWindowThatFloats)
{
    const auto other = appkit::Window::create({ { 250, 250 }, { 400, 300 } }, appkit::WindowStyleMask::Titled);
    other->setTitle("Plain");
    other->makeKeyAndOrderFront();
    ASSERT_TRUE(getsTheKeyboard("Plain"));

    ask("Question", [] {
        EXPECT_TRUE(getsTheKeyboard("Question"));
        EXPECT_TRUE(comesToLieAbove("Question", "Floating"));
    });
    other->close();
}

TEST_F(AlertStackingTest, AQuestionStaysBeforeAWindowThatIsShownMeanwhile)
{
    const auto other = appkit::Window::create({ { 250, 250 }, { 400, 300 } }, appkit::WindowStyleMask::Titled);
    other->setTitle("Later");
    other->setLevel(appkit::WindowLevel::Floating);

    ask("Question", [&] {
        ASSERT_TRUE(getsTheKeyboard("Question"));
        other->makeKeyAndOrderFront();
        EXPECT_TRUE(comesToLieAbove("Question", "Later"));
        EXPECT_TRUE(getsTheKeyboard("Question"));
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(comesToLieAbove("Question", "Floating"));
        EXPECT_TRUE(getsTheKeyboard("Question"));
    });
    other->close();
}

TEST_F(AlertStackingTest, AQuestionStaysBeforeAPopover)
{
    const auto item = appkit::StatusBar::systemStatusBar().statusItem();
    appkit::Popover popover;
    popover.setContentSize(contentSize);
    const auto inPopover = std::make_shared<Content>();
    popover.setContentViewController(inPopover);

    ask("Question", [&] {
        ASSERT_TRUE(getsTheKeyboard("Question"));
        popover.show({}, *item->button(), appkit::RectEdge::MinY);
        EXPECT_TRUE(comesToLieAbove("Question", "Perchly"));
        EXPECT_TRUE(getsTheKeyboard("Question"));
    });
    popover.performClose();
    popover.setContentViewController(nullptr);
}

TEST_F(AlertStackingTest, TheOneBelowGetsTheKeyboardBack)
{
    ask("First", [&] {
        ASSERT_TRUE(getsTheKeyboard("First"));
        ask("Second", [] { EXPECT_TRUE(getsTheKeyboard("Second")); });
        EXPECT_TRUE(getsTheKeyboard("First"));
    });
    EXPECT_TRUE(getsTheKeyboard("Floating"));
}

} // namespace
