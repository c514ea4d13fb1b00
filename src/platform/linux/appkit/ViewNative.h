#pragma once

#include "platform/appkit/View.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/RequestedSize.h"
#include "platform/linux/desktop/Toolkit.h"

#include <gtk/gtk.h>

#include <memory>
#include <vector>

namespace appkit {

/// The widget behind a view. Subclasses keep their signal connections here, so that they end with the view.
struct View::Native {
    explicit Native(GtkWidget* newWidget)
        : widget(desktop::retain(newWidget))
    {
    }

    desktop::ObjectPointer<GtkWidget> widget;
    std::vector<desktop::SignalConnection> connections;
    /// What was asked for; the widget's own size once it is on the screen.
    foundation::Rect frame;
    desktop::RequestedSize requestedSize;
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
