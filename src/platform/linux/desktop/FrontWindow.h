#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// The window of this program that the user works with, else one that is on the screen, or null.
[[nodiscard]] GtkWindow* frontWindow();

} // namespace desktop
