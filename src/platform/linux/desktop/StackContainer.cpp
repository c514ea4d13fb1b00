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
    const auto itsAcross = across < 0 || !isAlong
        ? -1
        : std::max(0,
            across
                - insetsAlong(
                    stack, axis == GTK_ORIENTATION_HORIZONTAL ? GTK_ORIENTATION_VERTICAL : GTK_ORIENTATION_HORIZONTAL));
    *minimum = *natural = 0;
    for (auto* child : children) {
        auto least = 0;
        auto wanted = 0;
        gtk_widget_measure(child, axis, itsAcross, &least, &wanted, nullptr, nullptr);
        *minimum = isAlong ? *minimum + least : std::max(*minimum, least);
        *natural = isAlong ? *natural + wanted : std::max(*natural, wanted);
    }
    const auto room = isAlong ? roomBetween(stack, children) : insetsAlong(stack, axis);
    *minimum += room;
    *natural += room;
    *minimumBaseline = *naturalBaseline = -1;
}

/// The children's lengths where there is that much for all.
std::vector<GtkRequestedSize> lengthsOf(
    const std::vector<GtkWidget*>& children, GtkOrientation axis, int across, int length)
{
    std::vector<GtkRequestedSize> sizes;
    sizes.reserve(children.size());
    for (auto* child : children) {
        GtkRequestedSize size { child, 0, 0 };
        gtk_widget_measure(child, axis, across, &size.minimum_size, &size.natural_size, nullptr, nullptr);
        length -= size.minimum_size;
        sizes.push_back(size);
    }
    if (!sizes.empty())
        gtk_distribute_natural_allocation(std::max(0, length), static_cast<guint>(sizes.size()), sizes.data());
    return sizes;
}

void allocate(GtkWidget* widget, int width, int height, int)
{
    const auto& stack = self(widget);
    const auto children = shownChildren(widget);
    const auto isRow = stack.orientation == GTK_ORIENTATION_HORIZONTAL;
    const auto isMirrored = gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL;
    const auto innerWidth = std::max(0, width - insetsAlong(stack, GTK_ORIENTATION_HORIZONTAL));
    const auto innerHeight = std::max(0, height - insetsAlong(stack, GTK_ORIENTATION_VERTICAL));
    const auto lengths = lengthsOf(children, stack.orientation, isRow ? innerHeight : innerWidth,
        (isRow ? width : height) - roomBetween(stack, children));
    auto position = isRow ? stack.insets.start : stack.insets.top;
    for (const auto& [data, length, natural] : lengths) {
        auto* child = static_cast<GtkWidget*>(data);
        GtkAllocation place { stack.insets.start, position, innerWidth, length };
        if (isRow)
            place = { position, stack.insets.top, length, innerHeight };
        if (isMirrored)
            place.x = width - place.x - place.width;
        gtk_widget_size_allocate(child, &place, -1);
        position += length + spacingAfter(stack, child);
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
