#include "browser/ResizeArea.h"
#include "platform/appkit/Cursor.h"
#include "platform/appkit/Event.h"
#include "platform/linux/appkit/ViewNative.h"
#include "support/linux/ScreenPointer.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/SurfacesTest.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace {

using foundation::Size;
using perchly::test::middleOf;
using perchly::test::ScreenPointer;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

std::string cursorOver(const appkit::View& view)
{
    GObject* cursor = nullptr;
    g_object_get(appkit::widgetOf(view), "cursor", &cursor, nullptr);
    if (!cursor)
        return "";
    const auto owned = desktop::adopt(cursor);
    char* name = nullptr;
    g_object_get(owned.get(), "name", &name, nullptr);
    return desktop::GLibPointer<>(name).get();
}

/// The user's hand on the edges of a browser of 500 by 450 points.
class ResizeDragTest : public SurfacesTest {
protected:
    ResizeDragTest()
    {
        first.preferredWidth = 500;
        first.preferredHeight = 450;
    }

    void openPlacedWindow()
    {
        openWindow(first, "/first");
        ASSERT_TRUE(isLaidOut(browser(), { 500, 450 }));
    }

    void openPlacedPopover()
    {
        openPopover(first, "/first");
        ASSERT_TRUE(isLaidOut(browser(), { 500, 450 }));
        ASSERT_TRUE(isKey(*browser()->view()->window()));
    }

    [[nodiscard]] Browser browser() const { return browserOf(first); }
    [[nodiscard]] const perchly::ResizeAreas& areas() const { return browser()->resizeAreas(); }

    /// Drags the strip in steps; the pointer stays down.
    void drag(perchly::ResizeArea& area, int x, int y)
    {
        constexpr auto steps = 5;
        ASSERT_TRUE(pointer.moveTo(middleOf(area)));
        pointer.press();
        ASSERT_TRUE(isHeld(area));
        for (auto step = 0; step < steps; ++step)
            ASSERT_TRUE(pointer.moveBy(x / steps, y / steps));
    }

    /// Jogs the pointer along the strip, which resizes nothing, until the strip tells of it.
    [[nodiscard]] bool isHeld(perchly::ResizeArea& area)
    {
        auto isTold = false;
        const auto tell = std::exchange(area.onResize, [&](double, double) { isTold = true; });
        const auto isUpright = area.frame().size.width < area.frame().size.height;
        auto step = 1;
        const auto isHeld = waitUntil([&] {
            step = -step;
            // Motion comes with the frames, which wait for all else.
            perchly::test::handlePendingEvents();
            return (isUpright ? pointer.moveBy(0, step) : pointer.moveBy(step, 0)) && isTold;
        });
        area.onResize = tell;
        return isHeld;
    }

    ScreenPointer pointer;
};

TEST_F(ResizeDragTest, TheRightStripOfAWindowTakesItsEdgeAlong)
{
    openPlacedWindow();
    const auto before = windowOf(first)->frame();

    drag(*areas().rightResizeArea, 60, 10);

    EXPECT_TRUE(isLaidOut(browser(), { 560, 450 }));
    EXPECT_EQ(windowOf(first)->frame().origin, before.origin);
}

TEST_F(ResizeDragTest, TheLeftStripOfAWindowMovesItsRightEdge)
{
    openPlacedWindow();
    const auto before = windowOf(first)->frame();

    drag(*areas().leftResizeArea, -50, 10);

    EXPECT_TRUE(isLaidOut(browser(), { 550, 450 }));
    EXPECT_EQ(windowOf(first)->frame().origin, before.origin);
}

TEST_F(ResizeDragTest, TheBottomStripOfAWindowTakesItsEdgeAlong)
{
    openPlacedWindow();
    const auto before = windowOf(first)->frame();

    drag(*areas().bottomResizeArea, 10, 40);

    EXPECT_TRUE(isLaidOut(browser(), { 500, 490 }));
    EXPECT_TRUE(waitUntil([&] {
        const auto after = windowOf(first)->frame();
        return after.origin == foundation::Point { before.origin.x, before.origin.y - 40 };
    }));
}

TEST_F(ResizeDragTest, TheBottomStripStopsAtTheMinimum)
{
    openPlacedWindow();

    drag(*areas().bottomResizeArea, 0, -200);

    EXPECT_TRUE(isLaidOut(browser(), { 500, 320 }));
    EXPECT_EQ(browser()->preferredContentSize(), (Size { 500, 320 }));
}

TEST_F(ResizeDragTest, AStripOfThePopoverResizesItAndLeavesItOpen)
{
    openPlacedPopover();

    drag(*areas().bottomResizeArea, 0, 50);
    ASSERT_TRUE(isLaidOut(browser(), { 500, 500 }));
    pointer.release();
    drag(*areas().leftResizeArea, 100, 0);
    ASSERT_TRUE(isLaidOut(browser(), { 400, 500 }));
    pointer.release();

    EXPECT_TRUE(popover().isShown());
    EXPECT_EQ(popover().contentSize(), (Size { 400, 500 }));
    EXPECT_TRUE(waitUntil([&] { return store().bookmarks()[store().bookmarks().size() - 2].preferredWidth == 400; }));
}

TEST_F(ResizeDragTest, MovingThePointerWithoutAPressResizesNothing)
{
    openPlacedWindow();

    ASSERT_TRUE(pointer.moveTo(middleOf(*areas().rightResizeArea)));
    ASSERT_TRUE(pointer.moveBy(1, 0));
    ASSERT_TRUE(pointer.moveBy(40, 0));
    letPass(std::chrono::milliseconds(50));

    EXPECT_EQ(browser()->preferredContentSize(), (Size { 500, 450 }));
}

TEST_F(ResizeDragTest, AfterTheReleaseTheEdgeStaysWhereItIs)
{
    openPlacedWindow();
    drag(*areas().rightResizeArea, 60, 0);
    ASSERT_TRUE(isLaidOut(browser(), { 560, 450 }));
    pointer.release();

    ASSERT_TRUE(pointer.moveBy(30, 30));
    letPass(std::chrono::milliseconds(50));

    EXPECT_EQ(browser()->preferredContentSize(), (Size { 560, 450 }));
}

TEST_F(ResizeDragTest, TheCursorTellsWhereAStripCanGo)
{
    openPlacedPopover();

    EXPECT_EQ(cursorOver(*areas().leftResizeArea), "ew-resize");
    EXPECT_EQ(cursorOver(*areas().rightResizeArea), "ew-resize");
    EXPECT_EQ(cursorOver(*areas().bottomResizeArea), "ns-resize");
    EXPECT_EQ(cursorOver(*browser()->view()), "");
}

/// As for those who read from right to left.
class MirroredResizeDragTest : public ResizeDragTest {
protected:
    void SetUp() override
    {
        desktop::loadToolkit();
        setDirection(GTK_TEXT_DIR_RTL);
    }
    void TearDown() override { setDirection(GTK_TEXT_DIR_LTR); }

private:
    static void setDirection(GtkTextDirection direction)
    {
        perchly::test::toolkitFunction<void (*)(GtkTextDirection)>("gtk_widget_set_default_direction")(direction);
    }
};

TEST_F(MirroredResizeDragTest, TheLeadingStripStandsAtTheRightAndTakesItsEdgeAlong)
{
    openPlacedWindow();

    drag(*areas().leftResizeArea, 60, 10);

    EXPECT_TRUE(isLaidOut(browser(), { 560, 450 }));
    EXPECT_GT(middleOf(*areas().leftResizeArea).x, middleOf(*areas().rightResizeArea).x);
}

TEST_F(MirroredResizeDragTest, TheTrailingStripStandsAtTheLeft)
{
    openPlacedWindow();

    drag(*areas().rightResizeArea, -50, 10);

    EXPECT_TRUE(isLaidOut(browser(), { 550, 450 }));
}

/// A strip by itself, with the pointer on its way.
class PointedResizeAreaTest : public testing::Test {
protected:
    PointedResizeAreaTest()
    {
        follow();
        EXPECT_TRUE(pointer.moveTo({ 600, 400 }));
    }

    void follow()
    {
        area->onResize = [this](double deltaX, double deltaY) { deltas.emplace_back(deltaX, deltaY); };
    }

    static constexpr appkit::Event down { appkit::EventType::LeftMouseDown };
    static constexpr appkit::Event dragged { appkit::EventType::LeftMouseDragged };

    std::shared_ptr<perchly::ResizeArea> area
        = std::make_shared<perchly::ResizeArea>(appkit::Cursor::resizeUpDownCursor());
    std::vector<std::pair<double, double>> deltas;
    ScreenPointer pointer;
};

TEST_F(PointedResizeAreaTest, TellsEachStepByItselfWithYUpwards)
{
    area->mouseDown(down);
    ASSERT_TRUE(pointer.moveBy(30, 20));
    area->mouseDragged(dragged);
    ASSERT_TRUE(pointer.moveBy(-5, -7));
    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, ElementsAre(std::pair(30.0, -20.0), std::pair(-5.0, 7.0)));
}

TEST_F(PointedResizeAreaTest, EachPressBeginsAnew)
{
    area->mouseDown(down);
    ASSERT_TRUE(pointer.moveBy(30, 20));
    area->mouseDown(down);
    ASSERT_TRUE(pointer.moveBy(1, 0));
    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, ElementsAre(std::pair(1.0, 0.0)));
}

TEST_F(PointedResizeAreaTest, WithoutAnybodyToTellItFollowsThePointer)
{
    area->onResize = nullptr;
    area->mouseDown(down);
    ASSERT_TRUE(pointer.moveBy(30, 20));
    area->mouseDragged(dragged);
    EXPECT_THAT(deltas, IsEmpty());
    follow();

    ASSERT_TRUE(pointer.moveBy(5, 0));
    area->mouseDragged(dragged);

    EXPECT_THAT(deltas, ElementsAre(std::pair(5.0, 0.0)));
}

} // namespace
