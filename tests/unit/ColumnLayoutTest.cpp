#include "platform/linux/table/ColumnLayout.h"

#include <gmock/gmock.h>

#include <ostream>

namespace desktop {

// NOLINTNEXTLINE(readability-identifier-naming): the test framework looks for this
void PrintTo(const ColumnSpan& span, std::ostream* stream)
{
    *stream << "from " << span.start << " for " << span.width;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<ColumnWish> textTextButtons { { 180, true }, { 280, true }, { 280, false } };

TEST(ColumnLayoutTest, ColumnsAreAsWideAsAskedForWhereThatIsTheWidth)
{
    EXPECT_EQ(widthOfColumns(textTextButtons), 740 + trailingRoom);
    EXPECT_THAT(placeColumns(textTextButtons, 740 + trailingRoom),
        ElementsAre(ColumnSpan { 0, 180 }, ColumnSpan { 180, 280 }, ColumnSpan { 460, 280 }));
}

TEST(ColumnLayoutTest, SurplusGoesToTheFlexibleOnesByTheirWidths)
{
    EXPECT_THAT(placeColumns(textTextButtons, 740 + trailingRoom + 46),
        ElementsAre(ColumnSpan { 0, 198 }, ColumnSpan { 198, 308 }, ColumnSpan { 506, 280 }));
}

TEST(ColumnLayoutTest, NoPixelOfTheSurplusIsLost)
{
    for (auto available = 740 + trailingRoom; available < 1000; ++available)
        EXPECT_EQ(widthOfColumns(placeColumns(textTextButtons, available)), available);
}

TEST(ColumnLayoutTest, WhatIsMissingIsTakenFromTheFlexibleOnes)
{
    EXPECT_THAT(placeColumns(textTextButtons, 740 + trailingRoom - 46),
        ElementsAre(ColumnSpan { 0, 162 }, ColumnSpan { 162, 252 }, ColumnSpan { 414, 280 }));
}

TEST(ColumnLayoutTest, FlexibleColumnsAreLeftWithSomething)
{
    const auto columns = placeColumns(textTextButtons, 0);

    EXPECT_THAT(columns, ElementsAre(ColumnSpan { 0, 60 }, ColumnSpan { 60, 60 }, ColumnSpan { 120, 280 }));
    EXPECT_EQ(widthOfColumns(columns), 400 + trailingRoom);
}

TEST(ColumnLayoutTest, OneThatIsAskedToBeNarrowStaysSo)
{
    EXPECT_THAT(
        placeColumns({ { 20, true }, { 0, true } }, 0), ElementsAre(ColumnSpan { 0, 20 }, ColumnSpan { 20, 0 }));
}

TEST(ColumnLayoutTest, WhereNoneIsFlexibleTheLastGetsTheSurplus)
{
    EXPECT_THAT(placeColumns({ { 100, false }, { 50, false } }, 200 + trailingRoom),
        ElementsAre(ColumnSpan { 0, 100 }, ColumnSpan { 100, 100 }));
    EXPECT_THAT(
        placeColumns({ { 100, false }, { 50, false } }, 0), ElementsAre(ColumnSpan { 0, 100 }, ColumnSpan { 100, 50 }));
}

TEST(ColumnLayoutTest, FlexibleColumnsWithoutWidthDoNoHarm)
{
    EXPECT_THAT(placeColumns({ { 0, true } }, 100 + trailingRoom), ElementsAre(ColumnSpan { 0, 100 }));
}

TEST(ColumnLayoutTest, NoColumnsHaveNoPlaces)
{
    EXPECT_THAT(placeColumns({}, 300), IsEmpty());
    EXPECT_EQ(widthOfColumns(std::vector<ColumnSpan> {}), trailingRoom);
}

} // namespace
} // namespace desktop
