#pragma once

#include "platform/linux/desktop/PixelGeometry.h"

#include <gdk/gdk.h>

namespace desktop {

struct X11Pointer {
    PixelPoint place;
    bool isButtonDown = false;
};

/// The pointer as it is now, anywhere on the X11 screen. A round trip.
[[nodiscard]] X11Pointer queryPointer(GdkDisplay* display);

/// Whether the server sees the pointer everywhere: inside a Wayland desktop it does so only over its own windows.
[[nodiscard]] bool seesPointerEverywhere(GdkDisplay* display);

} // namespace desktop
