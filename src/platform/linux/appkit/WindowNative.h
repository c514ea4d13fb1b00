#pragma once

#include "platform/appkit/Window.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/PixelGeometry.h"
#include "platform/linux/desktop/RequestedSize.h"
#include "platform/linux/desktop/WindowContent.h"

#include <gtk/gtk.h>

#include <optional>
#include <vector>

namespace appkit {

struct Window::Native {
    Native(GtkWindow* newWindow, std::string newClassName);
    ~Native();
    Native(const Native&) = delete;
    Native& operator=(const Native&) = delete;

    [[nodiscard]] bool isOnScreen() const { return window && gtk_widget_get_visible(GTK_WIDGET(window)); }
    /// On the screen and placed by X11's rules, which let a program know and choose its windows' places.
    [[nodiscard]] bool isPlaced() const;
    [[nodiscard]] foundation::Size currentContentSize() const;
    /// Not less than the content takes.
    [[nodiscard]] foundation::Size sizeToBeShown() const;
    void checkFirstPlace(desktop::PixelPoint wanted);

    /// Null once it is destroyed.
    GtkWindow* window;
    std::string className;

    /// Only of windows that were made as such.
    std::optional<desktop::WindowContent> content {};
    foundation::Point contentOrigin {};
    foundation::Size contentSize {};
    desktop::RequestedSize requestedSize {};
    WindowLevel level = WindowLevel::Normal;
    std::vector<desktop::SignalConnection> connections {};
    desktop::SignalConnection becomingActive {};
};

/// The window that shows the widget, or null: a Window of ours, as long as somebody has it.
[[nodiscard]] std::shared_ptr<Window> windowOf(GtkWidget* widget);

/// Wraps a GtkWindow for as long as the Window is kept, and lets it take the keys of the menus.
[[nodiscard]] std::shared_ptr<Window> wrapWindow(GtkWindow* window, std::string className);

} // namespace appkit
