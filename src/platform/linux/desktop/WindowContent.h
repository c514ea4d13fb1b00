#pragma once

#include "platform/linux/desktop/GObject.h"

#include <gtk/gtk.h>

#include <functional>

namespace desktop {

/// Takes the widget out of what it is in, also out of a window that counts on it.
void takeOut(GtkWidget* widget);

/// The one content of a window. It may come out of another window, and leave for one at any time.
class WindowContent {
public:
    /// How the window holds it.
    struct Place {
        std::function<GtkWidget*()> current;
        /// Null takes out what is there.
        std::function<void(GtkWidget*)> put;
    };

    WindowContent(GtkWindow* window, Place place);

    /// The content that was there leaves; null for none. Takes the widget out of wherever it is.
    void set(GtkWidget* content);

    /// The window leaves the screen: remembers where the keyboard is, and lets no content in that is on its way.
    void leaveAtClose();

    /// Where in the content the keyboard is, for the next time, and back there.
    void rememberFirstResponder() const;
    void restoreFirstResponder() const;

private:
    void leave();
    void enter();

    GtkWindow* window_;
    Place place_;
    /// The content on its way in.
    ObjectPointer<GtkWidget> entering_;
    SourceHandle entrance_;
};

} // namespace desktop
