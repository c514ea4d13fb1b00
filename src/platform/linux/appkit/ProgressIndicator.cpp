#include "platform/appkit/ProgressIndicator.h"

#include "platform/linux/appkit/ViewNative.h"

namespace appkit {

ProgressIndicator::ProgressIndicator()
    : View(makeNative(gtk_spinner_new))
{
    gtk_widget_set_can_target(widgetOf(*this), FALSE);
    gtk_widget_add_css_class(widgetOf(*this), "covering");
}

void ProgressIndicator::setStyle(ProgressIndicatorStyle /*style*/)
{
    // A GtkSpinner spins.
}

void ProgressIndicator::setControlSize(ControlSize size)
{
    const auto points = size == ControlSize::Small ? 16 : 32;
    gtk_widget_set_size_request(widgetOf(*this), points, points);
}

void ProgressIndicator::setDisplayedWhenStopped(bool displayed)
{
    isDisplayedWhenStopped_ = displayed;
    setHidden(!displayed && !gtk_spinner_get_spinning(GTK_SPINNER(widgetOf(*this))));
}

void ProgressIndicator::startAnimation()
{
    setHidden(false);
    gtk_spinner_start(GTK_SPINNER(widgetOf(*this)));
}

void ProgressIndicator::stopAnimation()
{
    gtk_spinner_stop(GTK_SPINNER(widgetOf(*this)));
    setHidden(!isDisplayedWhenStopped_);
}

} // namespace appkit
