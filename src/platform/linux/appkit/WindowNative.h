#pragma once

#include "platform/appkit/Window.h"

#include <gtk/gtk.h>

namespace appkit {

struct Window::Native {
    GtkWindow* window;
};

/// The window that shows the widget, or null: one that attachWindow() has wrapped.
[[nodiscard]] std::shared_ptr<Window> windowOf(GtkWidget* widget);

/// Wraps a GtkWindow, which then keeps its Window.
std::shared_ptr<Window> attachWindow(GtkWindow* window);

} // namespace appkit
