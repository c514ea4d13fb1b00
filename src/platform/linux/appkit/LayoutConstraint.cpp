#include "platform/appkit/LayoutConstraint.h"

#include "platform/foundation/FatalError.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/ConstraintView.h"

namespace appkit {
namespace {

using desktop::AxisLayout;

struct AxisAttribute {
    GtkOrientation axis;
    AxisLayout::Attribute attribute;
};

AxisAttribute alongAxis(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::Leading:
        return { GTK_ORIENTATION_HORIZONTAL, AxisLayout::Attribute::Start };
    case LayoutAttribute::Trailing:
        return { GTK_ORIENTATION_HORIZONTAL, AxisLayout::Attribute::End };
    case LayoutAttribute::CenterX:
        return { GTK_ORIENTATION_HORIZONTAL, AxisLayout::Attribute::Center };
    case LayoutAttribute::Width:
        return { GTK_ORIENTATION_HORIZONTAL, AxisLayout::Attribute::Length };
    case LayoutAttribute::Top:
        return { GTK_ORIENTATION_VERTICAL, AxisLayout::Attribute::Start };
    case LayoutAttribute::Bottom:
        return { GTK_ORIENTATION_VERTICAL, AxisLayout::Attribute::End };
    case LayoutAttribute::CenterY:
        return { GTK_ORIENTATION_VERTICAL, AxisLayout::Attribute::Center };
    case LayoutAttribute::Height:
        return { GTK_ORIENTATION_VERTICAL, AxisLayout::Attribute::Length };
    }
    foundation::fatalError("No such layout attribute");
}

bool isLength(LayoutAttribute attribute)
{
    return attribute == LayoutAttribute::Width || attribute == LayoutAttribute::Height;
}

/// In a stack, which lays its views out by what they ask for.
void requestLength(GtkWidget* widget, LayoutAttribute attribute, double length)
{
    auto width = 0;
    auto height = 0;
    gtk_widget_get_size_request(widget, &width, &height);
    (attribute == LayoutAttribute::Width ? width : height) = static_cast<int>(length);
    gtk_widget_set_size_request(widget, width, height);
}

void activate(const LayoutConstraint& constraint)
{
    auto* first = widgetOf(constraint.first.view);
    auto* container = gtk_widget_get_parent(first);
    if (container && !constraint.secondView && isLength(constraint.first.attribute)
        && !desktop::isConstraintView(container))
        return requestLength(first, constraint.first.attribute, constraint.constant);
    if (!container || !desktop::isConstraintView(container))
        foundation::fatalError("A constraint needs its view in a superview first");
    const auto [axis, attribute] = alongAxis(constraint.first.attribute);
    std::optional<desktop::WidgetAnchor> second;
    if (constraint.secondView)
        second = { widgetOf(*constraint.secondView), alongAxis(constraint.secondAttribute).attribute };
    desktop::addConstraint(container, axis, { first, attribute }, second, constraint.constant);
}

} // namespace

void activateConstraints(std::initializer_list<LayoutConstraint> constraints)
{
    for (const auto& constraint : constraints)
        activate(constraint);
}

} // namespace appkit
