#include "platform/linux/popover/PressWatch.h"

#include "platform/linux/desktop/X11Pointer.h"
#include "platform/linux/desktop/X11Property.h"

#include <gdk/x11/gdkx.h>

#include <X11/Xatom.h>
#include <X11/extensions/XInput2.h>

#include <array>

namespace desktop {
namespace {

constexpr int firstScrollButton = 4;
constexpr int lastScrollButton = 7;

bool isScroll(int button)
{
    return button >= firstScrollButton && button <= lastScrollButton;
}

bool isDock(GdkDisplay* display, ::Window window)
{
    const X11Property type(display, window, "_NET_WM_WINDOW_TYPE", XA_ATOM, 1);
    return type.values() && *type.values() == x11Atom(display, "_NET_WM_WINDOW_TYPE_DOCK");
}

/// Window managers leave menus and tips alone; those of panels that they also leave alone say what they are.
bool isMenu(GdkDisplay* display, ::Window window)
{
    XWindowAttributes attributes {};
    return XGetWindowAttributes(gdk_x11_display_get_xdisplay(display), window, &attributes)
        && attributes.override_redirect && !isDock(display, window);
}

PressWatch::Press pressAtPointer(GdkDisplay* display)
{
    const auto pointer = queryPointer(display);
    PressWatch::Press press { .point = pointer.place };
    if (!pointer.window)
        return press;
    if (isMenu(display, pointer.window))
        press.under = PressWatch::Under::ForeignMenu;
    // Window managers put a window into a frame of theirs.
    for (auto window = pointer.window; window; window = queryPointer(display, window).window) {
        press.surface = gdk_x11_surface_lookup_for_display(display, window);
        if (!press.surface)
            continue;
        press.under = PressWatch::Under::OurWindow;
        break;
    }
    return press;
}

} // namespace

PressWatch::PressWatch(GdkDisplay* display, Handler handler)
    : display_(display)
    , handler_(std::move(handler))
{
    int firstEvent = 0;
    int firstError = 0;
    auto* xdisplay = gdk_x11_display_get_xdisplay(display_);
    if (!XQueryExtension(xdisplay, "XInputExtension", &inputExtension_, &firstEvent, &firstError))
        return;
    events_ = connect<gboolean(gpointer)>(display_, "xevent", [this](gpointer event) -> gboolean {
        if (const auto press = pressIn(event)) {
            // A copy, because the handler may end this watch.
            const auto tell = handler_;
            tell(*press);
        }
        return GDK_EVENT_PROPAGATE;
    });
    select(true);
}

PressWatch::~PressWatch()
{
    if (inputExtension_)
        select(false);
}

std::optional<PressWatch::Press> PressWatch::pressIn(void* event)
{
    const auto& cookie = static_cast<XEvent*>(event)->xcookie;
    // GDK has fetched the data already; without it there is no telling a click from a turn of the wheel.
    if (cookie.type != GenericEvent || cookie.extension != inputExtension_ || !cookie.data)
        return std::nullopt;
    if (cookie.evtype == XI_Enter)
        entered_ = static_cast<const XIEnterEvent*>(cookie.data)->event;
    else if (cookie.evtype == XI_Leave)
        entered_ = 0;
    if (cookie.evtype != XI_RawButtonPress || isScroll(static_cast<const XIRawEvent*>(cookie.data)->detail))
        return std::nullopt;
    // Windows of others may vanish while they are asked about.
    gdk_x11_display_error_trap_push(display_);
    auto press = pressAtPointer(display_);
    gdk_x11_display_error_trap_pop_ignored(display_);
    // By now the pointer may have been dragged off the window that it was pressed on.
    if (auto* surface = entered_ ? gdk_x11_surface_lookup_for_display(display_, entered_) : nullptr) {
        press.under = Under::OurWindow;
        press.surface = surface;
    }
    return press;
}

void PressWatch::select(bool isSelected)
{
    std::array<unsigned char, XIMaskLen(XI_LASTEVENT)> bits {};
    if (isSelected)
        XISetMask(bits.data(), XI_RawButtonPress);
    XIEventMask mask { XIAllMasterDevices, static_cast<int>(bits.size()), bits.data() };
    auto* xdisplay = gdk_x11_display_get_xdisplay(display_);
    XISelectEvents(xdisplay, gdk_x11_display_get_xrootwindow(display_), &mask, 1);
    XFlush(xdisplay);
}

} // namespace desktop
