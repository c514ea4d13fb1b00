#pragma once

#include "platform/linux/desktop/PixelGeometry.h"

#include <gdk/gdk.h>

namespace desktop {

struct X11Pointer {
    /// On the screen.
    PixelPoint place;
    /// The window that it is over, directly inside the one asked about; 0 where there is none.
    unsigned long window = 0;
    bool isButtonDown = false;
};

/// The pointer as it is now, anywhere on the X11 screen. A round trip.
[[nodiscard]] X11Pointer queryPointer(GdkDisplay* display);
[[nodiscard]] X11Pointer queryPointer(GdkDisplay* display, unsigned long inside);

/// Whether the server sees the pointer everywhere: inside a Wayland desktop it does so only over its own windows.
[[nodiscard]] bool seesPointerEverywhere(GdkDisplay* display);

} // namespace desktop
