#include "platform/appkit/LayoutConstraint.h"

#include "platform/foundation/FatalError.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/ConstraintView.h"

namespace appkit {
namespace {

GtkConstraintAttribute toGtk(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::Leading:
        return GTK_CONSTRAINT_ATTRIBUTE_START;
    case LayoutAttribute::Trailing:
        return GTK_CONSTRAINT_ATTRIBUTE_END;
    case LayoutAttribute::Top:
        return GTK_CONSTRAINT_ATTRIBUTE_TOP;
    case LayoutAttribute::Bottom:
        return GTK_CONSTRAINT_ATTRIBUTE_BOTTOM;
    case LayoutAttribute::CenterY:
        return GTK_CONSTRAINT_ATTRIBUTE_CENTER_Y;
    case LayoutAttribute::Width:
        return GTK_CONSTRAINT_ATTRIBUTE_WIDTH;
    case LayoutAttribute::Height:
        return GTK_CONSTRAINT_ATTRIBUTE_HEIGHT;
    }
    foundation::fatalError("No such layout attribute");
}

/// A widget's own layout is called null by the constraints inside it.
GtkConstraintTarget* targetIn(GtkWidget* container, GtkWidget* widget)
{
    return widget == container ? nullptr : GTK_CONSTRAINT_TARGET(widget);
}

void activate(const LayoutConstraint& constraint)
{
    auto* first = widgetOf(constraint.first.view);
    auto* container = gtk_widget_get_parent(first);
    auto* layout = container ? desktop::constraintLayoutOf(container) : nullptr;
    if (!layout)
        foundation::fatalError("A constraint needs its view in a superview first");
    const auto attribute = toGtk(constraint.first.attribute);
    auto* made = constraint.secondView
        ? gtk_constraint_new(targetIn(container, first), attribute, GTK_CONSTRAINT_RELATION_EQ,
            targetIn(container, widgetOf(*constraint.secondView)), toGtk(constraint.secondAttribute), 1,
            constraint.constant, GTK_CONSTRAINT_STRENGTH_REQUIRED)
        : gtk_constraint_new_constant(targetIn(container, first), attribute, GTK_CONSTRAINT_RELATION_EQ,
            constraint.constant, GTK_CONSTRAINT_STRENGTH_REQUIRED);
    gtk_constraint_layout_add_constraint(layout, made);
}

} // namespace

void activateConstraints(std::initializer_list<LayoutConstraint> constraints)
{
    for (const auto& constraint : constraints)
        activate(constraint);
}

} // namespace appkit
