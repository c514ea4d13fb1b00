#pragma once

#include "platform/appkit/View.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/RequestedSize.h"
#include "platform/linux/desktop/Toolkit.h"

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

namespace appkit {

/// The widget behind a view. Subclasses keep their signal connections here, so that they end with the view.
struct View::Native {
    explicit Native(GtkWidget* newWidget)
        : widget(desktop::retain(newWidget))
    {
    }

    /// A button that shows neither text nor a picture with a name says to screen readers what its tool tip says.
    void nameAfterToolTip(const std::string& toolTip) const;

    desktop::ObjectPointer<GtkWidget> widget;
    std::vector<desktop::SignalConnection> connections;
    /// Tells of what the user types, in a field that does so at each key.
    desktop::SignalConnection typing;
    /// What was asked for; the widget's own size once it is on the screen.
    foundation::Rect frame;
    desktop::RequestedSize requestedSize;
    bool hasAccessibilityLabel = false;
    /// What else a subclass needs for as long as the view lives.
    std::shared_ptr<void> helper;
};

/// Makes the toolkit ready and wraps the widget that `make` returns.
template <class Make>
[[nodiscard]] std::unique_ptr<View::Native> makeNative(Make make)
{
    desktop::loadToolkit();
    return std::make_unique<View::Native>(make());
}

[[nodiscard]] inline GtkWidget* widgetOf(const View& view)
{
    return view.native().widget.get();
}

} // namespace appkit
