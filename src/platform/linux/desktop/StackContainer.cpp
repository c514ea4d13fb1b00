#include "platform/linux/desktop/StackContainer.h"

#include <algorithm>
#include <vector>

namespace desktop {
namespace {

constexpr auto spacingKey = "perchly-spacing-after";

struct StackContainer {
    GtkWidget widget;
    GtkOrientation orientation;
    int spacing;
    Insets insets;
};

StackContainer& self(gpointer instance)
{
    return *static_cast<StackContainer*>(instance);
}

gpointer parentClass()
{
    return g_type_class_peek(GTK_TYPE_WIDGET);
}

std::vector<GtkWidget*> shownChildren(GtkWidget* widget)
{
    std::vector<GtkWidget*> children;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (gtk_widget_should_layout(child))
            children.push_back(child);
    }
    return children;
}

GtkOrientation other(GtkOrientation axis)
{
    return axis == GTK_ORIENTATION_HORIZONTAL ? GTK_ORIENTATION_VERTICAL : GTK_ORIENTATION_HORIZONTAL;
}

bool isLengthFixed(GtkWidget* child, GtkOrientation axis)
{
    auto width = 0;
    auto height = 0;
    gtk_widget_get_size_request(child, &width, &height);
    return (axis == GTK_ORIENTATION_HORIZONTAL ? width : height) >= 0;
}

struct Lengths {
    int minimum;
    int natural;
};

/// To the toolkit a length that is asked for is a minimum; here it is all that the child gets.
Lengths lengthsOf(GtkWidget* child, GtkOrientation axis, int across)
{
    Lengths lengths {};
    gtk_widget_measure(child, axis, across, &lengths.minimum, &lengths.natural, nullptr, nullptr);
    if (isLengthFixed(child, axis))
        lengths.natural = lengths.minimum;
    return lengths;
}

int spacingAfter(const StackContainer& stack, GtkWidget* child)
{
    // Null for none, so that zero can be one.
    const auto own = GPOINTER_TO_INT(g_object_get_data(G_OBJECT(child), spacingKey));
    return own > 0 ? own - 1 : stack.spacing;
}

int insetsAlong(const StackContainer& stack, GtkOrientation axis)
{
    const auto& insets = stack.insets;
    return axis == GTK_ORIENTATION_HORIZONTAL ? insets.start + insets.end : insets.top + insets.bottom;
}

/// What no child gets.
int roomBetween(const StackContainer& stack, const std::vector<GtkWidget*>& children)
{
    auto room = insetsAlong(stack, stack.orientation);
    for (std::size_t index = 0; index + 1 < children.size(); ++index)
        room += spacingAfter(stack, children[index]);
    return room;
}

void measure(GtkWidget* widget, GtkOrientation axis, int across, int* minimum, int* natural, int* minimumBaseline,
    int* naturalBaseline)
{
    const auto& stack = self(widget);
    const auto children = shownChildren(widget);
    const auto isAlong = axis == stack.orientation;
    const auto innerAcross = isAlong && across >= 0 ? std::max(0, across - insetsAlong(stack, other(axis))) : -1;
    *minimum = *natural = 0;
    for (auto* child : children) {
        const auto lengths = lengthsOf(child, axis, innerAcross);
        *minimum = isAlong ? *minimum + lengths.minimum : std::max(*minimum, lengths.minimum);
        *natural = isAlong ? *natural + lengths.natural : std::max(*natural, lengths.natural);
    }
    const auto room = isAlong ? roomBetween(stack, children) : insetsAlong(stack, axis);
    *minimum += room;
    *natural += room;
    *minimumBaseline = *naturalBaseline = -1;
}

/// Shares the length among the children.
std::vector<GtkRequestedSize> share(
    int length, const std::vector<GtkWidget*>& children, GtkOrientation axis, int across)
{
    std::vector<GtkRequestedSize> sizes;
    sizes.reserve(children.size());
    for (auto* child : children) {
        const auto lengths = lengthsOf(child, axis, across);
        sizes.push_back({ child, lengths.minimum, lengths.natural });
        length -= lengths.minimum;
    }
    if (!sizes.empty())
        gtk_distribute_natural_allocation(std::max(0, length), static_cast<guint>(sizes.size()), sizes.data());
    return sizes;
}

struct Span {
    int start;
    int length;
};

/// Across the stack. What has no fixed length is placed by the toolkit, which knows more kinds of alignment.
Span placeAcross(GtkWidget* child, GtkOrientation axis, const Span& room)
{
    if (!isLengthFixed(child, axis))
        return room;
    const auto length = lengthsOf(child, axis, -1).minimum;
    const auto alignment
        = axis == GTK_ORIENTATION_HORIZONTAL ? gtk_widget_get_halign(child) : gtk_widget_get_valign(child);
    return { alignment == GTK_ALIGN_CENTER ? room.start + (room.length - length) / 2 : room.start, length };
}

void place(GtkWidget* child, GtkOrientation orientation, const Span& along, const Span& across, int mirroredIn)
{
    const auto& columns = orientation == GTK_ORIENTATION_HORIZONTAL ? along : across;
    const auto& rows = orientation == GTK_ORIENTATION_HORIZONTAL ? across : along;
    const auto left = mirroredIn > 0 ? mirroredIn - columns.start - columns.length : columns.start;
    const GtkAllocation allocation { left, rows.start, columns.length, rows.length };
    gtk_widget_size_allocate(child, &allocation, -1);
}

void allocate(GtkWidget* widget, int width, int height, int)
{
    const auto& stack = self(widget);
    const auto children = shownChildren(widget);
    const auto isRow = stack.orientation == GTK_ORIENTATION_HORIZONTAL;
    const auto mirroredIn = gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL ? width : 0;
    const auto acrossAxis = other(stack.orientation);
    const Span across { isRow ? stack.insets.top : stack.insets.start,
        std::max(0, (isRow ? height : width) - insetsAlong(stack, acrossAxis)) };
    auto start = isRow ? stack.insets.start : stack.insets.top;
    const auto whole = (isRow ? width : height) - roomBetween(stack, children);
    for (const auto& [data, length, natural] : share(whole, children, stack.orientation, across.length)) {
        auto* child = static_cast<GtkWidget*>(data);
        place(child, stack.orientation, { start, length }, placeAcross(child, acrossAxis, across), mirroredIn);
        start += length + spacingAfter(stack, child);
    }
}

GtkSizeRequestMode requestMode(GtkWidget* widget)
{
    return self(widget).orientation == GTK_ORIENTATION_VERTICAL ? GTK_SIZE_REQUEST_HEIGHT_FOR_WIDTH
                                                                : GTK_SIZE_REQUEST_CONSTANT_SIZE;
}

void dispose(GObject* object)
{
    while (auto* child = gtk_widget_get_first_child(GTK_WIDGET(object)))
        gtk_widget_unparent(child);
    G_OBJECT_CLASS(parentClass())->dispose(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    G_OBJECT_CLASS(instanceClass)->dispose = dispose;
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measure;
    widgetClass->size_allocate = allocate;
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GROUP);
    widgetClass->get_request_mode = requestMode;
}

GType stackContainerType()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyStackContainer",
        sizeof(GtkWidgetClass), initializeClass, sizeof(StackContainer), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

} // namespace

GtkWidget* makeStackContainer(GtkOrientation orientation)
{
    auto* container = GTK_WIDGET(g_object_new(stackContainerType(), nullptr));
    self(container).orientation = orientation;
    return container;
}

bool isStackContainer(GtkWidget* widget)
{
    return G_TYPE_CHECK_INSTANCE_TYPE(widget, stackContainerType());
}

GtkOrientation orientationOf(GtkWidget* stackContainer)
{
    return self(stackContainer).orientation;
}

void setSpacing(GtkWidget* stackContainer, int spacing)
{
    self(stackContainer).spacing = spacing;
    gtk_widget_queue_resize(stackContainer);
}

void setSpacingAfter(GtkWidget* child, int spacing)
{
    g_object_set_data(G_OBJECT(child), spacingKey, GINT_TO_POINTER(spacing + 1));
    if (auto* stackContainer = gtk_widget_get_parent(child))
        gtk_widget_queue_resize(stackContainer);
}

void setInsets(GtkWidget* stackContainer, const Insets& insets)
{
    self(stackContainer).insets = insets;
    gtk_widget_queue_resize(stackContainer);
}

} // namespace desktop
