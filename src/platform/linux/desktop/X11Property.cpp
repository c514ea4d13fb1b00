#include "platform/linux/desktop/X11Property.h"

#include <gdk/x11/gdkx.h>

namespace desktop {

unsigned long x11Atom(GdkDisplay* display, const char* name)
{
    return gdk_x11_get_xatom_by_name_for_display(display, name);
}

X11Property::X11Property(
    GdkDisplay* display, unsigned long window, const char* name, unsigned long type, unsigned long count)
{
    ::Atom foundType = 0;
    int format = 0;
    unsigned long found = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(gdk_x11_display_get_xdisplay(display), window, x11Atom(display, name), 0,
        static_cast<long>(count), False, type, &foundType, &format, &found, &left, &data);
    data_.reset(data);
    isComplete_ = format == 32 && found == count;
}

void X11Property::Free::operator()(void* data) const
{
    XFree(data);
}

} // namespace desktop
