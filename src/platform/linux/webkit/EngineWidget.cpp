#include "platform/linux/webkit/EngineWidget.h"

#include "platform/linux/desktop/LateBinding.h"
#include "platform/linux/desktop/Shortcut.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/webkit/BlockedPorts.h"
#include "platform/linux/webkit/TabKey.h"
#include "platform/linux/webkit/WebsiteDataStoreNative.h"

#include <algorithm>
#include <array>

namespace webkit {
namespace {

struct FreeMemoryPressureSettings {
    void operator()(WebKitMemoryPressureSettings* settings) const { webkit_memory_pressure_settings_free(settings); }
};

using MemoryPressure = std::unique_ptr<WebKitMemoryPressureSettings, FreeMemoryPressureSettings>;

/// Caches are thrown away from a third of the limit on, and more of them from a half on. A process that reaches the
/// quadruple is ended before it takes the machine down with it.
MemoryPressure memoryPressureBelow(guint megabytes)
{
    MemoryPressure settings(webkit_memory_pressure_settings_new());
    webkit_memory_pressure_settings_set_memory_limit(settings.get(), megabytes);
    webkit_memory_pressure_settings_set_kill_threshold(settings.get(), 4);
    return settings;
}

/// One for all views, and never destroyed: at exit the engine takes its own globals down before ours.
WebKitWebContext* sharedContext()
{
    static auto* const context = [] {
        const auto memory = memoryPressureBelow(1024);
        return WEBKIT_WEB_CONTEXT(
            g_object_new(WEBKIT_TYPE_WEB_CONTEXT, "memory-pressure-settings", memory.get(), nullptr));
    }();
    return context;
}

/// Each view has its own: the user agent is among them.
desktop::ObjectPointer<WebKitSettings> makeSettings()
{
    auto settings = desktop::adopt(webkit_settings_new());
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
    webkit_settings_set_enable_fullscreen(settings.get(), FALSE);
    if (!desktop::hasRenderNode())
        webkit_settings_set_hardware_acceleration_policy(settings.get(), WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    return settings;
}

constexpr auto refusedMenuRows = std::to_array({
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_LINK_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_LINK_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_IMAGE_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_IMAGE_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_FRAME_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_VIDEO_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_OPEN_AUDIO_IN_NEW_WINDOW,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_VIDEO_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_DOWNLOAD_AUDIO_TO_DISK,
    WEBKIT_CONTEXT_MENU_ACTION_ENTER_VIDEO_FULLSCREEN,
});

bool isRefused(WebKitContextMenuItem* item)
{
    const auto action = webkit_context_menu_item_get_stock_action(item);
    return std::find(refusedMenuRows.begin(), refusedMenuRows.end(), action) != refusedMenuRows.end();
}

/// Takes the refused rows out, and the separators that have nothing above or below them any more.
void restrictMenu(WebKitContextMenu* menu)
{
    WebKitContextMenuItem* separator = nullptr;
    bool isFirst = true;
    for (guint row = 0; row < webkit_context_menu_get_n_items(menu);) {
        auto* item = webkit_context_menu_get_item_at_position(menu, row);
        const bool isSeparator = webkit_context_menu_item_is_separator(item);
        if (isRefused(item) || (isSeparator && (isFirst || separator))) {
            webkit_context_menu_remove(menu, item);
            continue;
        }
        separator = isSeparator ? item : nullptr;
        isFirst = false;
        ++row;
    }
    if (separator)
        webkit_context_menu_remove(menu, separator);
}

void addEditingKey(GtkWidget* page, guint key, GdkModifierType modifiers, const char* command)
{
    const auto execute = [page, command] {
        const bool isForPage = gtk_widget_has_focus(page);
        if (isForPage)
            webkit_web_view_execute_editing_command(WEBKIT_WEB_VIEW(page), command);
        return isForPage;
    };
    // Heard at the window: the engine passes a key on to it only after the page has left that key alone.
    desktop::addShortcut(page, { key, modifiers, GTK_SHORTCUT_SCOPE_MANAGED }, execute);
}

/// The editing shortcuts that the engine has no keys for.
void addEditingKeys(GtkWidget* page)
{
    constexpr auto withShift = static_cast<GdkModifierType>(GDK_CONTROL_MASK | GDK_SHIFT_MASK);
    addEditingKey(page, GDK_KEY_z, GDK_CONTROL_MASK, WEBKIT_EDITING_COMMAND_UNDO);
    addEditingKey(page, GDK_KEY_z, withShift, WEBKIT_EDITING_COMMAND_REDO);
}

/// With older toolkits the engine can't show what is in a page to screen readers; then this is all they hear of it.
void nameAfterTitle(GtkWidget* page)
{
    const auto name = [page](GParamSpec*) {
        const auto* title = webkit_web_view_get_title(WEBKIT_WEB_VIEW(page));
        gtk_accessible_update_property(
            GTK_ACCESSIBLE(page), GTK_ACCESSIBLE_PROPERTY_LABEL, title && *title ? title : "Web page", -1);
    };
    desktop::connect<void(GParamSpec*)>(page, "notify::title", name).keep();
    name(nullptr);
}

/// True for a decision that is made here. The engine takes the page away before it refuses a port.
bool refuseBlockedPort(WebKitPolicyDecision* decision)
{
    auto* action = webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    if (!hasBlockedPort(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action))))
        return false;
    webkit_policy_decision_ignore(decision);
    return true;
}

} // namespace

void limitNetworkMemory()
{
    webkit_network_session_set_memory_pressure_settings(memoryPressureBelow(512).get());
}

GtkWidget* makeEngineWidget(const WebViewConfiguration& configuration)
{
    desktop::loadLibrary(desktop::LateLibrary::Engine);
    const auto store
        = configuration.websiteDataStore ? configuration.websiteDataStore : WebsiteDataStore::defaultDataStore();
    const auto settings = makeSettings();
    auto* widget = GTK_WIDGET(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", sharedContext(), "network-session",
        store->native().session.get(), "settings", settings.get(), "hexpand", TRUE, "vexpand", TRUE, "accessible-role",
        GTK_ACCESSIBLE_ROLE_DOCUMENT, nullptr));
    addEditingKeys(widget);
    letTabLeave(widget);
    nameAfterTitle(widget);
    return widget;
}

std::vector<desktop::SignalConnection> restrictPage(WebKitWebView* page)
{
    std::vector<desktop::SignalConnection> connections;
    connections.push_back(desktop::connect<gboolean(WebKitPermissionRequest*)>(
        page, "permission-request", [](WebKitPermissionRequest* request) -> gboolean {
            webkit_permission_request_deny(request);
            return TRUE;
        }));
    connections.push_back(desktop::connect<gboolean()>(page, "enter-fullscreen", []() -> gboolean { return TRUE; }));
    connections.push_back(desktop::connect<gboolean(WebKitContextMenu*, WebKitHitTestResult*)>(
        page, "context-menu", [](WebKitContextMenu* menu, WebKitHitTestResult*) -> gboolean {
            restrictMenu(menu);
            return webkit_context_menu_get_n_items(menu) == 0;
        }));
    connections.push_back(desktop::connect<gboolean(WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
        page, "decide-policy", [](WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) -> gboolean {
            return type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION && refuseBlockedPort(decision);
        }));
    return connections;
}

} // namespace webkit
