#pragma once

#include <gtk/gtk.h>

#include <string_view>

namespace perchly::test {

/// A window of this program by its title, the latest of several; null for none.
[[nodiscard]] inline GtkWindow* toplevelTitled(std::string_view title, bool isOnScreen = false)
{
    GtkWindow* found = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        const auto* own = gtk_window_get_title(GTK_WINDOW(link->data));
        if (own && own == title && (!isOnScreen || gtk_widget_get_mapped(GTK_WIDGET(link->data))))
            found = GTK_WINDOW(link->data);
    }
    g_list_free(windows);
    return found;
}

} // namespace perchly::test
