#include "platform/appkit/Window.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/appkit/MenuKeys.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/GObject.h"
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

bool isPressed(GdkEvent* event, const MenuKey& key)
{
    const auto modifiers = static_cast<GdkModifierType>(GDK_CONTROL_MASK | (key.needsShift ? GDK_SHIFT_MASK : 0));
    // The event knows the keyboard: with another alphabet, the Latin letter of the same key counts.
    return gdk_key_event_matches(event, gdk_unicode_to_keyval(key.character), modifiers) != GDK_KEY_MATCH_NONE;
}

/// The keys of the menus choose their items where nothing inside the window wanted the key: later, because the item may
/// end the window.
void connectMenuKeys(GtkWindow* window)
{
    auto* keys = gtk_event_controller_key_new();
    const auto choose = [keys](guint, guint, GdkModifierType) -> gboolean {
        auto* event = gtk_event_controller_get_current_event(keys);
        const auto item = itemForKey([event](const MenuKey& key) { return isPressed(event, key); });
        if (item)
            foundation::dispatchMainAsync([item] { item->performAction(); });
        return item != nullptr;
    };
    desktop::connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed", choose).keep();
    gtk_widget_add_controller(GTK_WIDGET(window), keys);
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
    connectMenuKeys(window);
    return wrapped;
}

} // namespace appkit
