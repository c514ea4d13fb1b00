#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// Gives a realized window the application's icon, for window managers and task bars. Those that know installed
/// programs take theirs from there.
void setWindowIcon(GtkWidget* toplevel);

} // namespace desktop
