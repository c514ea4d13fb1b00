#pragma once

#include <gtk/gtk.h>

namespace desktop {

/// The window of this program that the user works with, else one that is on the screen, or null.
[[nodiscard]] GtkWindow* frontWindow();

/// A window that screen readers know as one. The toolkit forgets what it is if something in it gets the keyboard before
/// it is on the screen.
[[nodiscard]] GtkWindow* makeWindow();

} // namespace desktop
