#include "Monitor.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string_view>

namespace testbus {

Monitor::Monitor()
    : connection_(connect())
{
    filter_ = g_dbus_connection_add_filter(connection_.get(), record, this, nullptr);
    const Call bus { "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring" };
    EXPECT_TRUE(call(connection_, bus, "BecomeMonitor", g_variant_new("(@asu)", g_variant_new_strv(nullptr, 0), 0U)));
}

Monitor::~Monitor()
{
    g_dbus_connection_remove_filter(connection_.get(), filter_);
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

GDBusMessage* Monitor::record(GDBusConnection* connection, GDBusMessage* message, gboolean incoming, gpointer self)
{
    const auto* destination = g_dbus_message_get_destination(message);
    const std::string_view own = g_dbus_connection_get_unique_name(connection);
    if (!incoming || (destination && destination == own))
        return message;
    auto& monitor = *static_cast<Monitor*>(self);
    const auto* sender = g_dbus_message_get_sender(message);
    const auto* member = g_dbus_message_get_member(message);
    {
        const std::lock_guard lock(monitor.mutex_);
        monitor.messages_.emplace_back(sender ? sender : "", member ? member : "answer");
    }
    // Kept from what would answer: a monitor may not say anything.
    g_object_unref(message);
    return nullptr;
}

std::vector<std::string> Monitor::messagesFrom(const std::string& connection) const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> names;
    for (const auto& [sender, name] : messages_) {
        if (sender == connection)
            names.push_back(name);
    }
    return names;
}

bool Monitor::hasSeen(const std::string& connection, const std::string& message) const
{
    return std::ranges::count(messagesFrom(connection), message) > 0;
}

} // namespace testbus
