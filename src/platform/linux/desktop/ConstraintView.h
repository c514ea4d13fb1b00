#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// A bare widget that lays its children out by a GtkConstraintLayout, later ones above earlier ones.
[[nodiscard]] GtkWidget* makeConstraintView();

/// The layout of a widget made by makeConstraintView, or null for another widget.
[[nodiscard]] GtkConstraintLayout* constraintLayoutOf(GtkWidget* widget);

} // namespace desktop
