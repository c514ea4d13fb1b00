#include "platform/linux/appkit/WindowKeys.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/appkit/MenuKeys.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Shortcut.h"

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
    const auto close = [window] {
        // Later, because the key is still on its way through the window.
        foundation::dispatchMainAsync(
            [kept = std::shared_ptr<GtkWindow>(desktop::retain(window))] { gtk_window_close(kept.get()); });
        return true;
    };
    desktop::addShortcut(GTK_WIDGET(window), { GDK_KEY_w, GDK_CONTROL_MASK, GTK_SHORTCUT_SCOPE_LOCAL }, close);
}

} // namespace appkit
