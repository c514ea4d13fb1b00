// One status item with a menu of one row, on GIO alone.
#include "BareItem.h"

#include <cstdio>

int main()
{
    GError* error = nullptr;
    auto* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, &error);
    auto* bus = address
        ? g_dbus_connection_new_for_address_sync(address, bare::connectionFlags, nullptr, nullptr, &error)
        : nullptr;
    if (!bus) {
        std::fprintf(stderr, "bare_item: %s\n", error->message);
        return 1;
    }
    bare::exportItem(bus);
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
