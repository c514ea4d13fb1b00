// Many status items, each on a connection of its own, made by order over the session bus: bare_items COUNT
#include "BareItem.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr auto orders = R"xml(<node><interface name="org.perchly.Items">
  <method name="Synchronise"/>
</interface></node>)xml";

struct Items {
    int count = 0;
    char* address = nullptr;
};

void connected(GObject*, GAsyncResult* result, gpointer)
{
    GError* error = nullptr;
    auto* bus = g_dbus_connection_new_for_address_finish(result, &error);
    if (!bus)
        return g_printerr("bare_items: %s\n", error->message);
    bare::exportItem(bus);
}

void obey(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
    GDBusMethodInvocation* invocation, gpointer data)
{
    const auto& items = *static_cast<const Items*>(data);
    g_dbus_method_invocation_return_value(invocation, nullptr);
    for (auto item = 0; item < items.count; ++item)
        g_dbus_connection_new_for_address(items.address, bare::connectionFlags, nullptr, nullptr, connected, nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: bare_items COUNT\n", stderr);
        return 2;
    }
    Items items { std::atoi(argv[1]), g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr) };
    auto* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    if (!bus) {
        std::fputs("bare_items: there is no session bus\n", stderr);
        return 1;
    }
    auto* node = g_dbus_node_info_new_for_xml(orders, nullptr);
    static const GDBusInterfaceVTable table { obey, nullptr, nullptr, {} };
    g_dbus_connection_register_object(bus, "/", node->interfaces[0], &table, &items, nullptr, nullptr);
    g_bus_own_name_on_connection(
        bus, "org.perchly.Items", G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
