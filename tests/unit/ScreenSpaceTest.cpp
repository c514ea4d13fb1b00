#include "platform/linux/desktop/ScreenSpace.h"

#include <gtest/gtest.h>

namespace desktop {
namespace {

using foundation::Point;
using foundation::Rect;

constexpr ScreenSpace plain { { 0, 0, 1280, 800 }, 1 };
constexpr ScreenSpace fine { { 0, 0, 2560, 1600 }, 2 };
/// With another monitor on its left, and its own top edge lower.
constexpr ScreenSpace right { { 1280, 200, 1000, 600 }, 1 };

TEST(ScreenSpaceTest, CountsUpwardsFromTheLowerLeftCorner)
{
    EXPECT_EQ(plain.pointAt({ 0, 800 }), (Point { 0, 0 }));
    EXPECT_EQ(plain.pointAt({ 30, 100 }), (Point { 30, 700 }));
}

TEST(ScreenSpaceTest, CountsFromTheMainMonitor)
{
    EXPECT_EQ(right.pointAt({ 1280, 800 }), (Point { 0, 0 }));
    EXPECT_EQ(right.pointAt({ 1270, 190 }), (Point { -10, 610 }));
    EXPECT_EQ(right.pixelsFrom({ { 0, 0 }, { 10, 20 } }), (PixelRect { 1280, 780, 10, 20 }));
}

TEST(ScreenSpaceTest, CountsInPoints)
{
    EXPECT_EQ(fine.pointAt({ 31, 1600 }), (Point { 15.5, 0 }));
    EXPECT_EQ(fine.pixelsFrom({ { 100, 100 }, { 600, 700 } }), (PixelRect { 200, 0, 1200, 1400 }));
    EXPECT_EQ(fine.rectFrom({ 200, 0, 1200, 1400 }), (Rect { { 100, 100 }, { 600, 700 } }));
}

TEST(ScreenSpaceTest, ARectanglesOriginIsItsLowerLeftCorner)
{
    EXPECT_EQ(plain.pixelsFrom({ { 100, 100 }, { 600, 650 } }), (PixelRect { 100, 50, 600, 650 }));
    EXPECT_EQ(plain.rectFrom({ 100, 50, 600, 650 }), (Rect { { 100, 100 }, { 600, 650 } }));
}

TEST(ScreenSpaceTest, PartsOfPixelsAreRounded)
{
    EXPECT_EQ(plain.pixelsFrom({ { 0.4, 0.6 }, { 10.5, 9.4 } }), (PixelRect { 0, 790, 11, 9 }));
    EXPECT_EQ(plain.pixelsFrom({ { -0.6, 0 }, { 1, 1 } }), (PixelRect { -1, 799, 1, 1 }));
}

constexpr PixelRect workArea { 20, 30, 1000, 700 };

TEST(ScreenSpaceTest, ContentThatFitsStays)
{
    EXPECT_EQ(constrainedContent({ 100, 100, 600, 500 }, workArea, 40, 0), (PixelRect { 100, 100, 600, 500 }));
    EXPECT_EQ(constrainedContent({ 20, 70, 1000, 660 }, workArea, 40, 0), (PixelRect { 20, 70, 1000, 660 }));
}

TEST(ScreenSpaceTest, ContentOutsideIsMovedIn)
{
    EXPECT_EQ(constrainedContent({ -50, 0, 600, 500 }, workArea, 40, 0), (PixelRect { 20, 70, 600, 500 }));
    EXPECT_EQ(constrainedContent({ 900, 900, 600, 500 }, workArea, 40, 0), (PixelRect { 420, 230, 600, 500 }));
}

TEST(ScreenSpaceTest, ContentThatIsTooLargeIsMadeSmaller)
{
    EXPECT_EQ(constrainedContent({ 100, 100, 4000, 3000 }, workArea, 40, 0), (PixelRect { 20, 70, 1000, 660 }));
}

TEST(ScreenSpaceTest, ABorderIsKeptFreeOnTheOtherSides)
{
    EXPECT_EQ(constrainedContent({ -50, 900, 4000, 500 }, workArea, 40, 8), (PixelRect { 28, 222, 984, 500 }));
}

TEST(ScreenSpaceTest, AWorkAreaWithoutRoomLeavesOnePixel)
{
    EXPECT_EQ(constrainedContent({ 100, 100, 600, 500 }, { 0, 0, 10, 20 }, 40, 8), (PixelRect { 8, 40, 1, 1 }));
}

TEST(ScreenSpaceTest, LengthsBeyondAllScreensAreCut)
{
    EXPECT_EQ(plain.pixelsFrom({ {}, { 1e300, -5 } }).width, 32767);
    EXPECT_EQ(plain.pixelsFrom({ {}, { 1e300, -5 } }).height, 1);
}

} // namespace
} // namespace desktop
