#include "platform/linux/desktop/Monitors.h"

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Toolkit.h"

#include <gdk/x11/gdkx.h>

namespace desktop {
namespace {

PixelRect scaled(const GdkRectangle& rect, int scale)
{
    return { rect.x * scale, rect.y * scale, rect.width * scale, rect.height * scale };
}

MonitorArea areaOf(GdkMonitor* monitor)
{
    GdkRectangle bounds;
    GdkRectangle workArea;
    gdk_monitor_get_geometry(monitor, &bounds);
    if (!isX11())
        return { scaled(bounds, 1), scaled(bounds, 1) };
    gdk_x11_monitor_get_workarea(monitor, &workArea);
    const auto scale = gdk_monitor_get_scale_factor(monitor);
    return { scaled(bounds, scale), scaled(workArea, scale) };
}

} // namespace

std::vector<MonitorArea> monitorAreas(GdkDisplay* display)
{
    std::vector<MonitorArea> areas;
    auto* primary = isX11() ? gdk_x11_display_get_primary_monitor(display) : nullptr;
    auto* monitors = gdk_display_get_monitors(display);
    for (guint index = 0; index < g_list_model_get_n_items(monitors); ++index) {
        const auto monitor = adopt(GDK_MONITOR(g_list_model_get_item(monitors, index)));
        areas.insert(monitor.get() == primary ? areas.begin() : areas.end(), areaOf(monitor.get()));
    }
    return areas;
}

ScreenSpace screenSpace(GdkDisplay* display)
{
    const auto areas = monitorAreas(display);
    const auto first = adopt(GDK_MONITOR(g_list_model_get_item(gdk_display_get_monitors(display), 0)));
    if (areas.empty())
        return {};
    return { areas.front().bounds, gdk_monitor_get_scale_factor(first.get()) };
}

} // namespace desktop
