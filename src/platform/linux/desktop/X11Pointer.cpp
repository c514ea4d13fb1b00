#include "platform/linux/desktop/X11Pointer.h"

#include <gdk/x11/gdkx.h>

namespace desktop {

X11Pointer queryPointer(GdkDisplay* display)
{
    return queryPointer(display, gdk_x11_display_get_xrootwindow(display));
}

X11Pointer queryPointer(GdkDisplay* display, unsigned long inside)
{
    X11Pointer pointer;
    ::Window root = 0;
    PixelPoint inWindow;
    unsigned mask = 0;
    XQueryPointer(gdk_x11_display_get_xdisplay(display), inside, &root, &pointer.window, &pointer.place.x,
        &pointer.place.y, &inWindow.x, &inWindow.y, &mask);
    pointer.isButtonDown = (mask & (Button1Mask | Button2Mask | Button3Mask)) != 0;
    return pointer;
}

bool seesPointerEverywhere(GdkDisplay* display)
{
    int opcode = 0;
    int firstEvent = 0;
    int firstError = 0;
    static const auto isInsideWayland
        = XQueryExtension(gdk_x11_display_get_xdisplay(display), "XWAYLAND", &opcode, &firstEvent, &firstError);
    return !isInsideWayland;
}

} // namespace desktop
