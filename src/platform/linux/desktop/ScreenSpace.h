#pragma once

#include "platform/foundation/Geometry.h"
#include "platform/linux/desktop/PixelGeometry.h"

#include <algorithm>
#include <cmath>

namespace desktop {

/// Places on the screen as the application counts them, in points upwards from the lower left of the main monitor,
/// and as the X server does.
struct ScreenSpace {
    PixelRect mainMonitor;
    int scale = 1;

    [[nodiscard]] foundation::Point pointAt(PixelPoint pixel) const
    {
        return { static_cast<double>(pixel.x - mainMonitor.x) / scale,
            static_cast<double>(mainMonitor.bottom() - pixel.y) / scale };
    }

    [[nodiscard]] foundation::Rect rectFrom(const PixelRect& pixels) const
    {
        return { pointAt({ pixels.x, pixels.bottom() }),
            { static_cast<double>(pixels.width) / scale, static_cast<double>(pixels.height) / scale } };
    }

    [[nodiscard]] PixelRect pixelsFrom(const foundation::Rect& rect) const
    {
        const auto height = wholePixels(rect.size.height * scale);
        return { mainMonitor.x + pixels(rect.origin.x), mainMonitor.bottom() - pixels(rect.origin.y) - height,
            wholePixels(rect.size.width * scale), height };
    }

private:
    [[nodiscard]] int pixels(double points) const { return static_cast<int>(std::lround(points * scale)); }
};

/// The part of the work area that a window's content gets which would rather have another: all of it inside, with room
/// for a title bar above and a border elsewhere.
[[nodiscard]] inline PixelRect constrainedContent(PixelRect wanted, const PixelRect& workArea, int titleBar, int border)
{
    const PixelRect room { workArea.x + border, workArea.y + titleBar, workArea.width - 2 * border,
        workArea.height - titleBar - border };
    const auto fit = [](int& start, int& length, int roomStart, int roomLength) {
        length = std::max(1, std::min(length, roomLength));
        start = std::clamp(start, roomStart, std::max(roomStart, roomStart + roomLength - length));
    };
    fit(wanted.x, wanted.width, room.x, room.width);
    fit(wanted.y, wanted.height, room.y, room.height);
    return wanted;
}

} // namespace desktop
