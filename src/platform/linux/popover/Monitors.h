#pragma once

#include "platform/linux/popover/PopoverPlacement.h"

#include <gtk/gtk.h>

namespace desktop {

/// The monitors of an X11 display in device pixels, the primary one first.
[[nodiscard]] std::vector<MonitorArea> monitorAreas(GdkDisplay* display);

} // namespace desktop
