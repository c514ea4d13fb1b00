#pragma once

#include <gtk/gtk.h>

namespace appkit {

/// Notes where the gesture's latest event was, for windowing systems that tell no more than that.
void rememberEventPlace(GtkGesture* gesture);

} // namespace appkit
