#include "platform/appkit/Alert.h"
#include "platform/foundation/DispatchQueue.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::Alert;
using appkit::Window;

/// Alerts attached to a window.
class SheetTest : public ContentWindowTest {
protected:
    SheetTest() { showWindow(content()); }

    [[nodiscard]] static Alert alertSaying(std::string text)
    {
        Alert alert;
        alert.messageText = std::move(text);
        return alert;
    }

    [[nodiscard]] std::string textOfSheet() const
    {
        const auto* sheet = Alert::sheetOf(*window);
        return sheet ? sheet->messageText : "";
    }

    [[nodiscard]] bool hasTheKeyboard() const
    {
        return perchly::test::waitUntil([this] { return window->isKeyWindow(); });
    }
    [[nodiscard]] bool hasLostTheKeyboard() const
    {
        return perchly::test::waitUntil([this] { return !window->isKeyWindow(); });
    }
};

TEST_F(SheetTest, TheWindowHasItUntilItIsAnswered)
{
    EXPECT_EQ(Alert::sheetOf(*window), nullptr);

    alertSaying("Saved").beginSheetModal(window);

    EXPECT_EQ(textOfSheet(), "Saved");
    EXPECT_EQ(Alert::running(), nullptr);
    EXPECT_TRUE(hasLostTheKeyboard());
    Alert::sheetOf(*window)->performClick(0);
    EXPECT_EQ(Alert::sheetOf(*window), nullptr);
    EXPECT_TRUE(hasTheKeyboard());
}

TEST_F(SheetTest, ASecondOneComesAfterTheFirst)
{
    alertSaying("First").beginSheetModal(window);
    alertSaying("Second").beginSheetModal(window);
    EXPECT_EQ(textOfSheet(), "First");

    Alert::sheetOf(*window)->performClick(0);

    EXPECT_EQ(textOfSheet(), "Second");
    Alert::sheetOf(*window)->performClick(0);
    EXPECT_EQ(textOfSheet(), "");
    EXPECT_TRUE(hasTheKeyboard());
}

TEST_F(SheetTest, OtherWindowsHaveNone)
{
    const auto other = Window::create({ { 300, 300 }, { 200, 100 } }, appkit::WindowStyleMask::Titled);

    alertSaying("Saved").beginSheetModal(window);

    EXPECT_EQ(Alert::sheetOf(*other), nullptr);
}

TEST_F(SheetTest, GoesWithItsWindow)
{
    alertSaying("Saved").beginSheetModal(window);
    alertSaying("Saved again").beginSheetModal(window);
    ASSERT_TRUE(hasLostTheKeyboard());

    window->close();

    EXPECT_EQ(textOfSheet(), "");
    showWindow(content());
    EXPECT_TRUE(hasTheKeyboard());
}

TEST_F(SheetTest, AnAlertOfTheApplicationComesBeforeIt)
{
    alertSaying("Saved").beginSheetModal(window);
    foundation::dispatchMainAsync([] { Alert::running()->performClick(1); });

    auto question = alertSaying("Delete?");
    question.buttonTitles = { "Delete", "Cancel" };
    EXPECT_EQ(question.runModal(), 1U);

    EXPECT_EQ(textOfSheet(), "Saved");
}

} // namespace
