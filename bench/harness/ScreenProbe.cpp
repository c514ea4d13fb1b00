#include "ScreenProbe.h"

#include "Waiting.h"

#include <glib-unix.h>

#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>

#include <algorithm>
#include <utility>

namespace bench {

ScreenProbe::ScreenProbe()
    : display_(XOpenDisplay(nullptr))
{
    if (!display_)
        giveUp("there is no display");
    auto ignored = 0;
    if (!XDamageQueryExtension(display_, &firstEvent_, &ignored))
        giveUp("the display does not tell of its changes");
    damage_ = XDamageCreate(display_, DefaultRootWindow(display_), XDamageReportNonEmpty);
    XFlush(display_);
    constexpr auto wake = +[](int, GIOCondition, gpointer self) -> gboolean {
        static_cast<ScreenProbe*>(self)->noteDamage();
        return G_SOURCE_CONTINUE;
    };
    source_ = g_unix_fd_add(ConnectionNumber(display_), G_IO_IN, wake, this);
}

ScreenProbe::~ScreenProbe()
{
    g_source_remove(source_);
    XCloseDisplay(display_);
}

void ScreenProbe::noteDamage()
{
    while (XPending(display_) > 0) {
        XEvent event {};
        XNextEvent(display_, &event);
        isStale_ = isStale_ || event.type == firstEvent_ + XDamageNotify;
    }
}

void ScreenProbe::readLine()
{
    // First: what is painted from here on is told again.
    XDamageSubtract(display_, damage_, None, None);
    const auto screen = DefaultScreen(display_);
    const auto width = DisplayWidth(display_, screen);
    auto* image = XGetImage(display_, DefaultRootWindow(display_), 0, DisplayHeight(display_, screen) / 2,
        static_cast<unsigned>(width), 1, AllPlanes, ZPixmap);
    line_.clear();
    if (!image)
        return;
    for (auto x = 0; x < width; ++x)
        line_.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, 0) & 0xffffff));
    XDestroyImage(image);
}

bool ScreenProbe::shows(std::uint32_t colour)
{
    constexpr auto enough = 300;
    noteDamage();
    while (std::exchange(isStale_, false)) {
        readLine();
        noteDamage(); // what came along with the picture wakes nobody
    }
    return std::count(line_.begin(), line_.end(), colour) >= enough;
}

} // namespace bench
