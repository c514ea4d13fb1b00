// One window with one web view, on GTK and WebKitGTK alone: bare_browser ADDRESS
#include <webkit/webkit.h>

#include <cstdio>
#include <filesystem>

namespace {

bool hasRenderNode()
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", ignored)) {
        if (entry.path().filename().string().starts_with("renderD"))
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: bare_browser ADDRESS\n", stderr);
        return 2;
    }
    // The same drawing as Perchly's, and its backend.
    const auto isSoftwareDrawn = !hasRenderNode();
    if (isSoftwareDrawn) {
        g_setenv("GSK_RENDERER", "cairo", FALSE);
        g_setenv("GDK_DEBUG", "gl-disable", FALSE);
        g_setenv("WEBKIT_DISABLE_COMPOSITING_MODE", "1", FALSE);
    }
    gdk_set_allowed_backends("x11,wayland,*");
    gtk_init();

    auto* data = g_build_filename(g_get_user_data_dir(), "bare_browser", nullptr);
    auto* cache = g_build_filename(g_get_user_cache_dir(), "bare_browser", nullptr);
    auto* session = webkit_network_session_new(data, cache);
    auto* settings = webkit_settings_new();
    if (isSoftwareDrawn)
        webkit_settings_set_hardware_acceleration_policy(settings, WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    auto* view = static_cast<WebKitWebView*>(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session, "settings", settings, nullptr));
    auto* window = gtk_window_new();
    gtk_window_set_default_size(GTK_WINDOW(window), 600, 700);
    gtk_window_set_child(GTK_WINDOW(window), GTK_WIDGET(view));
    webkit_web_view_load_uri(view, argv[1]);
    gtk_window_present(GTK_WINDOW(window));
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
