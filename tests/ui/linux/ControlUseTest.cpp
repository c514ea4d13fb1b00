#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/SearchField.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/linux/ScreenPointer.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::Button;
using appkit::SearchField;
using perchly::test::toolkitFunction;

void pressKeys(const std::string& command)
{
    auto status = 0;
    ASSERT_TRUE(g_spawn_command_line_sync(("xdotool " + command).c_str(), nullptr, nullptr, &status, nullptr));
    ASSERT_EQ(status, 0);
}

struct Receiver {
    void receive() { ++count; }
    void search(SearchField& field) { searched.push_back(field.stringValue()); }

    int count = 0;
    std::vector<std::string> searched;
};

/// The alert that has the keyboard and is laid out, or null.
GtkWidget* activeAlert()
{
    GtkWidget* found = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        auto* window = GTK_WIDGET(link->data);
        const auto isAlert = gtk_widget_has_css_class(window, "alert");
        if (isAlert && gtk_window_is_active(GTK_WINDOW(window)) && gtk_widget_get_width(window) > 0)
            found = window;
    }
    g_list_free(windows);
    return found;
}

/// On the screen.
desktop::PixelPoint middleOfToplevel(GtkWidget* window)
{
    const auto corner = desktop::X11Window(window).position();
    auto shadowLeft = 0.0;
    auto shadowTop = 0.0;
    gtk_native_get_surface_transform(GTK_NATIVE(window), &shadowLeft, &shadowTop);
    const auto scale = gtk_widget_get_scale_factor(window);
    const auto x = shadowLeft + gtk_widget_get_width(window) / 2.0;
    const auto y = shadowTop + gtk_widget_get_height(window) / 2.0;
    return { corner.x + static_cast<int>(x * scale), corner.y + static_cast<int>(y * scale) };
}

/// Controls in the hands of a user.
class ControlUseTest : public ContentWindowTest {
protected:
    [[nodiscard]] appkit::Action action() const { return { "receive", std::weak_ptr(receiver), &Receiver::receive }; }

    static void click(const appkit::View& view)
    {
        toolkitFunction<gboolean (*)(GtkWidget*)>("gtk_widget_activate")(appkit::widgetOf(view));
    }

    /// What a screen reader calls the view, if that is it.
    [[nodiscard]] static bool isCalled(const appkit::View& view, const char* name)
    {
        using Check = char*(GtkAccessible*, GtkAccessibleProperty, ...);
        auto* check = toolkitFunction<Check*>("gtk_test_accessible_check_property");
        const desktop::GLibPointer<> actual(
            check(GTK_ACCESSIBLE(appkit::widgetOf(view)), GTK_ACCESSIBLE_PROPERTY_LABEL, name));
        return !actual;
    }

    std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
};

TEST_F(ControlUseTest, AClickOnACheckboxSendsItsAction)
{
    const auto checkbox = Button::checkbox("Keep", action());
    showAtTop(checkbox);

    click(*checkbox);

    EXPECT_EQ(checkbox->state(), appkit::ControlState::On);
    EXPECT_EQ(receiver->count, 1);
}

TEST_F(ControlUseTest, AChoiceInAPopUpButtonSendsItsAction)
{
    const auto button = std::make_shared<appkit::PopUpButton>();
    button->setAction(action());
    button->addItem("Small");
    button->addItem("Large");
    showAtTop(button);

    gtk_widget_grab_focus(appkit::widgetOf(*button));
    pressKeys("key Return");
    auto* list = toolkitFunction<GtkWidget* (*)(GtkWidget*)>("gtk_widget_get_last_child")(appkit::widgetOf(*button));
    ASSERT_TRUE(perchly::test::waitUntil([&] { return gtk_widget_get_mapped(list); }));
    pressKeys("key Down Return");

    EXPECT_TRUE(perchly::test::waitUntil([&] { return receiver->count == 1; }));
    EXPECT_EQ(button->titleOfSelectedItem(), "Large");
}

TEST_F(ControlUseTest, EachKeyInASearchFieldIsSearchedForAtOnce)
{
    const auto field = std::make_shared<SearchField>();
    field->setAction({ "search:", std::weak_ptr(receiver), &Receiver::search });
    showAtTop(field);
    field->selectText();

    pressKeys("type ab");

    const std::vector<std::string> keys { "a", "ab" };
    EXPECT_TRUE(perchly::test::waitUntil([&] { return receiver->searched == keys; }));
    pressKeys("key Escape");
    EXPECT_TRUE(perchly::test::waitUntil([&] { return receiver->searched.size() == 3; }));
    EXPECT_EQ(receiver->searched.back(), "");
}

TEST_F(ControlUseTest, ASearchFieldKeepsTheKeyboardWhileOtherViewsComeAndGo)
{
    const auto field = std::make_shared<SearchField>();
    field->setAction({ "search:", std::weak_ptr(receiver), &Receiver::search });
    showAtTop(field);
    field->selectText();
    pressKeys("type a");
    ASSERT_TRUE(perchly::test::waitUntil([&] { return receiver->searched.size() == 1; }));

    const auto row = std::make_shared<appkit::View>();
    row->addSubview(Button::withTitle("Delete", action()));
    content().addSubview(row);
    perchly::test::handlePendingEvents();
    row->subviews().front()->removeFromSuperview();
    row->removeFromSuperview();

    pressKeys("type b");
    EXPECT_TRUE(perchly::test::waitUntil([&] { return field->stringValue() == "ab"; }));
}

TEST_F(ControlUseTest, AButtonWithOnlyAToolTipIsCalledByIt)
{
    const auto symbol = appkit::Image::systemSymbol("star");
    const auto plain = Button::withImage(symbol, action());
    plain->setToolTip("Bookmark");
    EXPECT_TRUE(isCalled(*plain, "Bookmark"));

    const auto described = Button::withImage(appkit::Image::systemSymbol("star", "Star"), action());
    described->setToolTip("Bookmark");
    EXPECT_TRUE(isCalled(*described, "Star"));
}

TEST_F(ControlUseTest, ASheetLeavesOtherWindowsUsable)
{
    showWindow(content());
    const auto other = appkit::Window::create({ { 700, 200 }, { 200, 100 } }, appkit::WindowStyleMask::Titled);
    const auto otherContent = std::make_shared<Content>();
    other->setContentViewController(otherContent);
    const auto button = Button::withTitle("Press", action());
    otherContent->view()->addSubview(button);
    other->makeKeyAndOrderFront();
    ASSERT_TRUE(perchly::test::waitUntil(
        [&] { return other->isKeyWindow() && gtk_widget_get_width(appkit::widgetOf(*button)) > 0; }));

    appkit::Alert sheet;
    sheet.messageText = "Saved";
    sheet.beginSheetModal(window);
    ASSERT_TRUE(perchly::test::waitUntil([] { return activeAlert() != nullptr; }));
    perchly::test::ScreenPointer pointer;
    ASSERT_TRUE(pointer.moveTo(perchly::test::middleOf(*button)));
    pointer.press();
    pointer.release();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return receiver->count == 1; }));
    EXPECT_NE(appkit::Alert::sheetOf(*window), nullptr);
    other->close();
}

TEST_F(ControlUseTest, ASheetStandsInTheMiddleOfItsWindow)
{
    showWindow(content());
    ASSERT_TRUE(perchly::test::waitUntil([&] { return gtk_widget_get_width(appkit::widgetOf(content())) > 0; }));
    appkit::Alert sheet;
    sheet.messageText = "Saved";

    sheet.beginSheetModal(window);

    ASSERT_TRUE(perchly::test::waitUntil([] { return activeAlert() != nullptr; }));
    const auto wanted = middleOfToplevel(GTK_WIDGET(gtk_widget_get_root(appkit::widgetOf(content()))));
    const auto found = middleOfToplevel(activeAlert());
    // The shadow, which depends on whether the window is active, moves it a little.
    EXPECT_NEAR(found.x, wanted.x, 4);
    EXPECT_NEAR(found.y, wanted.y, 4);
}

} // namespace
