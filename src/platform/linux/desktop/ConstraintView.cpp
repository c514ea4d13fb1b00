#include "platform/linux/desktop/ConstraintView.h"

#include "platform/linux/desktop/GObject.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace desktop {
namespace {

struct Anchor {
    /// Null for the view itself, which must not keep itself alive.
    ObjectPointer<GtkWidget> child;
    AxisLayout::Attribute attribute;
};

struct Constraint {
    Anchor first;
    std::optional<Anchor> second;
    double constant;
};

struct Constraints {
    std::vector<Constraint> horizontal;
    std::vector<Constraint> vertical;

    [[nodiscard]] std::vector<Constraint>& along(GtkOrientation axis)
    {
        return axis == GTK_ORIENTATION_HORIZONTAL ? horizontal : vertical;
    }
};

struct ConstraintView {
    GtkWidget widget;
    Constraints* constraints;
};

ConstraintView* self(gpointer instance)
{
    return static_cast<ConstraintView*>(instance);
}

gpointer parentClass()
{
    return g_type_class_peek(GTK_TYPE_WIDGET);
}

std::vector<GtkWidget*> childrenOf(GtkWidget* widget)
{
    std::vector<GtkWidget*> children;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child))
        children.push_back(child);
    return children;
}

/// None for a child that has left.
std::optional<AxisLayout::Anchor> placeOf(const Anchor& anchor, const std::vector<GtkWidget*>& children)
{
    if (!anchor.child)
        return AxisLayout::Anchor { 0, anchor.attribute };
    const auto found = std::ranges::find(children, anchor.child.get());
    if (found == children.end())
        return std::nullopt;
    return AxisLayout::Anchor { static_cast<std::size_t>(found - children.begin()) + 1, anchor.attribute };
}

std::vector<AxisLayout::Equation> equationsAlong(GtkOrientation axis, GtkWidget* view,
    const std::vector<GtkWidget*>& children, const std::vector<AxisLayout::Lengths>& lengths)
{
    std::vector<AxisLayout::Equation> equations;
    for (const auto& [first, second, constant] : self(view)->constraints->along(axis)) {
        const auto left = placeOf(first, children);
        const auto right = second ? placeOf(*second, children) : std::nullopt;
        if (!left || right.has_value() != second.has_value())
            continue;
        // What does not fit into a given length, a button's title say, gets the room that it needs.
        const auto isLengthOfChild = !right && left->view > 0 && left->attribute == AxisLayout::Attribute::Length;
        const auto least = isLengthOfChild ? lengths[left->view - 1].minimum : constant;
        equations.push_back({ *left, right, std::max(constant, least) });
    }
    return equations;
}

AxisLayout layoutAlong(GtkOrientation axis, GtkWidget* view, const std::vector<GtkWidget*>& children)
{
    std::vector<AxisLayout::Lengths> lengths;
    lengths.reserve(children.size());
    for (auto* child : children) {
        auto minimum = 0;
        auto natural = 0;
        gtk_widget_measure(child, axis, -1, &minimum, &natural, nullptr, nullptr);
        lengths.push_back({ static_cast<double>(minimum), static_cast<double>(natural) });
    }
    return { equationsAlong(axis, view, children, lengths), lengths };
}

void measure(
    GtkWidget* widget, GtkOrientation axis, int, int* minimum, int* natural, int* minimumBaseline, int* naturalBaseline)
{
    const auto lengths = layoutAlong(axis, widget, childrenOf(widget)).containerLengths();
    *minimum = static_cast<int>(std::ceil(lengths.minimum));
    *natural = std::max(*minimum, static_cast<int>(std::ceil(lengths.natural)));
    *minimumBaseline = *naturalBaseline = -1;
}

/// Whole pixels: an edge that two views share stays shared.
std::pair<int, int> wholeSpan(const AxisLayout::Span& span)
{
    const auto start = static_cast<int>(std::floor(span.start));
    const auto end = static_cast<int>(std::ceil(span.start + span.length));
    return { start, end - start };
}

void allocate(GtkWidget* widget, int width, int height, int)
{
    const auto children = childrenOf(widget);
    const auto columns = layoutAlong(GTK_ORIENTATION_HORIZONTAL, widget, children).place(width);
    const auto rows = layoutAlong(GTK_ORIENTATION_VERTICAL, widget, children).place(height);
    const auto isMirrored = gtk_widget_get_direction(widget) == GTK_TEXT_DIR_RTL;
    for (std::size_t index = 0; index < children.size(); ++index) {
        if (!gtk_widget_should_layout(children[index]))
            continue;
        const auto [left, itsWidth] = wholeSpan(columns[index]);
        const auto [top, itsHeight] = wholeSpan(rows[index]);
        const GtkAllocation place { isMirrored ? width - left - itsWidth : left, top, itsWidth, itsHeight };
        gtk_widget_size_allocate(children[index], &place, -1);
    }
}

/// A child that has left takes its constraints along, and must not be kept alive by them.
void dropConstraintsOfFormerChildren(GtkWidget* constraintView, GtkOrientation axis)
{
    const auto hasLeft = [constraintView](const Anchor& anchor) {
        return anchor.child && gtk_widget_get_parent(anchor.child.get()) != constraintView;
    };
    std::erase_if(self(constraintView)->constraints->along(axis), [hasLeft](const Constraint& constraint) {
        return hasLeft(constraint.first) || (constraint.second && hasLeft(*constraint.second));
    });
}

void dispose(GObject* object)
{
    self(object)->constraints->horizontal.clear();
    self(object)->constraints->vertical.clear();
    while (auto* child = gtk_widget_get_first_child(GTK_WIDGET(object)))
        gtk_widget_unparent(child);
    G_OBJECT_CLASS(parentClass())->dispose(object);
}

void finalize(GObject* object)
{
    delete self(object)->constraints;
    G_OBJECT_CLASS(parentClass())->finalize(object);
}

void initializeClass(gpointer instanceClass, gpointer)
{
    auto* objectClass = G_OBJECT_CLASS(instanceClass);
    objectClass->dispose = dispose;
    objectClass->finalize = finalize;
    auto* widgetClass = GTK_WIDGET_CLASS(instanceClass);
    widgetClass->measure = measure;
    widgetClass->size_allocate = allocate;
    gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GROUP);
}

void initialize(GTypeInstance* instance, gpointer)
{
    reinterpret_cast<ConstraintView*>(instance)->constraints = new Constraints;
}

GType constraintViewType()
{
    static const auto type = g_type_register_static_simple(GTK_TYPE_WIDGET, "PerchlyConstraintView",
        sizeof(GtkWidgetClass), initializeClass, sizeof(ConstraintView), initialize, static_cast<GTypeFlags>(0));
    return type;
}

} // namespace

GtkWidget* makeConstraintView()
{
    return GTK_WIDGET(g_object_new(constraintViewType(), nullptr));
}

bool isConstraintView(GtkWidget* widget)
{
    return G_TYPE_CHECK_INSTANCE_TYPE(widget, constraintViewType());
}

void addConstraint(GtkWidget* constraintView, GtkOrientation axis, const WidgetAnchor& first,
    const std::optional<WidgetAnchor>& second, double constant)
{
    const auto anchorFrom = [constraintView](const WidgetAnchor& anchor) {
        return Anchor { anchor.widget == constraintView ? nullptr : retain(anchor.widget), anchor.attribute };
    };
    Constraint constraint { anchorFrom(first), std::nullopt, constant };
    if (second)
        constraint.second = anchorFrom(*second);
    dropConstraintsOfFormerChildren(constraintView, axis);
    self(constraintView)->constraints->along(axis).push_back(std::move(constraint));
    gtk_widget_queue_resize(constraintView);
}

} // namespace desktop
