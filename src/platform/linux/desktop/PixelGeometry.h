#pragma once

#include <algorithm>
#include <cmath>

/// Places on the X11 screen: device pixels, y downwards.
namespace desktop {

struct PixelPoint {
    int x = 0;
    int y = 0;
    bool operator==(const PixelPoint&) const = default;
};

struct PixelSize {
    int width = 0;
    int height = 0;
    bool operator==(const PixelSize&) const = default;
};

struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PixelRect&) const = default;

    [[nodiscard]] int right() const { return x + width; }
    [[nodiscard]] int bottom() const { return y + height; }
    [[nodiscard]] bool contains(PixelPoint point) const
    {
        return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
    }
};

/// The length as a box may have it: at least one pixel, and never so many that reckoning with them overflows.
[[nodiscard]] inline int wholePixels(double length)
{
    // X11 counts in 16 bits.
    constexpr auto longest = 32767.0;
    return length >= 1 ? static_cast<int>(std::lround(std::min(length, longest))) : 1; // 1 also for what is no number
}

} // namespace desktop
