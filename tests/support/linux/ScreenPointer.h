#pragma once

#include "platform/appkit/View.h"
#include "platform/linux/desktop/PixelGeometry.h"

namespace perchly::test {

/// The pointer of the X11 screen, as the user's hand has it. It comes to rest, with no button down, when this goes.
class ScreenPointer {
public:
    ScreenPointer() = default;
    ~ScreenPointer();
    ScreenPointer(const ScreenPointer&) = delete;
    ScreenPointer& operator=(const ScreenPointer&) = delete;

    /// Returns when the pointer is there; false when it does not get there.
    [[nodiscard]] bool moveTo(desktop::PixelPoint place);
    [[nodiscard]] bool moveBy(int x, int y);
    void press();
    void release();

private:
    bool isDown_ = false;
};

/// Where the middle of a view on the screen is.
[[nodiscard]] desktop::PixelPoint middleOf(const appkit::View& view);

} // namespace perchly::test
