#include "platform/linux/desktop/Shortcut.h"

namespace desktop {

void addShortcut(GtkWidget* widget, const Shortcut& shortcut, std::function<bool()> perform)
{
    using Perform = std::function<bool()>;
    const auto call = +[](GtkWidget*, GVariant*, gpointer data) -> gboolean {
        // A copy, because it may end the widget.
        const auto handler = *static_cast<const Perform*>(data);
        return handler();
    };
    const auto destroy = +[](gpointer data) { delete static_cast<Perform*>(data); };
    auto* action = gtk_callback_action_new(call, new Perform(std::move(perform)), destroy);
    auto* controller = gtk_shortcut_controller_new();
    gtk_shortcut_controller_add_shortcut(GTK_SHORTCUT_CONTROLLER(controller),
        gtk_shortcut_new(gtk_keyval_trigger_new(shortcut.key, shortcut.modifiers), action));
    gtk_shortcut_controller_set_scope(GTK_SHORTCUT_CONTROLLER(controller), shortcut.scope);
    gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_BUBBLE);
    gtk_widget_add_controller(widget, controller);
}

} // namespace desktop
