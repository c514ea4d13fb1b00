#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>

namespace bench {

struct VariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantUnref>;

/// Whether a program is on the session bus under that name.
[[nodiscard]] inline bool isOnBus(GDBusConnection* bus, const std::string& name)
{
    const Variant reply(g_dbus_connection_call_sync(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "NameHasOwner", g_variant_new("(s)", name.c_str()), G_VARIANT_TYPE("(b)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    gboolean hasOwner = FALSE;
    if (reply)
        g_variant_get(reply.get(), "(b)", &hasOwner);
    return hasOwner;
}

} // namespace bench
