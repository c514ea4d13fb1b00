#include "platform/linux/desktop/X11Window.h"

#include "platform/linux/desktop/X11Property.h"

#include <gdk/x11/gdkx.h>

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <array>
#include <iterator>

namespace desktop {
namespace {

constexpr long stateRemove = 0;
constexpr long stateAdd = 1;
constexpr long fromApplication = 1;

void sendToWindowManager(GdkDisplay* display, ::Window window, const char* type, const long (&data)[4])
{
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = x11Atom(display, type);
    event.xclient.format = 32;
    for (auto index = 0U; index < std::size(data); ++index)
        event.xclient.data.l[index] = data[index];
    XSendEvent(gdk_x11_display_get_xdisplay(display), gdk_x11_display_get_xrootwindow(display), False,
        SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

/// Which place of a length does not move: 0 its start, 1 its middle, 2 its end.
std::size_t steadyPlace(int start, int end, int newStart, int newEnd)
{
    if (start == newStart)
        return 0;
    return end == newEnd ? 2 : 1;
}

} // namespace

X11Window::X11Window(GtkWidget* toplevel)
    : surface_(gtk_native_get_surface(GTK_NATIVE(toplevel)))
    , id_(gdk_x11_surface_get_xid(surface_))
{
}

void X11Window::setAuxiliary()
{
    const auto type = x11Atom(display(), "_NET_WM_WINDOW_TYPE_DIALOG");
    XChangeProperty(gdk_x11_display_get_xdisplay(display()), id_, x11Atom(display(), "_NET_WM_WINDOW_TYPE"), XA_ATOM,
        32, PropModeReplace, reinterpret_cast<const unsigned char*>(&type), 1);
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

void X11Window::keepPicture(const PixelRect& before, const PixelRect& after)
{
    constexpr std::array gravities { NorthWestGravity, NorthGravity, NorthEastGravity, WestGravity, CenterGravity,
        EastGravity, SouthWestGravity, SouthGravity, SouthEastGravity };
    const auto column = steadyPlace(before.x, before.right(), after.x, after.right());
    const auto row = steadyPlace(before.y, before.bottom(), after.y, after.bottom());
    XSetWindowAttributes attributes {};
    attributes.bit_gravity = gravities.at(3 * row + column);
    XChangeWindowAttributes(gdk_x11_display_get_xdisplay(display()), id_, CWBitGravity, &attributes);
}

PixelPoint X11Window::position() const
{
    PixelPoint position;
    ::Window child = 0;
    XTranslateCoordinates(gdk_x11_display_get_xdisplay(display()), id_, gdk_x11_display_get_xrootwindow(display()), 0,
        0, &position.x, &position.y, &child);
    return position;
}

void X11Window::hintPosition(PixelPoint inside)
{
    XSizeHints hints {};
    hints.flags = USPosition | PPosition | PWinGravity;
    hints.x = inside.x;
    hints.y = inside.y;
    hints.win_gravity = StaticGravity;
    auto* xdisplay = gdk_x11_display_get_xdisplay(display());
    XSetWMNormalHints(xdisplay, id_, &hints);
    if (!gtk_widget_get_mapped(GTK_WIDGET(gtk_native_get_for_surface(surface_))))
        XMoveWindow(xdisplay, id_, inside.x, inside.y);
}

void X11Window::move(PixelPoint inside)
{
    constexpr long hasPosition = 3L << 8;
    constexpr long source = fromApplication << 12;
    // With the gravity in the message: that of the hints is the toolkit's and comes and goes.
    sendToWindowManager(
        display(), id_, "_NET_MOVERESIZE_WINDOW", { StaticGravity | hasPosition | source, inside.x, inside.y, 0 });
}

X11Window::Frame X11Window::frame() const
{
    const X11Property property(display(), id_, "_NET_FRAME_EXTENTS", XA_CARDINAL, 4);
    const auto* lengths = property.values();
    if (!lengths)
        return {};
    const auto length = [lengths](std::size_t index) { return static_cast<int>(lengths[index]); };
    return { .left = length(0), .right = length(1), .top = length(2), .bottom = length(3) };
}

void X11Window::setAbove(bool isAbove)
{
    const auto above = static_cast<long>(x11Atom(display(), "_NET_WM_STATE_ABOVE"));
    sendToWindowManager(
        display(), id_, "_NET_WM_STATE", { isAbove ? stateAdd : stateRemove, above, 0, fromApplication });
}

std::uint32_t X11Window::takeUserTime()
{
    const auto time = gdk_x11_get_server_time(surface_);
    gdk_x11_surface_set_user_time(surface_, time);
    return time;
}

bool X11Window::isActiveWindow() const
{
    const auto root = gdk_x11_display_get_xrootwindow(display());
    const X11Property property(display(), root, "_NET_ACTIVE_WINDOW", XA_WINDOW, 1);
    return property.values() && property.values()[0] == id_;
}

} // namespace desktop
