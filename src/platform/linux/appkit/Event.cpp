#include "platform/appkit/Event.h"

#include "platform/linux/appkit/EventNative.h"
#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/X11Pointer.h"

namespace appkit {
namespace {

/// In its window, whose corner stands for the screen's.
foundation::Point& lastEventPlace()
{
    static foundation::Point place;
    return place;
}

} // namespace

foundation::Point Event::mouseLocation()
{
    desktop::loadToolkit();
    auto* display = gdk_display_get_default();
    if (!desktop::isX11())
        return lastEventPlace();
    return desktop::screenSpace(display).pointAt(desktop::queryPointer(display).place);
}

void rememberEventPlace(GtkGesture* gesture)
{
    auto* event = gtk_event_controller_get_current_event(GTK_EVENT_CONTROLLER(gesture));
    auto place = foundation::Point {};
    if (event && gdk_event_get_position(event, &place.x, &place.y))
        lastEventPlace() = { place.x, -place.y };
}

} // namespace appkit
