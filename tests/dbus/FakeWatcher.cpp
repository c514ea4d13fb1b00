#include "FakeWatcher.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";

constexpr const char* interfaceXml = R"xml(
<node>
  <interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
    <signal name="StatusNotifierItemUnregistered"><arg name="service" type="s"/></signal>
  </interface>
</node>)xml";

GDBusInterfaceInfo* watcherInterface()
{
    static auto* const node = g_dbus_node_info_new_for_xml(interfaceXml, nullptr);
    return node->interfaces[0];
}

} // namespace

FakeWatcher::FakeWatcher()
    : connection_(testbus::connect())
{
    const auto registered = [this](const desktop::BusCall& call) {
        const char* service = nullptr;
        g_variant_get(call.parameters, "(&s)", &service);
        registerItem(g_dbus_method_invocation_get_sender(call.invocation), service);
        unanswered_.push_back(call.invocation);
        if (!holdsAnswers_)
            answer();
    };
    object_ = std::make_unique<desktop::ExportedObject>(
        connection_.get(), "/StatusNotifierWatcher", watcherInterface(), registered);
    const auto answer
        = testbus::call(connection_, { "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus" },
            "RequestName", g_variant_new("(su)", watcherName, 0U));
    EXPECT_TRUE(answer);
}

FakeWatcher::~FakeWatcher()
{
    for (const auto watch : watches_)
        g_bus_unwatch_name(watch);
    object_.reset();
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

void FakeWatcher::answer()
{
    holdsAnswers_ = false;
    for (auto* invocation : std::exchange(unanswered_, {}))
        g_dbus_method_invocation_return_value(invocation, nullptr);
}

void FakeWatcher::registerItem(const std::string& sender, const std::string& service)
{
    ++registrations_;
    const bool isPath = service.starts_with('/');
    const auto& owner = isPath ? sender : service;
    const auto item = owner + (isPath ? service : "/StatusNotifierItem");
    if (std::ranges::find(items_, item) != items_.end())
        return;
    items_.push_back(item);
    const auto vanished = +[](GDBusConnection*, const char* name, gpointer data) {
        std::erase_if(static_cast<FakeWatcher*>(data)->items_,
            [name](const auto& known) { return known.starts_with(std::string(name) + "/"); });
    };
    watches_.push_back(g_bus_watch_name_on_connection(
        connection_.get(), owner.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, vanished, this, nullptr));
}

void FakeWatcher::forget(std::string_view item)
{
    const std::string name(item); // it may be one of the list's own
    std::erase(items_, name);
    object_->emit("StatusNotifierItemUnregistered", g_variant_new("(s)", name.c_str()));
}
