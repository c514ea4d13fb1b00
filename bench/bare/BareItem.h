// What the bare items have in common, on GIO alone: a status item with a menu of one row.
#pragma once

#include <gio/gio.h>

#include <string_view>

namespace bare {

inline constexpr auto itemInterfaces = R"xml(<node>
<interface name="org.kde.StatusNotifierItem">
  <property name="Category" type="s" access="read"/>
  <property name="Id" type="s" access="read"/>
  <property name="Title" type="s" access="read"/>
  <property name="Status" type="s" access="read"/>
  <property name="IconName" type="s" access="read"/>
  <property name="ItemIsMenu" type="b" access="read"/>
  <property name="Menu" type="o" access="read"/>
</interface>
<interface name="com.canonical.dbusmenu">
  <method name="GetLayout">
    <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="as" direction="in"/>
    <arg type="u" direction="out"/><arg type="(ia{sv}av)" direction="out"/>
  </method>
  <method name="Event">
    <arg type="i" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/>
    <arg type="u" direction="in"/>
  </method>
  <property name="Version" type="u" access="read"/>
</interface>
</node>)xml";

inline constexpr auto connectionFlags = GDBusConnectionFlags(
    G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);

inline GVariant* itemProperty(
    GDBusConnection*, const char*, const char*, const char*, const char* name, GError**, gpointer)
{
    const std::string_view wanted = name;
    if (wanted == "ItemIsMenu")
        return g_variant_new_boolean(TRUE);
    if (wanted == "Menu")
        return g_variant_new_object_path("/MenuBar");
    if (wanted == "Version")
        return g_variant_new_uint32(3);
    if (wanted == "Category")
        return g_variant_new_string("ApplicationStatus");
    if (wanted == "Status")
        return g_variant_new_string("Active");
    if (wanted == "IconName")
        return g_variant_new_string("web-browser-symbolic");
    return g_variant_new_string("bare-item");
}

inline void callMenu(GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant*,
    GDBusMethodInvocation* invocation, gpointer)
{
    GVariant* reply = nullptr;
    if (std::string_view(method) == "GetLayout")
        reply = g_variant_new_parsed(
            "(uint32 1, (0, {'children-display': <'submenu'>}, [<(1, {'label': <'Open Browser'>}, @av [])>]))");
    g_dbus_method_invocation_return_value(invocation, reply);
}

/// Puts an item on the connection and into the status area.
inline void exportItem(GDBusConnection* bus)
{
    static auto* const node = g_dbus_node_info_new_for_xml(itemInterfaces, nullptr);
    static const GDBusInterfaceVTable item { nullptr, itemProperty, nullptr, {} };
    static const GDBusInterfaceVTable menu { callMenu, itemProperty, nullptr, {} };
    g_dbus_connection_register_object(
        bus, "/StatusNotifierItem", node->interfaces[0], &item, nullptr, nullptr, nullptr);
    g_dbus_connection_register_object(bus, "/MenuBar", node->interfaces[1], &menu, nullptr, nullptr, nullptr);
    g_dbus_connection_call(bus, "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
        "org.kde.StatusNotifierWatcher", "RegisterStatusNotifierItem",
        g_variant_new("(s)", g_dbus_connection_get_unique_name(bus)), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        nullptr, nullptr);
}

} // namespace bare
