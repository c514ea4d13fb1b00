#include "platform/linux/popover/PopoverDismissal.h"

#include <gmock/gmock.h>

namespace desktop::tests {

using Decision = PopoverDismissal::Decision;
using Press = PopoverDismissal::Press;
using Time = PopoverDismissal::Time;

class PopoverDismissalTest : public testing::Test {
protected:
    PopoverDismissalTest()
    {
        dismissal.setTransient(true);
        dismissal.shown();
    }

    PopoverDismissal dismissal;
    const Decision keep {};
    const Decision close { .closes = true };
    const Decision lookAgain { .wakesAfter = PopoverDismissal::grace };
    const Decision comeBack { .takesKeyboard = true, .wakesAfter = PopoverDismissal::grace };
};

TEST_F(PopoverDismissalTest, ClosesAfterATimeOfGraceWithoutTheKeyboard)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.woken({}), close);
}

TEST_F(PopoverDismissalTest, GivesGraceOnlyOnce)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.activeChanged(false), keep);
}

TEST_F(PopoverDismissalTest, StaysWhenTheKeyboardCameBack)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.activeChanged(true), keep);

    EXPECT_EQ(dismissal.woken({}), keep);
}

TEST_F(PopoverDismissalTest, StaysWhenItIsFoundActiveAlthoughNobodyToldSo)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);

    EXPECT_EQ(dismissal.woken({ .isActive = true }), keep);
    EXPECT_EQ(dismissal.woken({}), keep);
}

TEST_F(PopoverDismissalTest, LooksAgainWhileTheKeyboardIsOnlyLent)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);

    EXPECT_EQ(dismissal.woken({ .isActiveWindow = true }), lookAgain);
    EXPECT_EQ(dismissal.woken({}), close);
}

TEST_F(PopoverDismissalTest, StaysBehindADialogOfOurs)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);

    EXPECT_EQ(dismissal.woken({ .hasDialog = true }), lookAgain);
    EXPECT_EQ(dismissal.woken({ .hasDialog = true }), lookAgain);
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, true), keep);
}

TEST_F(PopoverDismissalTest, TakesTheKeyboardBackFromWhoeverGotItAfterTheDialog)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.woken({ .hasDialog = true }), lookAgain);

    EXPECT_EQ(dismissal.woken({}), comeBack);
    EXPECT_EQ(dismissal.woken({}), close);
}

TEST_F(PopoverDismissalTest, TakesNothingBackWhenTheDialogLeftItTheKeyboard)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.woken({ .hasDialog = true }), lookAgain);
    EXPECT_EQ(dismissal.activeChanged(true), keep);
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);

    EXPECT_EQ(dismissal.woken({}), close);
}

TEST_F(PopoverDismissalTest, WaitsForAPressedButtonToComeUp)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);

    EXPECT_EQ(dismissal.woken({ .isButtonDown = true }), lookAgain);
    EXPECT_EQ(dismissal.woken({}), close);
}

TEST_F(PopoverDismissalTest, ClosesAtAPressElsewhereOnly)
{
    EXPECT_EQ(dismissal.pressed(Press::Inside, false), keep);
    EXPECT_EQ(dismissal.pressed(Press::OnItem, false), keep);
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), close);
}

TEST_F(PopoverDismissalTest, ForgetsTheGraceOnceAPressHasDecided)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), close);

    EXPECT_EQ(dismissal.woken({}), keep);
}

TEST_F(PopoverDismissalTest, ClosesAtEscape)
{
    EXPECT_EQ(dismissal.escapePressed(), close);
}

TEST_F(PopoverDismissalTest, WantsNothingWhileHidden)
{
    dismissal.closed(Time(0));

    EXPECT_EQ(dismissal.activeChanged(false), keep);
    EXPECT_EQ(dismissal.woken({}), keep);
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), keep);
    EXPECT_EQ(dismissal.escapePressed(), keep);
}

TEST_F(PopoverDismissalTest, DropsTheGraceWhenClosedMeanwhile)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    dismissal.closed(Time(0));
    dismissal.shown();

    EXPECT_EQ(dismissal.woken({}), keep);
}

TEST_F(PopoverDismissalTest, LeavesAnApplicationDefinedPopoverToTheApplication)
{
    dismissal.setTransient(false);

    EXPECT_EQ(dismissal.activeChanged(false), keep);
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), keep);
    EXPECT_EQ(dismissal.escapePressed(), keep);
}

TEST_F(PopoverDismissalTest, DoesNotReopenAtTheClickThatClosedIt)
{
    EXPECT_EQ(dismissal.activeChanged(false), lookAgain);
    EXPECT_EQ(dismissal.woken({}), close);
    dismissal.closed(Time(1000));

    EXPECT_TRUE(dismissal.wasClosedByClick(Time(1399)));
    EXPECT_FALSE(dismissal.wasClosedByClick(Time(1400)));
}

TEST_F(PopoverDismissalTest, DoesNotReopenAfterAPressThatClosedIt)
{
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), close);
    dismissal.closed(Time(1000));

    EXPECT_TRUE(dismissal.wasClosedByClick(Time(1100)));
}

TEST_F(PopoverDismissalTest, ReopensAtOnceWhenClosedOtherwise)
{
    EXPECT_EQ(dismissal.escapePressed(), close);
    dismissal.closed(Time(1000));

    EXPECT_FALSE(dismissal.wasClosedByClick(Time(1001)));
}

TEST_F(PopoverDismissalTest, KnowsNoClickWhileShown)
{
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), close);

    EXPECT_FALSE(dismissal.wasClosedByClick(Time(0)));
}

TEST_F(PopoverDismissalTest, RemembersOnlyItsLastShowing)
{
    EXPECT_EQ(dismissal.pressed(Press::Elsewhere, false), close);
    dismissal.closed(Time(1000));
    dismissal.shown();
    dismissal.closed(Time(1100));

    EXPECT_FALSE(dismissal.wasClosedByClick(Time(1150)));
}

} // namespace desktop::tests
