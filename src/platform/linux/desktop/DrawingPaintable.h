#pragma once

#include "platform/linux/desktop/GObject.h"

#include <gtk/gtk.h>

#include <filesystem>

namespace desktop {

/// A drawing that is drawn for the size at which it is shown, so that it is crisp at each. Its own size is `size`, in
/// logical pixels, of which each has `scale` device pixels along a side. A drawing that cannot be read paints nothing.
[[nodiscard]] ObjectPointer<GdkPaintable> makeDrawingPaintable(
    const std::filesystem::path& drawing, int size, int scale);

} // namespace desktop
