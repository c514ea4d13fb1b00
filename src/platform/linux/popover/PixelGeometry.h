#pragma once

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

} // namespace desktop
