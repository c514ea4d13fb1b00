#include "ScreenProbe.h"

#include "Waiting.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace bench {

ScreenProbe::ScreenProbe()
    : display_(XOpenDisplay(nullptr))
{
    if (!display_)
        giveUp("there is no display");
}

ScreenProbe::~ScreenProbe()
{
    XCloseDisplay(display_);
}

bool ScreenProbe::shows(std::uint32_t colour) const
{
    constexpr auto enough = 300;
    const auto screen = DefaultScreen(display_);
    const auto width = DisplayWidth(display_, screen);
    auto* line = XGetImage(display_, DefaultRootWindow(display_), 0, DisplayHeight(display_, screen) / 2,
        static_cast<unsigned>(width), 1, AllPlanes, ZPixmap);
    if (!line)
        return false;
    auto count = 0;
    for (auto x = 0; x < width; ++x)
        count += (XGetPixel(line, x, 0) & 0xffffff) == colour ? 1 : 0;
    XDestroyImage(line);
    return count >= enough;
}

} // namespace bench
