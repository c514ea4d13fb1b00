#include "BusMonitor.h"

#include "Bus.h"
#include "Waiting.h"

namespace bench {

BusMonitor::BusMonitor()
{
    constexpr auto flags = GDBusConnectionFlags(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    char* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    bus_ = g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, nullptr);
    g_free(address);
    if (!bus_)
        giveUp("there is no session bus");
    g_dbus_connection_add_filter(bus_, record, this, nullptr);
    const Variant reply(g_dbus_connection_call_sync(bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus.Monitoring", "BecomeMonitor", g_variant_new("(@asu)", g_variant_new_strv(nullptr, 0), 0U),
        nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    if (!reply)
        giveUp("the session bus allows no listening");
}

BusMonitor::~BusMonitor()
{
    // What still comes in finds no monitor: the connection has stopped when this returns.
    g_dbus_connection_close_sync(bus_, nullptr, nullptr);
    g_object_unref(bus_);
}

GDBusMessage* BusMonitor::record(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming, gpointer data)
{
    const auto* sender = g_dbus_message_get_sender(message);
    const auto* receiver = g_dbus_message_get_destination(message);
    const auto isForUs = receiver && receiver == std::string_view(g_dbus_connection_get_unique_name(bus));
    if (!isIncoming || isForUs || !sender)
        return message;
    auto& self = *static_cast<BusMonitor*>(data);
    const auto* member = g_dbus_message_get_member(message);
    {
        const std::lock_guard lock(self.mutex_);
        self.messages_.emplace(sender, member ? member : "reply");
    }
    // Nobody is to answer it: whoever listens must not speak.
    g_object_unref(message);
    return nullptr;
}

std::vector<std::string> BusMonitor::messagesFrom(const std::string& connection) const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> said;
    const auto [begin, end] = messages_.equal_range(connection);
    for (auto entry = begin; entry != end; ++entry)
        said.push_back(entry->second);
    return said;
}

} // namespace bench
