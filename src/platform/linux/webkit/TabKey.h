#pragma once

#include <gtk/gtk.h>

namespace webkit {

/// Lets the Tab key take the keyboard out of a page, to the next control of the page's window, and no farther.
void letTabLeave(GtkWidget* page);

} // namespace webkit
