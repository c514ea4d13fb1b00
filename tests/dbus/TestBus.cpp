#include "TestBus.h"

#include <gtest/gtest.h>

namespace testbus {
namespace {

constexpr unsigned deadlineMilliseconds = 10000;

struct Answer {
    bool arrived = false;
    desktop::VariantPointer value;
};

void receive(GObject* source, GAsyncResult* result, gpointer data)
{
    auto* answer = static_cast<Answer*>(data);
    answer->arrived = true;
    if (auto* value = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr))
        answer->value = desktop::adoptVariant(value);
}

class SessionBus : public testing::Environment {
public:
    void SetUp() override
    {
        bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
        g_test_dbus_up(bus_);
    }

    void TearDown() override
    {
        g_test_dbus_down(bus_);
        g_object_unref(bus_);
    }

private:
    GTestDBus* bus_ = nullptr;
};

} // namespace

Connection connect()
{
    constexpr auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    const auto* address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
    return desktop::adopt(g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, nullptr));
}

std::string nameOf(const Connection& connection)
{
    return g_dbus_connection_get_unique_name(connection.get());
}

bool waitUntil(const std::function<bool()>& condition)
{
    // Wakes the loop, so that a condition outside of it is looked at too.
    constexpr unsigned tickMilliseconds = 5;
    const auto tick = g_timeout_add(
        tickMilliseconds, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    const auto end = g_get_monotonic_time() + deadlineMilliseconds * gint64 { 1000 };
    auto holds = condition();
    while (!holds && g_get_monotonic_time() < end) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_remove(tick);
    return holds;
}

desktop::VariantPointer call(const Connection& connection, const Call& target, const char* method, GVariant* parameters)
{
    Answer answer;
    g_dbus_connection_call(connection.get(), target.service.c_str(), target.path.c_str(), target.interface.c_str(),
        method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, static_cast<int>(deadlineMilliseconds), nullptr, receive,
        &answer);
    while (!answer.arrived)
        g_main_context_iteration(nullptr, TRUE);
    return std::move(answer.value);
}

void settle(const Connection& connection)
{
    const Call bus { "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer" };
    // The answer comes after all that the bus had for this connection; what that set going takes another round.
    for (auto round = 0; round < 2; ++round)
        EXPECT_TRUE(call(connection, bus, "Ping", nullptr));
    while (g_main_context_iteration(nullptr, FALSE)) { }
}

} // namespace testbus

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    testing::AddGlobalTestEnvironment(new testbus::SessionBus);
    return RUN_ALL_TESTS();
}
