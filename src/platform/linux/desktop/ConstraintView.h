#pragma once

#include "platform/linux/desktop/AxisLayout.h"

#include <gtk/gtk.h>

#include <optional>

namespace desktop {

/// A bare widget that lays its children out by constraints, later ones above earlier ones.
[[nodiscard]] GtkWidget* makeConstraintView();

[[nodiscard]] bool isConstraintView(GtkWidget* widget);

/// A side or a length of a constraint view or of one of its children.
struct WidgetAnchor {
    GtkWidget* widget;
    AxisLayout::Attribute attribute;
};

/// first = second + constant, or first = constant. Horizontally, the start is the leading side. The constraint holds
/// for as long as the children are in the view.
void addConstraint(GtkWidget* constraintView, GtkOrientation axis, const WidgetAnchor& first,
    const std::optional<WidgetAnchor>& second, double constant);

} // namespace desktop
