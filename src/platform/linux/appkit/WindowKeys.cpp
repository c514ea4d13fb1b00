#include "platform/linux/appkit/WindowKeys.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/appkit/MenuKeys.h"
#include "platform/linux/desktop/GObject.h"

namespace appkit {
namespace {

bool isPressed(GdkEvent* event, const MenuKey& key)
{
    const auto modifiers = static_cast<GdkModifierType>(GDK_CONTROL_MASK | (key.needsShift ? GDK_SHIFT_MASK : 0));
    // The event knows the keyboard: with another alphabet, the Latin letter of the same key counts.
    return gdk_key_event_matches(event, gdk_unicode_to_keyval(key.character), modifiers) != GDK_KEY_MATCH_NONE;
}

} // namespace

void connectMenuKeys(GtkWindow* window)
{
    auto* keys = gtk_event_controller_key_new();
    const auto choose = [keys](guint, guint, GdkModifierType) -> gboolean {
        auto* event = gtk_event_controller_get_current_event(keys);
        const auto item = itemForKey([event](const MenuKey& key) { return isPressed(event, key); });
        // Later, because the item may end the window.
        if (item)
            foundation::dispatchMainAsync([item] { item->performAction(); });
        return item != nullptr;
    };
    desktop::connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed", choose).keep();
    gtk_widget_add_controller(GTK_WIDGET(window), keys);
}

void connectCloseKey(GtkWindow* window)
{
    const auto close = +[](GtkWidget* widget, GVariant*, gpointer) -> gboolean {
        // Later, because the key is still on its way through the window.
        foundation::dispatchMainAsync(
            [kept = std::shared_ptr<GtkWidget>(desktop::retain(widget))] { gtk_window_close(GTK_WINDOW(kept.get())); });
        return GDK_EVENT_STOP;
    };
    auto* controller = gtk_shortcut_controller_new();
    gtk_shortcut_controller_add_shortcut(GTK_SHORTCUT_CONTROLLER(controller),
        gtk_shortcut_new(
            gtk_keyval_trigger_new(GDK_KEY_w, GDK_CONTROL_MASK), gtk_callback_action_new(close, nullptr, nullptr)));
    gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_BUBBLE);
    gtk_widget_add_controller(GTK_WIDGET(window), controller);
}

} // namespace appkit
