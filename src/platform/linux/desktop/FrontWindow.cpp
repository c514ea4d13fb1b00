#include "platform/linux/desktop/FrontWindow.h"

namespace desktop {

GtkWindow* frontWindow()
{
    GtkWindow* visible = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        auto* window = GTK_WINDOW(link->data);
        if (gtk_window_is_active(window) || (!visible && gtk_widget_get_mapped(GTK_WIDGET(window))))
            visible = window;
    }
    g_list_free(windows);
    return visible;
}

GtkWindow* makeWindow()
{
    return GTK_WINDOW(g_object_new(GTK_TYPE_WINDOW, "accessible-role", GTK_ACCESSIBLE_ROLE_WINDOW, nullptr));
}

} // namespace desktop
