#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/SearchField.h"
#include "platform/linux/appkit/ViewNative.h"
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
    ASSERT_TRUE(perchly::test::waitUntil([&] { return other->isKeyWindow(); }));

    appkit::Alert sheet;
    sheet.messageText = "Saved";
    sheet.beginSheetModal(window);
    ASSERT_TRUE(perchly::test::waitUntil([&] { return !other->isKeyWindow(); }));
    other->makeKeyWindow();
    ASSERT_TRUE(perchly::test::waitUntil([&] { return other->isKeyWindow(); }));
    gtk_widget_grab_focus(appkit::widgetOf(*button));
    pressKeys("key space");

    EXPECT_TRUE(perchly::test::waitUntil([&] { return receiver->count == 1; }));
    EXPECT_NE(appkit::Alert::sheetOf(*window), nullptr);
    other->close();
}

} // namespace
