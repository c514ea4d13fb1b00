#pragma once

#include "platform/linux/desktop/GObject.h"

#include <gtk/gtk.h>

#include <filesystem>

namespace desktop {

/// A drawing whose coverage alone counts: it is painted in the colour of the widget that shows it, also in a dark
/// theme. (GTK recolours only what its icon theme has found, and searching that costs a start-up dearly.)
/// `size` is in logical pixels, of which each has `scale` device pixels along a side. Those of late are kept in memory.
[[nodiscard]] ObjectPointer<GdkPaintable> makeSymbolPaintable(
    const std::filesystem::path& drawing, int size, int scale);

} // namespace desktop
