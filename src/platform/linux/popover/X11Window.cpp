#include "platform/linux/popover/X11Window.h"

#include <gdk/x11/gdkx.h>

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <iterator>

namespace desktop {
namespace {

constexpr long stateAdd = 1;
constexpr long fromApplication = 1;

::Atom atom(GdkDisplay* display, const char* name)
{
    return gdk_x11_get_xatom_by_name_for_display(display, name);
}

void sendToWindowManager(GdkDisplay* display, ::Window window, const char* type, const long (&data)[4])
{
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = atom(display, type);
    event.xclient.format = 32;
    for (auto index = 0U; index < std::size(data); ++index)
        event.xclient.data.l[index] = data[index];
    XSendEvent(gdk_x11_display_get_xdisplay(display), gdk_x11_display_get_xrootwindow(display), False,
        SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

} // namespace

X11Window::X11Window(GtkWidget* toplevel)
    : surface_(gtk_native_get_surface(GTK_NATIVE(toplevel)))
    , id_(gdk_x11_surface_get_xid(surface_))
{
}

void X11Window::setAuxiliary()
{
    const auto type = atom(display(), "_NET_WM_WINDOW_TYPE_DIALOG");
    XChangeProperty(gdk_x11_display_get_xdisplay(display()), id_, atom(display(), "_NET_WM_WINDOW_TYPE"), XA_ATOM, 32,
        PropModeReplace, reinterpret_cast<const unsigned char*>(&type), 1);
    gdk_x11_surface_set_skip_taskbar_hint(surface_, TRUE);
    gdk_x11_surface_set_skip_pager_hint(surface_, TRUE);
}

void X11Window::place(const PixelRect& frame)
{
    XSizeHints hints {};
    hints.flags = USPosition | PPosition | PMinSize | PMaxSize | PWinGravity;
    hints.x = frame.x;
    hints.y = frame.y;
    hints.min_width = hints.max_width = frame.width;
    hints.min_height = hints.max_height = frame.height;
    hints.win_gravity = StaticGravity;
    auto* xdisplay = gdk_x11_display_get_xdisplay(display());
    XSetWMNormalHints(xdisplay, id_, &hints);
    XMoveResizeWindow(
        xdisplay, id_, frame.x, frame.y, static_cast<unsigned>(frame.width), static_cast<unsigned>(frame.height));
}

PixelPoint X11Window::position() const
{
    PixelPoint position;
    ::Window child = 0;
    XTranslateCoordinates(gdk_x11_display_get_xdisplay(display()), id_, gdk_x11_display_get_xrootwindow(display()), 0,
        0, &position.x, &position.y, &child);
    return position;
}

void X11Window::keepAbove()
{
    const auto above = static_cast<long>(atom(display(), "_NET_WM_STATE_ABOVE"));
    sendToWindowManager(display(), id_, "_NET_WM_STATE", { stateAdd, above, 0, fromApplication });
}

std::uint32_t X11Window::takeUserTime()
{
    const auto time = gdk_x11_get_server_time(surface_);
    gdk_x11_surface_set_user_time(surface_, time);
    return time;
}

bool X11Window::isActiveWindow() const
{
    ::Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(gdk_x11_display_get_xdisplay(display()), gdk_x11_display_get_xrootwindow(display()),
        atom(display(), "_NET_ACTIVE_WINDOW"), 0, 1, False, XA_WINDOW, &type, &format, &count, &left, &data);
    const auto isOurs = format == 32 && count == 1 && *reinterpret_cast<::Window*>(data) == id_;
    if (data)
        XFree(data);
    return isOurs;
}

bool isPointerButtonDown(GdkDisplay* display)
{
    ::Window root = 0;
    ::Window child = 0;
    PixelPoint onRoot;
    PixelPoint inWindow;
    unsigned mask = 0;
    XQueryPointer(gdk_x11_display_get_xdisplay(display), gdk_x11_display_get_xrootwindow(display), &root, &child,
        &onRoot.x, &onRoot.y, &inWindow.x, &inWindow.y, &mask);
    return (mask & (Button1Mask | Button2Mask | Button3Mask)) != 0;
}

} // namespace desktop
