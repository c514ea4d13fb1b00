#pragma once

#include "platform/linux/popover/PopoverPlacement.h"

#include <gtk/gtk.h>

namespace desktop {

/// The monitors of the display: on X11 in device pixels, the primary one first; elsewhere in the toolkit's pixels, and
/// without what panels take.
[[nodiscard]] std::vector<MonitorArea> monitorAreas(GdkDisplay* display);

} // namespace desktop
