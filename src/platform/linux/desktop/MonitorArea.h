#pragma once

#include "platform/linux/desktop/PixelGeometry.h"

namespace desktop {

struct MonitorArea {
    PixelRect bounds;
    /// What the panels leave of it.
    PixelRect workArea;
};

} // namespace desktop
