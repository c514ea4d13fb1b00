#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace desktop {

struct Shortcut {
    guint key;
    GdkModifierType modifiers;
    /// GTK_SHORTCUT_SCOPE_MANAGED: wherever the keyboard is in the widget's window.
    GtkShortcutScope scope;
};

/// Carries it out when the key is pressed and what has the keyboard leaves it alone. The key goes on to others unless
/// it says true. Lives with the widget.
void addShortcut(GtkWidget* widget, const Shortcut& shortcut, std::function<bool()> perform);

} // namespace desktop
