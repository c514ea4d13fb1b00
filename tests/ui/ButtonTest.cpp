#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/PopUpButton.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using appkit::Action;
using appkit::Button;
using appkit::ControlState;
using appkit::PopUpButton;

/// Counts what it is sent.
struct Receiver {
    void receive(Button& button)
    {
        ++count;
        stateAtSending = button.state();
    }
    void receiveChoice() { ++count; }

    int count = 0;
    ControlState stateAtSending = ControlState::Off;
};

class ButtonTest : public testing::Test {
protected:
    [[nodiscard]] Action action() const { return { "receive:", std::weak_ptr(receiver), &Receiver::receive }; }

    std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
};

TEST_F(ButtonTest, ATitledOneSendsItsActionAtEachClick)
{
    const auto button = Button::withTitle("Save", action());

    button->performClick();
    button->performClick();

    EXPECT_EQ(button->title(), "Save");
    EXPECT_EQ(button->action().name(), "receive:");
    EXPECT_EQ(receiver->count, 2);
}

TEST_F(ButtonTest, SendsNothingWhileDisabled)
{
    for (const auto& button : { Button::withTitle("Save", action()), Button::checkbox("Keep", action()) }) {
        button->setEnabled(false);

        button->performClick();

        EXPECT_FALSE(button->isEnabled());
        EXPECT_EQ(button->state(), ControlState::Off);
        EXPECT_EQ(receiver->count, 0);
    }
}

TEST_F(ButtonTest, AClickOnACheckboxChangesItsStateAndThenSends)
{
    const auto checkbox = Button::checkbox("Keep", action());
    EXPECT_EQ(checkbox->title(), "Keep");
    EXPECT_EQ(checkbox->state(), ControlState::Off);

    checkbox->performClick();

    EXPECT_EQ(checkbox->state(), ControlState::On);
    EXPECT_EQ(receiver->count, 1);
    EXPECT_EQ(receiver->stateAtSending, ControlState::On);
    checkbox->performClick();
    EXPECT_EQ(checkbox->state(), ControlState::Off);
    EXPECT_EQ(receiver->count, 2);
}

TEST_F(ButtonTest, SettingTheStateOfACheckboxSendsNothing)
{
    const auto checkbox = Button::checkbox("Keep", action());

    checkbox->setState(ControlState::On);

    EXPECT_EQ(checkbox->state(), ControlState::On);
    EXPECT_EQ(receiver->count, 0);
    checkbox->performClick();
    EXPECT_EQ(checkbox->state(), ControlState::Off);
}

TEST_F(ButtonTest, ACheckboxNeedsNoAction)
{
    const auto checkbox = Button::checkbox("Keep");

    checkbox->performClick();

    EXPECT_EQ(checkbox->state(), ControlState::On);
}

TEST_F(ButtonTest, ShowsNoPictureWhereThereIsNone)
{
    const auto button = Button::withImage(nullptr, action());
    EXPECT_EQ(button->image(), nullptr);

    button->setImage(appkit::Image::systemSymbol("star"));
    ASSERT_NE(button->image(), nullptr);
    button->setImage(nullptr);
    button->performClick();

    EXPECT_EQ(button->image(), nullptr);
    EXPECT_EQ(receiver->count, 1);
}

TEST_F(ButtonTest, MayGoWhileItsActionRuns)
{
    struct Owner {
        void letGo() { button = nullptr; }
        std::shared_ptr<Button> button;
    };
    const auto owner = std::make_shared<Owner>();
    for (const auto make : { &Button::withTitle, &Button::checkbox }) {
        owner->button = make("Go", Action("letGo:", std::weak_ptr(owner), &Owner::letGo));

        owner->button->performClick();

        EXPECT_EQ(owner->button, nullptr);
    }
}

class PopUpButtonTest : public ButtonTest {
protected:
    PopUpButtonTest()
    {
        button->setAction(Action("receiveChoice:", std::weak_ptr(receiver), &Receiver::receiveChoice));
        for (const auto* title : { "Small", "Large", "Custom..." })
            button->addItem(title);
    }

    std::shared_ptr<PopUpButton> button = std::make_shared<PopUpButton>();
};

TEST_F(PopUpButtonTest, BeginsWithTheFirst)
{
    EXPECT_EQ(button->indexOfSelectedItem(), 0U);
    EXPECT_EQ(button->titleOfSelectedItem(), "Small");
    EXPECT_EQ(receiver->count, 0);
}

TEST_F(PopUpButtonTest, IsChosenFromByIndexOrTitleWithoutItsAction)
{
    button->selectItemAt(1);
    EXPECT_EQ(button->titleOfSelectedItem(), "Large");

    button->selectItemWithTitle("Custom...");

    EXPECT_EQ(button->indexOfSelectedItem(), 2U);
    EXPECT_EQ(button->titleOfSelectedItem(), "Custom...");
    EXPECT_EQ(receiver->count, 0);
}

TEST_F(PopUpButtonTest, AnUnknownTitleChoosesNothing)
{
    button->selectItemAt(1);

    button->selectItemWithTitle("Huge");

    EXPECT_EQ(button->indexOfSelectedItem(), 1U);
}

} // namespace
