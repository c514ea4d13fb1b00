#include "ui/SurfacesTest.h"
#include "unit/CapturedStandardError.h"

#include <gmock/gmock.h>

namespace {

using perchly::tests::CapturedStandardError;
using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

/// What the log tells of windows and sizes.
class SurfaceLogTest : public SurfacesTest {
protected:
    static constexpr auto saved = "DEBUG: BookmarkManager - Saved 7 bookmarks";

    CapturedStandardError captured;
};

TEST_F(SurfaceLogTest, AClosedWindowIsTold)
{
    openWindow(first, "/first");
    EXPECT_THAT(captured.debugLines(), IsEmpty());

    windowOf(first)->close();

    EXPECT_THAT(captured.debugLines(), ElementsAre("DEBUG: Detached window closed and silenced for First"));
}

TEST_F(SurfaceLogTest, AClosedWindowIsToldOnceForEachTime)
{
    for (auto time = 0; time < 2; ++time) {
        openWindow(first, "/first");
        const auto window = windowOf(first);
        window->close();
        window->close();
    }

    EXPECT_EQ(captured.debugLines().size(), 2U);
}

TEST_F(SurfaceLogTest, AClosedWindowIsToldUnderTheTitleThatItOpenedWith)
{
    openWindow(first, "/first");
    first.title = "Renamed";
    store().updateBookmark(first);

    windowOf(first)->close();

    EXPECT_THAT(captured.debugLines(), ElementsAre(saved, "DEBUG: Detached window closed and silenced for First"));
}

TEST_F(SurfaceLogTest, ASavedSizeIsTold)
{
    controller->browserDidResize(*browserOf(first), 610, 420.5);

    letPass(milliseconds(510));

    EXPECT_THAT(captured.debugLines(), ElementsAre(saved, "DEBUG: Saved debounced size for First: {610, 420.5}"));
}

TEST_F(SurfaceLogTest, ABurstOfSizesIsSavedOnce)
{
    for (auto width = 601; width <= 605; ++width)
        controller->browserDidResize(*browserOf(first), width, 700);

    letPass(milliseconds(510));

    EXPECT_THAT(captured.debugLines(), ElementsAre(saved, "DEBUG: Saved debounced size for First: {605, 700}"));
}

TEST_F(SurfaceLogTest, WhatIsNotSavedIsNotTold)
{
    controller->browserDidResize(*controller->surfaces().browserViewControllerForBookmark(nullptr), 610, 700);
    letPass(milliseconds(510));
    EXPECT_THAT(captured.debugLines(), IsEmpty());
    store().removeBookmark(first.id);

    controller->browserDidResize(*browserOf(first), 610, 700);
    letPass(milliseconds(510));

    EXPECT_THAT(captured.debugLines(), ElementsAre("DEBUG: BookmarkManager - Saved 6 bookmarks"));
}

} // namespace
