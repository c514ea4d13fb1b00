#pragma once

#include <gtk/gtk.h>

namespace desktop {

struct Insets {
    int top;
    int start;
    int bottom;
    int end;
};

/// A bare widget that lays its children out one after the other, each of the length that it asks for, and leaves no
/// room for hidden ones. Across, the children's own alignment counts.
[[nodiscard]] GtkWidget* makeStackContainer(GtkOrientation orientation);

[[nodiscard]] bool isStackContainer(GtkWidget* widget);

[[nodiscard]] GtkOrientation orientationOf(GtkWidget* stackContainer);

/// Between two children.
void setSpacing(GtkWidget* stackContainer, int spacing);

/// Between the child and the one after it, in place of the usual spacing.
void setSpacingAfter(GtkWidget* child, int spacing);

/// Around the children, inside the widget.
void setInsets(GtkWidget* stackContainer, const Insets& insets);

} // namespace desktop
