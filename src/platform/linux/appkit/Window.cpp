#include "platform/appkit/Window.h"

#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/popover/X11Window.h"

namespace appkit {
namespace {

constexpr auto windowKey = "perchly-window";

using Holder = std::shared_ptr<Window>;

void deleteHolder(gpointer holder)
{
    // The GtkWindow goes; whoever still has the Window must not reach it.
    (*static_cast<Holder*>(holder))->native().window = nullptr;
    delete static_cast<Holder*>(holder);
}

} // namespace

Window::Window(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Window::~Window() = default;

void Window::makeKeyWindow()
{
    auto* window = native_->window;
    if (!window || !gtk_widget_get_visible(GTK_WIDGET(window)))
        return;
    // The click that led here went to a panel, so GTK knows no recent enough time of its own.
    if (desktop::isX11())
        gtk_window_present_with_time(window, desktop::X11Window(GTK_WIDGET(window)).takeUserTime());
    else
        gtk_window_present(window);
}

bool Window::isKeyWindow() const
{
    return native_->window && gtk_window_is_active(native_->window);
}

std::shared_ptr<Window> windowOf(GtkWidget* widget)
{
    auto* root = gtk_widget_get_root(widget);
    auto* holder = root ? static_cast<Holder*>(g_object_get_data(G_OBJECT(root), windowKey)) : nullptr;
    return holder ? *holder : nullptr;
}

std::shared_ptr<Window> attachWindow(GtkWindow* window)
{
    if (auto attached = windowOf(GTK_WIDGET(window)))
        return attached;
    auto wrapped = std::make_shared<Window>(std::make_unique<Window::Native>(Window::Native { window }));
    g_object_set_data_full(G_OBJECT(window), windowKey, new Holder(wrapped), deleteHolder);
    return wrapped;
}

} // namespace appkit
