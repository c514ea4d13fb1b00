#include "platform/linux/desktop/AxisLayout.h"

#include <gmock/gmock.h>

#include <ostream>

namespace desktop {

// NOLINTBEGIN(readability-identifier-naming): the test framework looks for these
void PrintTo(const AxisLayout::Span& span, std::ostream* stream)
{
    *stream << "from " << span.start << " for " << span.length;
}

void PrintTo(const AxisLayout::Lengths& lengths, std::ostream* stream)
{
    *stream << "at least " << lengths.minimum << ", rather " << lengths.natural;
}
// NOLINTEND(readability-identifier-naming)

namespace {

using testing::ElementsAre;
using Anchor = AxisLayout::Anchor;
using Equation = AxisLayout::Equation;
using Lengths = AxisLayout::Lengths;
using Span = AxisLayout::Span;

constexpr std::size_t container = 0;

Anchor start(std::size_t view)
{
    return { view, AxisLayout::Attribute::Start };
}
Anchor end(std::size_t view)
{
    return { view, AxisLayout::Attribute::End };
}
Anchor center(std::size_t view)
{
    return { view, AxisLayout::Attribute::Center };
}
Anchor length(std::size_t view)
{
    return { view, AxisLayout::Attribute::Length };
}

Equation equal(Anchor first, Anchor second, double constant = 0)
{
    return { first, second, constant };
}
Equation equal(Anchor first, double constant)
{
    return { first, std::nullopt, constant };
}

/// Where views go that would all like to be 30 long, in a container of 100.
std::vector<Span> placed(const std::vector<Equation>& equations, std::size_t views = 1, double containerLength = 100)
{
    return AxisLayout(equations, std::vector<Lengths>(views, { 10, 30 })).place(containerLength);
}

TEST(AxisLayoutTest, WithoutViewsNothingIsPlacedAndNothingNeeded)
{
    const AxisLayout layout({}, {});

    EXPECT_THAT(layout.place(100), ElementsAre());
    EXPECT_EQ(layout.containerLengths(), Lengths {});
}

TEST(AxisLayoutTest, AViewBetweenTwoEdgesFollowsTheContainer)
{
    const std::vector<Equation> equations { equal(start(1), start(container), 2), equal(end(1), end(container), -3) };

    EXPECT_THAT(placed(equations, 1, 100), ElementsAre(Span { 2, 95 }));
    EXPECT_THAT(placed(equations, 1, 250), ElementsAre(Span { 2, 245 }));
}

TEST(AxisLayoutTest, ALengthOfItsOwnGoesOnFromEitherEdgeAndFromTheCentre)
{
    EXPECT_THAT(placed({ equal(length(1), 40), equal(start(1), start(container), 5) }), ElementsAre(Span { 5, 40 }));
    EXPECT_THAT(placed({ equal(length(1), 40), equal(end(1), end(container), -5) }), ElementsAre(Span { 55, 40 }));
    EXPECT_THAT(placed({ equal(length(1), 40), equal(center(1), center(container)) }), ElementsAre(Span { 30, 40 }));
}

TEST(AxisLayoutTest, ALengthMayComeAfterThePlace)
{
    EXPECT_THAT(placed({ equal(start(1), start(container), 5), equal(length(1), 40) }), ElementsAre(Span { 5, 40 }));
    EXPECT_THAT(placed({ equal(end(1), end(container), -5), equal(length(1), 40) }), ElementsAre(Span { 55, 40 }));
    EXPECT_THAT(placed({ equal(center(1), center(container)), equal(length(1), 40) }), ElementsAre(Span { 30, 40 }));
}

TEST(AxisLayoutTest, AnEdgeAndTheCentreTellTheLength)
{
    EXPECT_THAT(placed({ equal(start(1), start(container), 10), equal(center(1), center(container)) }),
        ElementsAre(Span { 10, 80 }));
    EXPECT_THAT(placed({ equal(end(1), end(container), -20), equal(center(1), center(container)) }),
        ElementsAre(Span { 20, 60 }));
}

TEST(AxisLayoutTest, ALengthComesFromAnotherViewAndFromTheContainer)
{
    EXPECT_THAT(placed({ equal(length(1), length(container), -20), equal(start(1), start(container)) }),
        ElementsAre(Span { 0, 80 }));
    EXPECT_THAT(placed({ equal(length(1), length(2), 5), equal(length(2), 40), equal(start(1), start(container)),
                           equal(start(2), end(1)) },
                    2),
        ElementsAre(Span { 0, 45 }, Span { 45, 40 }));
}

TEST(AxisLayoutTest, AnEquationWorksInBothDirections)
{
    EXPECT_THAT(placed({ equal(start(container), start(1), -8), equal(end(container), end(1), 8) }),
        ElementsAre(Span { 8, 84 }));
    EXPECT_THAT(placed({ equal(length(2), length(1), 5), equal(length(2), 40) }, 2),
        ElementsAre(Span { 0, 35 }, Span { 0, 40 }));
}

TEST(AxisLayoutTest, AChainIsFollowedWhicheverEndIsTied)
{
    const auto second = equal(start(2), end(1), 2);
    const auto third = equal(start(3), end(2), 2);

    EXPECT_THAT(placed({ third, second, equal(start(1), start(container), 8) }, 3, 200),
        ElementsAre(Span { 8, 30 }, Span { 40, 30 }, Span { 72, 30 }));
    EXPECT_THAT(placed({ second, third, equal(end(3), end(container), -8) }, 3, 200),
        ElementsAre(Span { 98, 30 }, Span { 130, 30 }, Span { 162, 30 }));
}

TEST(AxisLayoutTest, AChainTiedAtBothEndsLeavesTheRestToTheViewWithoutALength)
{
    const std::vector<Equation> equations { equal(start(1), start(container), 8), equal(length(1), 26),
        equal(start(2), end(1), 8), equal(end(2), start(3), -8), equal(length(3), 26),
        equal(end(3), end(container), -8) };

    EXPECT_THAT(placed(equations, 3, 200), ElementsAre(Span { 8, 26 }, Span { 42, 116 }, Span { 166, 26 }));
}

TEST(AxisLayoutTest, ATiedChainOfNaturalLengthsStretchesItsLastView)
{
    const std::vector<Equation> equations { equal(start(1), start(container)), equal(start(2), end(1)),
        equal(end(2), end(container)) };

    EXPECT_THAT(placed(equations, 2), ElementsAre(Span { 0, 30 }, Span { 30, 70 }));
}

TEST(AxisLayoutTest, CentresAreSharedAlongAChain)
{
    EXPECT_THAT(placed({ equal(start(1), start(container), 8), equal(length(1), 24), equal(center(2), center(1)),
                           equal(center(3), center(2), 1), equal(length(3), 16) },
                    3),
        ElementsAre(Span { 8, 24 }, Span { 5, 30 }, Span { 13, 16 }));
}

TEST(AxisLayoutTest, AnUntiedViewHasItsNaturalLengthAtTheStart)
{
    EXPECT_THAT(placed({}, 2), ElementsAre(Span { 0, 30 }, Span { 0, 30 }));
}

TEST(AxisLayoutTest, OneTieIsEnoughToPlaceAViewOfNaturalLength)
{
    EXPECT_THAT(placed({ equal(start(1), start(container), 5) }), ElementsAre(Span { 5, 30 }));
    EXPECT_THAT(placed({ equal(end(1), end(container)) }), ElementsAre(Span { 70, 30 }));
    EXPECT_THAT(placed({ equal(center(1), center(container)) }), ElementsAre(Span { 35, 30 }));
}

TEST(AxisLayoutTest, ViewsTiedOnlyToEachOtherStayTogether)
{
    EXPECT_THAT(placed({ equal(start(2), end(1), 5) }, 2), ElementsAre(Span { 0, 30 }, Span { 35, 30 }));
    EXPECT_THAT(placed({ equal(start(1), end(2), 5) }, 2), ElementsAre(Span { 0, 30 }, Span { -35, 30 }));
}

TEST(AxisLayoutTest, ALengthThatEquationsTellCountsMoreThanTheNaturalOne)
{
    EXPECT_THAT(placed({ equal(start(2), end(1)), equal(length(2), 50), equal(start(1), start(container)),
                           equal(end(2), end(container)) },
                    2),
        ElementsAre(Span { 0, 50 }, Span { 50, 50 }));
}

TEST(AxisLayoutTest, OfContradictionsTheEarlierOneHolds)
{
    EXPECT_THAT(placed({ equal(length(1), 40), equal(length(1), 50) }), ElementsAre(Span { 0, 40 }));
    EXPECT_THAT(placed({ equal(start(1), start(container), 5), equal(start(1), start(container), 7) }),
        ElementsAre(Span { 5, 30 }));
    EXPECT_THAT(placed({ equal(start(1), start(container), 5), equal(end(1), end(container)), equal(length(1), 20) }),
        ElementsAre(Span { 5, 95 }));
    EXPECT_THAT(placed({ equal(length(1), 20), equal(start(1), start(container), 5), equal(end(1), end(container)) }),
        ElementsAre(Span { 5, 20 }));
}

TEST(AxisLayoutTest, AnEquationBetweenKnownPlacesIsLeftAlone)
{
    EXPECT_THAT(placed({ equal(start(container), end(container), 5), equal(length(container), 50) }),
        ElementsAre(Span { 0, 30 }));
}

TEST(AxisLayoutTest, AContainerThatIsTooShortLeavesNoNegativeLength)
{
    EXPECT_THAT(placed({ equal(start(1), start(container), 40), equal(end(1), end(container), -40) }, 1, 50),
        ElementsAre(Span { 40, 0 }));
}

TEST(AxisLayoutTest, AContainerOfNoLengthIsPossible)
{
    EXPECT_THAT(
        placed({ equal(start(1), start(container)), equal(end(1), end(container)) }, 1, 0), ElementsAre(Span { 0, 0 }));
}

TEST(AxisLayoutTest, TheContainerHoldsAViewAndItsMargins)
{
    const AxisLayout layout(
        { equal(start(1), start(container), 2), equal(end(1), end(container), -3) }, { { 10, 30 } });

    EXPECT_EQ(layout.containerLengths(), (Lengths { 15, 35 }));
}

TEST(AxisLayoutTest, TheContainerReachesToTheEndOfViewsOfTheirOwnLength)
{
    const AxisLayout layout(
        { equal(start(1), start(container), 8), equal(length(1), 26), equal(start(2), end(1), 2) }, { {}, { 10, 30 } });

    EXPECT_EQ(layout.containerLengths(), (Lengths { 66, 66 }));
}

TEST(AxisLayoutTest, TheContainerReachesToTheStartOfViewsThatHangFromItsEnd)
{
    const AxisLayout layout({ equal(end(1), end(container), -8), equal(length(1), 26) }, { {} });

    EXPECT_EQ(layout.containerLengths(), (Lengths { 34, 34 }));
}

TEST(AxisLayoutTest, TheContainerHoldsACentredViewOnBothSides)
{
    const AxisLayout layout({ equal(center(1), center(container), 5), equal(length(1), 20) }, { {} });

    EXPECT_EQ(layout.containerLengths(), (Lengths { 30, 30 }));
}

TEST(AxisLayoutTest, TheViewThatNeedsMostDecides)
{
    const AxisLayout layout({ equal(start(1), start(container)), equal(end(1), end(container)),
                                equal(start(2), start(container), 5), equal(end(2), end(container), -5) },
        { { 20, 25 }, { 4, 40 } });

    EXPECT_EQ(layout.containerLengths(), (Lengths { 20, 50 }));
}

TEST(AxisLayoutTest, WhatNoContainerCouldHoldIsNotCounted)
{
    const AxisLayout layout({ equal(end(1), start(container), -5), equal(length(1), 20) }, { { 50, 50 } });

    EXPECT_EQ(layout.containerLengths(), Lengths {});
    EXPECT_THAT(layout.place(100), ElementsAre(Span { -25, 20 }));
}

TEST(AxisLayoutTest, ATightContainerIsWideEnoughForAllThatItHolds)
{
    const std::vector<Equation> equations { equal(start(1), start(container), 8), equal(length(1), 26),
        equal(start(2), end(1), 8), equal(end(2), start(3), -8), equal(length(3), 26),
        equal(end(3), end(container), -8) };
    const AxisLayout layout(equations, { {}, { 40, 90 }, {} });

    const auto needed = layout.containerLengths();

    EXPECT_EQ(needed, (Lengths { 124, 174 }));
    EXPECT_THAT(layout.place(needed.minimum), ElementsAre(Span { 8, 26 }, Span { 42, 40 }, Span { 90, 26 }));
}

} // namespace
} // namespace desktop
