#include "support/linux/ScreenPointer.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/X11Pointer.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/MainLoop.h"

#include <cstdlib>
#include <string>

namespace perchly::test {
namespace {

void run(const std::string& command)
{
    auto status = 0;
    if (!g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, &status, nullptr) || status != 0)
        std::abort();
}

desktop::PixelPoint place()
{
    return desktop::queryPointer(gdk_display_get_default()).place;
}

} // namespace

ScreenPointer::~ScreenPointer()
{
    release();
}

bool ScreenPointer::moveTo(desktop::PixelPoint place)
{
    run("xdotool mousemove " + std::to_string(place.x) + " " + std::to_string(place.y));
    return waitUntil([place] { return test::place() == place; });
}

bool ScreenPointer::moveBy(int x, int y)
{
    const auto from = place();
    return moveTo({ from.x + x, from.y + y });
}

void ScreenPointer::press()
{
    run("xdotool mousedown 1");
    isDown_ = true;
}

void ScreenPointer::release()
{
    if (std::exchange(isDown_, false))
        run("xdotool mouseup 1");
}

desktop::PixelPoint middleOf(const appkit::View& view)
{
    auto* widget = appkit::widgetOf(view);
    auto* root = GTK_WIDGET(gtk_widget_get_root(widget));
    graphene_rect_t bounds;
    if (!gtk_widget_compute_bounds(widget, root, &bounds))
        std::abort();
    const auto window = desktop::X11Window(root).position();
    return { window.x + static_cast<int>(bounds.origin.x + bounds.size.width / 2),
        window.y + static_cast<int>(bounds.origin.y + bounds.size.height / 2) };
}

} // namespace perchly::test
