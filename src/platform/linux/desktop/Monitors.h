#pragma once

#include "platform/linux/desktop/MonitorArea.h"
#include "platform/linux/desktop/ScreenSpace.h"

#include <gtk/gtk.h>

#include <vector>

namespace desktop {

/// The monitors of the display: on X11 in device pixels, the primary one first; elsewhere in the toolkit's pixels, and
/// without what panels take.
[[nodiscard]] std::vector<MonitorArea> monitorAreas(GdkDisplay* display);

/// The X11 screen's, with the primary monitor as the main one.
[[nodiscard]] ScreenSpace screenSpace(GdkDisplay* display);

} // namespace desktop
