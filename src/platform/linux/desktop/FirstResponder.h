#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// Keeps in mind which widget inside the content has the keyboard of its window, for the next time it is shown.
void rememberFirstResponder(GtkWidget* content);

/// Has that widget inside the content be the one.
void setFirstResponder(GtkWidget* content, GtkWidget* widget);

/// Gives the keyboard of the content's window to the widget inside it that had it before; the first time to its first
/// text field, with the text selected. Nothing where there is neither.
void restoreFirstResponder(GtkWidget* content);

} // namespace desktop
