// What the bare browsers have in common, on GTK and WebKitGTK alone.
#pragma once

#include "BareToolkit.h"

#include <webkit/webkit.h>

namespace bare {

/// The same as startToolkit, for the engine.
inline void startEngine()
{
    if (isSoftwareDrawn())
        g_setenv("WEBKIT_DISABLE_COMPOSITING_MODE", "1", FALSE);
    startToolkit();
}

inline WebKitNetworkSession* makeSession()
{
    auto* data = g_build_filename(g_get_user_data_dir(), g_get_prgname(), nullptr);
    auto* cache = g_build_filename(g_get_user_cache_dir(), g_get_prgname(), nullptr);
    return webkit_network_session_new(data, cache);
}

/// A view that is loading the page.
inline GtkWidget* makeView(WebKitNetworkSession* session, const char* address)
{
    auto* settings = webkit_settings_new();
    if (isSoftwareDrawn())
        webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    auto* view
        = GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session, "settings", settings, nullptr));
    webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), address);
    return view;
}

inline GtkWindow* makeWindow(GtkWidget* content)
{
    auto* window = GTK_WINDOW(gtk_window_new());
    gtk_window_set_default_size(window, 600, 700);
    gtk_window_set_child(window, content);
    return window;
}

} // namespace bare
