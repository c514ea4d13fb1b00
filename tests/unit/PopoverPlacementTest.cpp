#include "platform/linux/popover/PopoverPlacement.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace desktop::tests {
namespace {

constexpr PixelRect screen { 0, 0, 1000, 800 };
constexpr MonitorArea topPanel { screen, { 0, 30, 1000, 770 } };
constexpr MonitorArea bottomPanel { screen, { 0, 0, 1000, 770 } };
constexpr MonitorArea leftPanel { screen, { 30, 0, 970, 800 } };
constexpr MonitorArea rightPanel { screen, { 0, 0, 970, 800 } };
constexpr MonitorArea noPanel { screen, screen };

BubbleShape bubble(PixelSize box = { 200, 100 })
{
    return {
        .box = box, .arrowLength = 10, .arrowInset = 22, .shadow = 18, .gap = 6, .iconReach = 14, .panelReach = 96
    };
}

PopoverPlacement place(const MonitorArea& monitor, std::optional<PixelPoint> anchor, PixelSize box = { 200, 100 })
{
    return placePopover({ .monitors = { monitor }, .anchor = anchor }, bubble(box));
}

} // namespace

TEST(PopoverPlacementTest, HangsCentredUnderTheIconOfATopPanel)
{
    const auto placement = place(topPanel, PixelPoint { 500, 12 });

    EXPECT_EQ(placement.side, PanelSide::Top);
    EXPECT_EQ(placement.box, (PixelRect { 400, 40, 200, 100 }));
    EXPECT_EQ(placement.arrow, 100);
}

TEST(PopoverPlacementTest, StandsOnTheIconOfABottomPanel)
{
    const auto placement = place(bottomPanel, PixelPoint { 500, 785 });

    EXPECT_EQ(placement.side, PanelSide::Bottom);
    EXPECT_EQ(placement.box, (PixelRect { 400, 660, 200, 100 }));
    EXPECT_EQ(placement.arrow, 100);
}

TEST(PopoverPlacementTest, StandsBesideTheIconOfASidePanel)
{
    const auto left = place(leftPanel, PixelPoint { 15, 300 });
    const auto right = place(rightPanel, PixelPoint { 985, 300 });

    EXPECT_EQ(left.side, PanelSide::Left);
    EXPECT_EQ(left.box, (PixelRect { 40, 250, 200, 100 }));
    EXPECT_EQ(left.arrow, 50);
    EXPECT_EQ(right.side, PanelSide::Right);
    EXPECT_EQ(right.box, (PixelRect { 760, 250, 200, 100 }));
    EXPECT_EQ(right.arrow, 50);
}

TEST(PopoverPlacementTest, LeavesRoomForTheShadowExceptWhereTheArrowIs)
{
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }).window, (PixelRect { 382, 30, 236, 128 }));
    EXPECT_EQ(place(bottomPanel, PixelPoint { 500, 785 }).window, (PixelRect { 382, 642, 236, 128 }));
    EXPECT_EQ(place(leftPanel, PixelPoint { 15, 300 }).window, (PixelRect { 30, 232, 228, 136 }));
    EXPECT_EQ(place(rightPanel, PixelPoint { 985, 300 }).window, (PixelRect { 742, 232, 228, 136 }));
}

TEST(PopoverPlacementTest, MovesTheArrowInsteadOfLeavingTheWorkArea)
{
    const auto atTheEnd = place(topPanel, PixelPoint { 960, 12 });
    const auto atTheStart = place(topPanel, PixelPoint { 40, 12 });

    EXPECT_EQ(atTheEnd.box.right(), 994);
    EXPECT_EQ(atTheEnd.box.x + *atTheEnd.arrow, 960);
    EXPECT_EQ(atTheStart.box.x, 6);
    EXPECT_EQ(atTheStart.box.x + *atTheStart.arrow, 40);
}

TEST(PopoverPlacementTest, KeepsTheArrowOffTheRoundedCorners)
{
    EXPECT_EQ(place(topPanel, PixelPoint { 998, 12 }).arrow, 178);
    EXPECT_EQ(place(topPanel, PixelPoint { 1, 12 }).arrow, 22);
    EXPECT_EQ(place(leftPanel, PixelPoint { 15, 799 }).arrow, 78);
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, { 30, 100 }).arrow, 15);
}

TEST(PopoverPlacementTest, KeepsTheWindowOfALargeBoxInsideTheWorkArea)
{
    const PixelSize large { 1200, 900 };

    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, large).window, topPanel.workArea);
    EXPECT_EQ(place(bottomPanel, PixelPoint { 500, 785 }, large).window, bottomPanel.workArea);
    EXPECT_EQ(place(leftPanel, PixelPoint { 15, 300 }, large).window, leftPanel.workArea);
    EXPECT_EQ(place(rightPanel, PixelPoint { 985, 300 }, large).window, rightPanel.workArea);
    EXPECT_EQ(place(topPanel, std::nullopt, large).window, topPanel.workArea);
}

TEST(PopoverPlacementTest, MakesOnlyTheSideSmallerThatIsTooLarge)
{
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, { 200, 900 }).box, (PixelRect { 400, 40, 200, 742 }));
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, { 1200, 100 }).box, (PixelRect { 18, 40, 964, 100 }));
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, { 964, 742 }).box, (PixelRect { 18, 40, 964, 742 }));
}

TEST(PopoverPlacementTest, TakesTheLargestSizesThereAre)
{
    const auto side = wholePixels(1e308);

    EXPECT_EQ(place(topPanel, PixelPoint { 500, 12 }, { side, side }).window, topPanel.workArea);
}

TEST(PopoverPlacementTest, DropsTheArrowWhereTheBoxNeedsItsRoom)
{
    const auto placement = place(noPanel, PixelPoint { 500, 15 }, { 200, 772 });

    EXPECT_EQ(placement.box, (PixelRect { 400, 28, 200, 772 }));
    EXPECT_EQ(placement.arrow, std::nullopt);
}

TEST(PopoverPlacementTest, KeepsSomethingOfABoxWithoutRoomForItsMargins)
{
    constexpr MonitorArea tiny { { 0, 0, 30, 20 }, { 0, 0, 30, 20 } };

    const auto box = place(tiny, PixelPoint { 5, 5 }).box;

    EXPECT_GT(box.width, 0);
    EXPECT_GT(box.height, 0);
}

TEST(PopoverPlacementTest, MakesWholePixelsOfAnyLength)
{
    EXPECT_EQ(wholePixels(599.5), 600);
    EXPECT_EQ(wholePixels(0.4), 1);
    EXPECT_EQ(wholePixels(0), 1);
    EXPECT_EQ(wholePixels(-1e308), 1);
    EXPECT_EQ(wholePixels(std::nan("")), 1);
    EXPECT_EQ(wholePixels(1e308), wholePixels(1e9));
    EXPECT_EQ(wholePixels(std::numeric_limits<double>::infinity()), wholePixels(1e9));
}

TEST(PopoverPlacementTest, KeepsAnIconFreeWhosePanelReservesNoRoom)
{
    EXPECT_EQ(place(noPanel, PixelPoint { 500, 15 }).box, (PixelRect { 400, 39, 200, 100 }));
    EXPECT_EQ(place(noPanel, PixelPoint { 500, 785 }).box, (PixelRect { 400, 661, 200, 100 }));
    EXPECT_EQ(place(noPanel, PixelPoint { 15, 400 }).box, (PixelRect { 39, 350, 200, 100 }));
    EXPECT_EQ(place(noPanel, PixelPoint { 985, 400 }).box, (PixelRect { 761, 350, 200, 100 }));
}

TEST(PopoverPlacementTest, PrefersAPanelToABareEdgeThatIsNearer)
{
    EXPECT_EQ(place(topPanel, PixelPoint { 20, 60 }).side, PanelSide::Top);
    EXPECT_EQ(place(rightPanel, PixelPoint { 950, 20 }).side, PanelSide::Right);
}

TEST(PopoverPlacementTest, TakesAnAnchorAmidTheScreenAsUnknown)
{
    EXPECT_EQ(place(topPanel, PixelPoint { 500, 400 }), place(topPanel, std::nullopt));
    EXPECT_NE(place(topPanel, PixelPoint { 500, 96 }), place(topPanel, std::nullopt));
}

TEST(PopoverPlacementTest, GoesToThePanelsTrailingEndWithoutAnAnchor)
{
    const auto top = place(topPanel, std::nullopt);
    const auto left = place(leftPanel, std::nullopt);

    EXPECT_EQ(top.side, PanelSide::Top);
    EXPECT_EQ(top.box, (PixelRect { 794, 40, 200, 100 }));
    EXPECT_EQ(top.arrow, 178);
    EXPECT_EQ(left.side, PanelSide::Left);
    EXPECT_EQ(left.box, (PixelRect { 40, 694, 200, 100 }));
    EXPECT_EQ(place(bottomPanel, std::nullopt).box, (PixelRect { 794, 660, 200, 100 }));
    EXPECT_EQ(place(rightPanel, std::nullopt).box, (PixelRect { 760, 694, 200, 100 }));
}

TEST(PopoverPlacementTest, TakesTheLeftEndForTheTrailingOneFromRightToLeft)
{
    const auto placement = placePopover({ .monitors = { topPanel }, .anchor = {}, .isRightToLeft = true }, bubble());

    EXPECT_EQ(placement.box, (PixelRect { 6, 40, 200, 100 }));
    EXPECT_EQ(placement.arrow, 22);
}

TEST(PopoverPlacementTest, GoesToTheTopRightOfAScreenWithoutPanels)
{
    EXPECT_EQ(place(noPanel, std::nullopt).box, (PixelRect { 794, 10, 200, 100 }));
}

TEST(PopoverPlacementTest, StaysOnTheMonitorThatHoldsTheAnchor)
{
    const std::vector monitors { topPanel, MonitorArea { { 1000, 100, 600, 400 }, { 1000, 100, 600, 370 } } };

    const auto onTheFirst = placePopover({ .monitors = monitors, .anchor = PixelPoint { 999, 12 } }, bubble());
    const auto onTheSecond = placePopover({ .monitors = monitors, .anchor = PixelPoint { 1005, 490 } }, bubble());

    EXPECT_EQ(onTheFirst.box, (PixelRect { 794, 40, 200, 100 }));
    EXPECT_EQ(onTheSecond.side, PanelSide::Bottom);
    EXPECT_EQ(onTheSecond.box, (PixelRect { 1006, 360, 200, 100 }));
}

TEST(PopoverPlacementTest, TakesTheNearestMonitorForAnAnchorOnNone)
{
    const MonitorArea second { { 1000, 100, 600, 400 }, { 1000, 130, 600, 370 } };

    const auto placement
        = placePopover({ .monitors = { noPanel, second }, .anchor = PixelPoint { 1300, 90 } }, bubble());

    EXPECT_EQ(placement.box, (PixelRect { 1200, 140, 200, 100 }));
}

TEST(PopoverPlacementTest, LooksForTheMonitorWithAPanelWithoutAnAnchor)
{
    const MonitorArea second { { 1000, 0, 600, 400 }, { 1000, 30, 600, 370 } };

    EXPECT_EQ(placePopover({ .monitors = { noPanel, second } }, bubble()).box, (PixelRect { 1394, 40, 200, 100 }));
    EXPECT_EQ(placePopover({ .monitors = { noPanel } }, bubble()).box.right(), 994);
}

TEST(PopoverPlacementTest, AnswersAlsoWhileThereIsNoMonitor)
{
    EXPECT_EQ(placePopover({}, bubble()).box, (PixelRect { 0, 0, 200, 100 }));
    EXPECT_EQ(
        placePopover({ .monitors = {}, .anchor = PixelPoint { 5, 5 } }, bubble()).box, (PixelRect { 0, 0, 200, 100 }));
}

TEST(PopoverPlacementTest, NeedsNoMarginsForAPlainRectangle)
{
    const BubbleShape plain { .box = { 200, 100 }, .panelReach = 96 };

    const auto placement = placePopover({ .monitors = { topPanel }, .anchor = PixelPoint { 500, 12 } }, plain);

    EXPECT_EQ(placement.window, (PixelRect { 400, 30, 200, 100 }));
    EXPECT_EQ(placement.window, placement.box);
}

TEST(PopoverPlacementTest, TellsHowThickThePanelsAre)
{
    EXPECT_EQ(panelThickness(topPanel, PanelSide::Top), 30);
    EXPECT_EQ(panelThickness(bottomPanel, PanelSide::Bottom), 30);
    EXPECT_EQ(panelThickness(leftPanel, PanelSide::Left), 30);
    EXPECT_EQ(panelThickness(rightPanel, PanelSide::Right), 30);
    EXPECT_EQ(panelThickness(topPanel, PanelSide::Bottom), 0);
}

TEST(PopoverPlacementTest, TakesNearPlacesInThePanelForTheSameIcon)
{
    const std::vector monitors { topPanel };

    EXPECT_TRUE(isInSameIcon(monitors, { 500, 12 }, { 530, 29 }));
    EXPECT_TRUE(isInSameIcon({ leftPanel }, { 12, 500 }, { 20, 470 }));
    EXPECT_FALSE(isInSameIcon(monitors, { 500, 12 }, { 531, 12 }));
    EXPECT_FALSE(isInSameIcon(monitors, { 500, 12 }, { 500, 30 }));
    EXPECT_FALSE(isInSameIcon(monitors, { 500, 300 }, { 500, 300 }));
    EXPECT_FALSE(isInSameIcon(monitors, { 990, 12 }, { 1001, 12 }));
}

} // namespace desktop::tests
