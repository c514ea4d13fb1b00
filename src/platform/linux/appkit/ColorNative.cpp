#include "platform/linux/appkit/ColorNative.h"

namespace appkit {
namespace {

void setClass(GtkWidget* widget, const char* name, bool isSet)
{
    if (isSet)
        gtk_widget_add_css_class(widget, name);
    else
        gtk_widget_remove_css_class(widget, name);
}

} // namespace

void setTextColor(GtkWidget* widget, Color color)
{
    setClass(widget, "dim-label", color == Color::SecondaryLabel);
    setClass(widget, "system-red", color == Color::SystemRed);
    setClass(widget, "link", color == Color::Link);
}

} // namespace appkit
