#pragma once

#include "platform/appkit/Color.h"

#include <gtk/gtk.h>

namespace appkit {

/// Gives the text of a label or button the theme's colour of that meaning.
void setTextColor(GtkWidget* widget, Color color);

} // namespace appkit
