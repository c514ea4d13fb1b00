#include "platform/linux/desktop/ConstraintView.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Toolkit.h"
#include "support/linux/ToolkitFunction.h"

#include <gtest/gtest.h>

namespace {

using desktop::AxisLayout;
using perchly::test::toolkitFunction;
using Attribute = AxisLayout::Attribute;

/// A view of its own size, 30 by 20 at least, and children without one.
class ConstraintViewTest : public testing::Test {
protected:
    ConstraintViewTest()
    {
        desktop::loadToolkit();
        view = desktop::retain(desktop::makeConstraintView());
        first = addChild();
        second = addChild();
    }

    [[nodiscard]] GtkWidget* addChild() const
    {
        auto* child = desktop::makeConstraintView();
        gtk_widget_insert_before(child, view.get(), nullptr);
        return child;
    }

    void tie(GtkOrientation axis, GtkWidget* child, Attribute attribute, double constant) const
    {
        desktop::addConstraint(
            view.get(), axis, { child, attribute }, desktop::WidgetAnchor { view.get(), attribute }, constant);
    }

    void setLength(GtkOrientation axis, GtkWidget* child, double length) const
    {
        desktop::addConstraint(view.get(), axis, { child, Attribute::Length }, std::nullopt, length);
    }

    /// 8 points from the leading and the top edge, 30 by 20.
    void tieToCorner(GtkWidget* child) const
    {
        tie(GTK_ORIENTATION_HORIZONTAL, child, Attribute::Start, 8);
        setLength(GTK_ORIENTATION_HORIZONTAL, child, 30);
        tie(GTK_ORIENTATION_VERTICAL, child, Attribute::Start, 8);
        setLength(GTK_ORIENTATION_VERTICAL, child, 20);
    }

    [[nodiscard]] int naturalLength(GtkOrientation axis) const
    {
        auto minimum = 0;
        auto natural = 0;
        gtk_widget_measure(view.get(), axis, -1, &minimum, &natural, nullptr, nullptr);
        return natural;
    }

    void allocate(int width, int height) const
    {
        // The toolkit wants to have been asked for its wishes first.
        (void)naturalLength(GTK_ORIENTATION_HORIZONTAL);
        const GtkAllocation place { 0, 0, width, height };
        gtk_widget_size_allocate(view.get(), &place, -1);
    }

    [[nodiscard]] graphene_rect_t placeOf(GtkWidget* child) const
    {
        graphene_rect_t place {};
        EXPECT_TRUE(gtk_widget_compute_bounds(child, view.get(), &place));
        return place;
    }

    void expectPlace(GtkWidget* child, float x, float y, float width, float height) const
    {
        const auto place = placeOf(child);
        EXPECT_EQ(place.origin.x, x);
        EXPECT_EQ(place.origin.y, y);
        EXPECT_EQ(place.size.width, width);
        EXPECT_EQ(place.size.height, height);
    }

    desktop::ObjectPointer<GtkWidget> view;
    GtkWidget* first = nullptr;
    GtkWidget* second = nullptr;
};

TEST_F(ConstraintViewTest, PlacesItsChildrenOnBothAxes)
{
    tieToCorner(first);
    tie(GTK_ORIENTATION_HORIZONTAL, second, Attribute::Start, 2);
    tie(GTK_ORIENTATION_HORIZONTAL, second, Attribute::End, -2);
    desktop::addConstraint(view.get(), GTK_ORIENTATION_VERTICAL, { second, Attribute::Start },
        desktop::WidgetAnchor { first, Attribute::End }, 4);
    tie(GTK_ORIENTATION_VERTICAL, second, Attribute::End, -2);

    allocate(200, 100);

    expectPlace(first, 8, 8, 30, 20);
    expectPlace(second, 2, 32, 196, 66);
}

TEST_F(ConstraintViewTest, IsMirroredWhereTextRunsFromTheRight)
{
    const auto setDirection = toolkitFunction<void (*)(GtkWidget*, GtkTextDirection)>("gtk_widget_set_direction");
    ASSERT_NE(setDirection, nullptr);
    tieToCorner(first);

    setDirection(view.get(), GTK_TEXT_DIR_RTL);
    allocate(200, 100);

    expectPlace(first, 162, 8, 30, 20);
}

TEST_F(ConstraintViewTest, AsksForRoomForItsChildren)
{
    tieToCorner(first);

    EXPECT_EQ(naturalLength(GTK_ORIENTATION_HORIZONTAL), 38);
    EXPECT_EQ(naturalLength(GTK_ORIENTATION_VERTICAL), 28);
}

TEST_F(ConstraintViewTest, ConstraintsEndWithTheChildThatLeaves)
{
    tieToCorner(first);
    desktop::addConstraint(view.get(), GTK_ORIENTATION_HORIZONTAL, { second, Attribute::Start },
        desktop::WidgetAnchor { first, Attribute::End }, 4);
    setLength(GTK_ORIENTATION_HORIZONTAL, second, 10);
    ASSERT_EQ(naturalLength(GTK_ORIENTATION_HORIZONTAL), 52);

    gtk_widget_unparent(first);
    allocate(200, 100);

    EXPECT_EQ(naturalLength(GTK_ORIENTATION_HORIZONTAL), 10);
    EXPECT_EQ(placeOf(second).origin.x, 0);
    EXPECT_EQ(placeOf(second).size.width, 10);
}

TEST_F(ConstraintViewTest, PartsOfPixelsBelongToTheChild)
{
    setLength(GTK_ORIENTATION_HORIZONTAL, first, 10.5);
    setLength(GTK_ORIENTATION_VERTICAL, first, 10);
    tie(GTK_ORIENTATION_HORIZONTAL, first, Attribute::Start, 2.5);

    allocate(200, 100);

    expectPlace(first, 2, 0, 11, 10);
    EXPECT_EQ(naturalLength(GTK_ORIENTATION_HORIZONTAL), 13);
}

TEST_F(ConstraintViewTest, HiddenChildrenKeepTheirPlaceForTheOthers)
{
    tieToCorner(first);
    desktop::addConstraint(view.get(), GTK_ORIENTATION_HORIZONTAL, { second, Attribute::Start },
        desktop::WidgetAnchor { first, Attribute::End }, 4);
    setLength(GTK_ORIENTATION_HORIZONTAL, second, 10);

    gtk_widget_set_visible(first, FALSE);
    allocate(200, 100);

    EXPECT_EQ(placeOf(second).origin.x, 42);
}

TEST_F(ConstraintViewTest, KnowsItself)
{
    EXPECT_TRUE(desktop::isConstraintView(view.get()));
    const auto window = desktop::retain(gtk_window_new());
    EXPECT_FALSE(desktop::isConstraintView(window.get()));
    gtk_window_destroy(GTK_WINDOW(window.get()));
}

TEST_F(ConstraintViewTest, GoesWithItsConstraints)
{
    tieToCorner(first);
    gpointer watched = view.get();
    g_object_add_weak_pointer(G_OBJECT(watched), &watched);
    gpointer child = first;
    g_object_add_weak_pointer(G_OBJECT(child), &child);

    view.reset();

    EXPECT_EQ(watched, nullptr);
    EXPECT_EQ(child, nullptr);
}

} // namespace
