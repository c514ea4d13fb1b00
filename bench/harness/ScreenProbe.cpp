#include "ScreenProbe.h"

#include "Waiting.h"

#include <glib-unix.h>

#include <X11/Xutil.h>
#include <X11/extensions/Xdamage.h>

#include <algorithm>
#include <utility>

namespace bench {

ScreenProbe::ScreenProbe()
    : ScreenProbe(ScreenArea {})
{
    const auto screen = DefaultScreen(display_);
    area_ = { 0, DisplayHeight(display_, screen) / 2, DisplayWidth(display_, screen), 1 };
}

ScreenProbe::ScreenProbe(const ScreenArea& area)
    : display_(XOpenDisplay(nullptr))
    , area_(area)
{
    if (!display_)
        giveUp("there is no display");
    auto ignored = 0;
    if (!XDamageQueryExtension(display_, &firstEvent_, &ignored))
        giveUp("the display does not tell of its changes");
    damage_ = XDamageCreate(display_, DefaultRootWindow(display_), XDamageReportNonEmpty);
    XFlush(display_);
    constexpr auto wake = +[](int, GIOCondition, gpointer self) -> gboolean {
        auto& probe = *static_cast<ScreenProbe*>(self);
        probe.noteDamage();
        if (probe.isWatching_)
            probe.look();
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

void ScreenProbe::readArea()
{
    // First: what is painted from here on is told again.
    XDamageSubtract(display_, damage_, None, None);
    const auto& [x, y, width, height] = area_;
    auto* image = XGetImage(display_, DefaultRootWindow(display_), x, y, static_cast<unsigned>(width),
        static_cast<unsigned>(height), AllPlanes, ZPixmap);
    pixels_.clear();
    if (!image)
        return;
    for (auto row = 0; row < height; ++row) {
        for (auto column = 0; column < width; ++column)
            pixels_.push_back(static_cast<std::uint32_t>(XGetPixel(image, column, row) & 0xffffff));
    }
    XDestroyImage(image);
}

void ScreenProbe::look()
{
    noteDamage();
    while (std::exchange(isStale_, false)) {
        const auto before = pixels_;
        readArea();
        if (pixels_ != before)
            lastChange_ = Clock::now();
        noteDamage(); // what came along with the picture wakes nobody
    }
}

bool ScreenProbe::shows(std::uint32_t colour)
{
    constexpr auto enough = 300;
    look();
    return std::count(pixels_.begin(), pixels_.end(), colour) >= enough;
}

void ScreenProbe::watch()
{
    isWatching_ = true;
    look();
    lastChange_.reset();
}

} // namespace bench
