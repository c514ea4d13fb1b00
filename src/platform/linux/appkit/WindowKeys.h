#pragma once

#include <gtk/gtk.h>

namespace appkit {

/// The keys of the menus choose their items where nothing inside the window wanted the key.
void connectMenuKeys(GtkWindow* window);

/// Ctrl+W closes the window, as it does all over these desktops, where nothing inside wanted the key.
void connectCloseKey(GtkWindow* window);

} // namespace appkit
