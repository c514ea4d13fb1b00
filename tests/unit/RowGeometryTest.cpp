#include "platform/linux/table/RowGeometry.h"

#include <gtest/gtest.h>

#include <ostream>

namespace desktop {

// NOLINTNEXTLINE(readability-identifier-naming): the test framework looks for this
void PrintTo(const RowRange& range, std::ostream* stream)
{
    *stream << "from " << range.begin << " to " << range.end;
}

namespace {

constexpr RowGeometry hundred { .count = 100, .rowHeight = 32 };

TEST(RowGeometryTest, RowsLieBelowEachOther)
{
    EXPECT_EQ(hundred.height(), 3200);
    EXPECT_EQ(hundred.startOf(3), 96);
}

TEST(RowGeometryTest, RowsOfWhichAPartIsSeenAreInSight)
{
    EXPECT_EQ(hundred.inSight(0, 64), (RowRange { 0, 2 }));
    EXPECT_EQ(hundred.inSight(0, 65), (RowRange { 0, 3 }));
    EXPECT_EQ(hundred.inSight(31, 64), (RowRange { 0, 3 }));
    EXPECT_EQ(hundred.inSight(32, 64), (RowRange { 1, 3 }));
}

TEST(RowGeometryTest, NoRowsLieBeyondTheEnds)
{
    EXPECT_EQ(hundred.inSight(3136, 640), (RowRange { 98, 100 }));
    EXPECT_EQ(hundred.inSight(-50, 64), (RowRange { 0, 1 }));
    EXPECT_EQ(hundred.inSight(5000, 64), (RowRange { 100, 100 }));
    EXPECT_EQ(hundred.inSight(-500, 64), (RowRange { 0, 0 }));
}

TEST(RowGeometryTest, ThroughAFrameWithoutHeightNothingIsSeen)
{
    EXPECT_EQ(hundred.inSight(320, 0), RowRange {});
}

TEST(RowGeometryTest, ARangeEndsBeforeItsEnd)
{
    const RowRange range { 2, 4 };

    EXPECT_FALSE(range.contains(1));
    EXPECT_TRUE(range.contains(2));
    EXPECT_TRUE(range.contains(3));
    EXPECT_FALSE(range.contains(4));
}

TEST(RowGeometryTest, KnowsTheRowAtAPlace)
{
    EXPECT_EQ(hundred.at(0), 0U);
    EXPECT_EQ(hundred.at(31.9), 0U);
    EXPECT_EQ(hundred.at(32), 1U);
    EXPECT_EQ(hundred.at(3199), 99U);
    EXPECT_EQ(hundred.at(3200), std::nullopt);
    EXPECT_EQ(hundred.at(-1), std::nullopt);
}

TEST(RowGeometryTest, ScrollsNoFurtherThanTheRowNeeds)
{
    EXPECT_EQ(hundred.topToShow(5, 100, 200), 100);
    EXPECT_EQ(hundred.topToShow(1, 100, 200), 32);
    EXPECT_EQ(hundred.topToShow(10, 100, 200), 152);
}

TEST(RowGeometryTest, OfARowTallerThanTheFrameTheBeginningIsSeen)
{
    EXPECT_EQ(hundred.topToShow(2, 0, 20), 64);
    EXPECT_EQ(hundred.topToShow(2, 500, 20), 64);
}

} // namespace
} // namespace desktop
