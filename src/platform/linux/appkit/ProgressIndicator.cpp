#include "platform/appkit/ProgressIndicator.h"

#include "platform/linux/appkit/ViewNative.h"

namespace appkit {
namespace {

// Each step of a spinner lays its parent out anew: a box of its own keeps that from the view's constraints, which
// would be solved sixty times a second.
GtkWidget* makeBoxedSpinner()
{
    auto* spinner = gtk_spinner_new();
    gtk_widget_set_hexpand(spinner, TRUE);
    auto* box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_box_append(GTK_BOX(box), spinner);
    return box;
}

GtkSpinner* spinnerOf(const ProgressIndicator& indicator)
{
    return GTK_SPINNER(gtk_widget_get_first_child(widgetOf(indicator)));
}

} // namespace

ProgressIndicator::ProgressIndicator()
    : View(makeNative(makeBoxedSpinner))
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
    setHidden(!displayed && !gtk_spinner_get_spinning(spinnerOf(*this)));
}

void ProgressIndicator::startAnimation()
{
    setHidden(false);
    gtk_spinner_start(spinnerOf(*this));
}

void ProgressIndicator::stopAnimation()
{
    gtk_spinner_stop(spinnerOf(*this));
    setHidden(!isDisplayedWhenStopped_);
}

} // namespace appkit
