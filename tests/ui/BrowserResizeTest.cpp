#include "browser/ResizeArea.h"
#include "platform/appkit/Cursor.h"
#include "platform/appkit/Event.h"
#include "ui/SurfacesTest.h"

#include <gmock/gmock.h>

#include <functional>
#include <vector>

namespace {

using foundation::Rect;
using foundation::Size;
using perchly::BrowserViewController;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

class RecordingOwner : public perchly::BrowserViewControllerDelegate {
public:
    void browserDidResize(BrowserViewController& controller, double width, double height) override
    {
        EXPECT_EQ(controller.preferredContentSize(), (Size { width, height }));
        sizes.push_back({ width, height });
    }

    std::vector<Size> sizes;
};

/// A browser of 600 by 700 points, off the screen.
class BrowserResizeTest : public testing::Test {
protected:
    BrowserResizeTest()
    {
        browser->setDelegate(owner);
        browser->loadViewIfNeeded();
    }

    [[nodiscard]] Size viewSize() const { return browser->view()->frame().size; }
    [[nodiscard]] const perchly::ResizeAreas& areas() const { return browser->resizeAreas(); }

    perchly::test::UserFolders folders;
    std::shared_ptr<RecordingOwner> owner = std::make_shared<RecordingOwner>();
    std::shared_ptr<BrowserViewController> browser = std::make_shared<BrowserViewController>();
};

TEST_F(BrowserResizeTest, ADeltaIsAddedToTheSize)
{
    browser->resizeBy(10, -20);

    EXPECT_EQ(viewSize(), (Size { 610, 680 }));
    EXPECT_EQ(browser->preferredContentSize(), (Size { 610, 680 }));
    EXPECT_THAT(owner->sizes, ElementsAre(Size { 610, 680 }));
}

TEST_F(BrowserResizeTest, DeltasAddUp)
{
    browser->resizeBy(10, 0);
    browser->resizeBy(0.5, 0);
    browser->resizeBy(0, 7);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 610, 700 }, Size { 610.5, 700 }, Size { 610.5, 707 }));
}

TEST_F(BrowserResizeTest, NothingIsSmallerThan320Points)
{
    browser->resizeBy(-1000, 0);
    EXPECT_EQ(viewSize(), (Size { 320, 700 }));

    browser->resizeBy(0, -1000);

    EXPECT_EQ(viewSize(), (Size { 320, 320 }));
    EXPECT_THAT(owner->sizes, ElementsAre(Size { 320, 700 }, Size { 320, 320 }));
}

TEST_F(BrowserResizeTest, AtTheMinimumTheOwnerIsToldNothing)
{
    browser->resizeBy(-1000, -1000);
    owner->sizes.clear();

    browser->resizeBy(-1, 0);
    browser->resizeBy(0, -50);
    browser->resizeBy(-1, -1);

    EXPECT_THAT(owner->sizes, IsEmpty());
    EXPECT_EQ(viewSize(), (Size { 320, 320 }));
}

TEST_F(BrowserResizeTest, FromTheMinimumItGrowsAgain)
{
    browser->resizeBy(-1000, -1000);
    owner->sizes.clear();

    browser->resizeBy(5, -5);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 325, 320 }));
}

TEST_F(BrowserResizeTest, ThereIsNoMaximum)
{
    browser->resizeBy(9400, 9300);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 10000, 10000 }));
}

TEST_F(BrowserResizeTest, NoDeltaIsNoResize)
{
    browser->resizeBy(0, 0);

    EXPECT_THAT(owner->sizes, IsEmpty());
}

TEST_F(BrowserResizeTest, ASizeThatIsPreferredAlreadyIsLeftAlone)
{
    browser->setPreferredContentSize({ 650, 700 });

    browser->resizeBy(50, 0);

    EXPECT_THAT(owner->sizes, IsEmpty());
    EXPECT_EQ(viewSize(), (Size { 600, 700 }));
}

TEST_F(BrowserResizeTest, WithoutAnOwnerTheBrowserResizesAllTheSame)
{
    owner.reset();

    browser->resizeBy(10, 10);

    EXPECT_EQ(viewSize(), (Size { 610, 710 }));
}

TEST_F(BrowserResizeTest, DraggedOutwardsTheStripsMakeItLarger)
{
    areas().leftResizeArea->onResize(-30, 4);
    areas().rightResizeArea->onResize(20, 4);
    areas().bottomResizeArea->onResize(4, -10);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 630, 700 }, Size { 650, 700 }, Size { 650, 710 }));
}

TEST_F(BrowserResizeTest, DraggedInwardsTheStripsMakeItSmaller)
{
    areas().leftResizeArea->onResize(30, 4);
    areas().rightResizeArea->onResize(-20, 4);
    areas().bottomResizeArea->onResize(4, 10);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 570, 700 }, Size { 550, 700 }, Size { 550, 690 }));
}

TEST_F(BrowserResizeTest, TheBottomStripStopsAtTheMinimum)
{
    areas().bottomResizeArea->onResize(0, 379);
    areas().bottomResizeArea->onResize(0, 5);
    areas().bottomResizeArea->onResize(0, 5);

    EXPECT_THAT(owner->sizes, ElementsAre(Size { 600, 321 }, Size { 600, 320 }));
}

TEST_F(BrowserResizeTest, TheStripsDoNotKeepTheBrowser)
{
    const auto area = areas().rightResizeArea;
    const std::weak_ptr<BrowserViewController> weak = browser;
    browser.reset();
    ASSERT_TRUE(waitUntil([&] { return weak.expired(); }));

    area->onResize(10, 10);

    EXPECT_THAT(owner->sizes, IsEmpty());
}

TEST_F(BrowserResizeTest, TheStripsAreAboveAllElse)
{
    const auto& views = browser->view()->subviews();

    ASSERT_GT(views.size(), 3U);
    const std::vector<std::shared_ptr<appkit::View>> last(views.end() - 3, views.end());
    EXPECT_THAT(last, ElementsAre(areas().leftResizeArea, areas().rightResizeArea, areas().bottomResizeArea));
}

/// A strip by itself, with the pointer at rest.
class ResizeAreaTest : public testing::Test {
protected:
    ResizeAreaTest()
    {
        area->onResize = [this](double deltaX, double deltaY) { deltas.push_back({ deltaX, deltaY }); };
    }

    static constexpr appkit::Event down { appkit::EventType::LeftMouseDown };
    static constexpr appkit::Event dragged { appkit::EventType::LeftMouseDragged };

    std::shared_ptr<perchly::ResizeArea> area
        = std::make_shared<perchly::ResizeArea>(appkit::Cursor::resizeUpDownCursor());
    std::vector<Size> deltas;
};

TEST_F(ResizeAreaTest, HasNoSizeOfItsOwn)
{
    EXPECT_EQ(area->frame(), Rect {});
    EXPECT_FALSE(perchly::ResizeArea(appkit::Cursor::resizeLeftRightCursor()).onResize);
}

TEST_F(ResizeAreaTest, ADragThatBeganElsewhereIsIgnored)
{
    area->mouseDragged(dragged);
    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, IsEmpty());
}

TEST_F(ResizeAreaTest, TellsHowFarThePointerWentSincePressed)
{
    area->mouseDown(down);
    area->mouseDragged(dragged);
    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, ElementsAre(Size { 0, 0 }, Size { 0, 0 }));
}

TEST_F(ResizeAreaTest, WithoutAnybodyToTellItFollowsThePointer)
{
    area->onResize = nullptr;
    area->mouseDown(down);
    area->mouseDragged(dragged);
    area->onResize = [this](double deltaX, double deltaY) { deltas.push_back({ deltaX, deltaY }); };

    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, ElementsAre(Size { 0, 0 }));
}

/// Browsers on the screen.
class ShownBrowserResizeTest : public SurfacesTest {
protected:
    ShownBrowserResizeTest()
    {
        first.preferredWidth = 500;
        first.preferredHeight = 450;
    }

    /// Opens the first bookmark's window and waits until it is in its place.
    void openPlacedWindow()
    {
        openWindow(first, "/first");
        ASSERT_TRUE(isLaidOut(browserOf(first), { 500, 450 }));
    }

    /// Resizes and expects the window to keep its left and its top edge.
    void expectThatTheCornerStays(Size delta, const std::function<void()>& resize) const
    {
        const auto window = windowOf(first);
        const auto before = window->frame();
        resize();
        const auto isThere = [&] {
            const auto after = window->frame();
            return after.origin.x == before.origin.x && top(after) == top(before)
                && after.size == Size { before.size.width + delta.width, before.size.height + delta.height };
        };
        EXPECT_TRUE(isLaidOut(browserOf(first), { 500 + delta.width, 450 + delta.height }));
        EXPECT_TRUE(waitUntil(isThere));
        // Once more when nothing that was asked for stands in for what is there.
        letPass(std::chrono::milliseconds(300));
        EXPECT_TRUE(isThere());
        EXPECT_TRUE(isLaidOut(browserOf(first), { 500 + delta.width, 450 + delta.height }));
    }

    [[nodiscard]] static double top(const Rect& frame) { return frame.origin.y + frame.size.height; }
};

TEST_F(ShownBrowserResizeTest, TheStripsAreFivePointsThickAlongTheEdges)
{
    openPopover(first, "/first");
    const auto& areas = browserOf(first)->resizeAreas();

    EXPECT_TRUE(waitUntil([&] { return areas.leftResizeArea->frame() == Rect { { 0, 0 }, { 5, 450 } }; }));
    EXPECT_EQ(areas.rightResizeArea->frame(), (Rect { { 495, 0 }, { 5, 450 } }));
    EXPECT_EQ(areas.bottomResizeArea->frame(), (Rect { { 0, 0 }, { 500, 5 } }));
}

TEST_F(ShownBrowserResizeTest, AWindowGrowsToTheRightAndDownwards)
{
    openPlacedWindow();

    expectThatTheCornerStays({ 40, 30 }, [&] { browserOf(first)->resizeBy(40, 30); });
}

TEST_F(ShownBrowserResizeTest, AWindowShrinksFromTheRightAndFromBelow)
{
    openPlacedWindow();

    expectThatTheCornerStays({ -100, -90 }, [&] { browserOf(first)->resizeBy(-100, -90); });
}

TEST_F(ShownBrowserResizeTest, TheLeftStripOfAWindowMovesItsRightEdge)
{
    openPlacedWindow();

    expectThatTheCornerStays({ 25, 0 }, [&] { browserOf(first)->resizeAreas().leftResizeArea->onResize(-25, 0); });
}

TEST_F(ShownBrowserResizeTest, AWindowFollowsEachStepOfADrag)
{
    openPlacedWindow();

    expectThatTheCornerStays({ 50, 0 }, [&] {
        for (auto step = 0; step < 50; ++step)
            browserOf(first)->resizeAreas().rightResizeArea->onResize(1, 0);
    });
}

TEST_F(ShownBrowserResizeTest, AWindowStopsAtTheMinimum)
{
    openPlacedWindow();

    expectThatTheCornerStays({ -180, -130 }, [&] {
        browserOf(first)->resizeBy(-1000, -1000);
        browserOf(first)->resizeBy(-1000, -1000);
    });
}

TEST_F(ShownBrowserResizeTest, ThePopoverFollowsAtOnce)
{
    openPopover(first, "/first");
    const auto browser = browserOf(first);
    ASSERT_TRUE(isLaidOut(browser, { 500, 450 }));

    browser->resizeBy(40, 30);

    EXPECT_EQ(popover().contentSize(), (Size { 540, 480 }));
    EXPECT_TRUE(popover().isShown());
    EXPECT_TRUE(isLaidOut(browser, { 540, 480 }));
    letPass(std::chrono::milliseconds(300));
    EXPECT_EQ(browser->view()->frame().size, (Size { 540, 480 }));
}

TEST_F(ShownBrowserResizeTest, ThePopoverTakesTheSizeOfABrowserElsewhere)
{
    openPlacedWindow();
    openPopover(second, "/second");

    browserOf(first)->resizeBy(40, 30);

    EXPECT_EQ(popover().contentSize(), (Size { 540, 480 }));
}

TEST_F(ShownBrowserResizeTest, ThePopoverShowsTheBrowserAtItsNewSizeTheNextTime)
{
    openPopover(first, "/first");
    browserOf(first)->resizeBy(40, 30);
    openPopover(second, "/second");
    ASSERT_EQ(popover().contentSize(), (Size { 600, 700 }));

    controller->showBookmarkInPopover(first);

    EXPECT_EQ(popover().contentSize(), (Size { 540, 480 }));
    EXPECT_TRUE(isLaidOut(browserOf(first), { 540, 480 }));
}

TEST_F(ShownBrowserResizeTest, AWindowOpensAtTheSizeThatTheBrowserHadInThePopover)
{
    openPopover(first, "/first");
    browserOf(first)->resizeBy(40, 30);
    ASSERT_TRUE(isLaidOut(browserOf(first), { 540, 480 }));

    controller->openDetachedWindow(first);

    EXPECT_TRUE(waitUntil([&] { return browserOf(first)->view()->window() == windowOf(first); }));
    EXPECT_TRUE(isLaidOut(browserOf(first), { 540, 480 }));
}

} // namespace
