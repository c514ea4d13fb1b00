#include "MeasuringHost.h"

#include "Bus.h"

#include <algorithm>
#include <string_view>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto watcherName = "org.kde.StatusNotifierWatcher";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";
constexpr auto menuInterface = "com.canonical.dbusmenu";
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";
constexpr auto patience = 30s;

constexpr auto interfaces = R"(<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>)";

GVariant* watcherProperty(GDBusConnection*, const char*, const char*, const char*, const char* name, GError**, gpointer)
{
    const std::string_view wanted = name;
    if (wanted == "IsStatusNotifierHostRegistered")
        return g_variant_new_boolean(TRUE);
    if (wanted == "ProtocolVersion")
        return g_variant_new_int32(0);
    return g_variant_new_strv(nullptr, 0);
}

// The first row of that label, itself or below, in (ia{sv}av), or null.
Variant rowIn(GVariant* node, const std::string& label)
{
    const Variant properties(g_variant_get_child_value(node, 1));
    const char* text = nullptr;
    if (g_variant_lookup(properties.get(), "label", "&s", &text) && text == label)
        return Variant(g_variant_ref(node));
    const Variant children(g_variant_get_child_value(node, 2));
    for (gsize index = 0; index < g_variant_n_children(children.get()); ++index) {
        const Variant boxed(g_variant_get_child_value(children.get(), index));
        const Variant child(g_variant_get_variant(boxed.get()));
        if (auto found = rowIn(child.get(), label))
            return found;
    }
    return nullptr;
}

std::int32_t idOfRow(GVariant* layout, const std::vector<std::string>& labels)
{
    Variant row(g_variant_ref(layout));
    for (const auto& label : labels) {
        row = rowIn(row.get(), label);
        if (!row)
            giveUp("the menu has no row \"" + label + "\"");
    }
    std::int32_t id = 0;
    g_variant_get_child(row.get(), 0, "i", &id);
    return id;
}

GVariant* clickOn(std::int32_t id)
{
    return g_variant_new("(isvu)", id, "clicked", g_variant_new_int32(0), 0U);
}

} // namespace

MeasuringHost::MeasuringHost()
    : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
    , interfaces_(g_dbus_node_info_new_for_xml(interfaces, nullptr))
{
    if (!bus_)
        giveUp("there is no session bus");
    // The time is taken on the bus thread: this thread may be looking at the screen.
    auto note = +[](GDBusConnection*, GDBusMessage* message, gboolean isIncoming, gpointer data) {
        const auto* member = g_dbus_message_get_member(message);
        if (isIncoming && member && std::string_view(member) == "RegisterStatusNotifierItem") {
            auto* self = static_cast<MeasuringHost*>(data);
            const std::lock_guard lock(self->mutex_);
            self->arrivals_.push_back(Clock::now());
        }
        return message;
    };
    filter_ = g_dbus_connection_add_filter(bus_, note, this, nullptr);

    auto receive = +[](GDBusConnection*, const char* sender, const char*, const char*, const char* method,
                        GVariant* arguments, GDBusMethodInvocation* invocation, gpointer data) {
        auto* self = static_cast<MeasuringHost*>(data);
        if (std::string_view(method) == "RegisterStatusNotifierItem") {
            const char* service = nullptr;
            g_variant_get(arguments, "(&s)", &service);
            const auto isPath = service[0] == '/';
            self->items_.push_back({ isPath ? sender : service, isPath ? service : "/StatusNotifierItem" });
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
    };
    static const GDBusInterfaceVTable table { receive, watcherProperty, nullptr, {} };
    object_ = g_dbus_connection_register_object(
        bus_, "/StatusNotifierWatcher", interfaces_->interfaces[0], &table, this, nullptr, nullptr);

    constexpr auto doNotQueue = 4U;
    constexpr auto isOwner = 1U;
    const Variant reply(g_dbus_connection_call_sync(bus_, "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", watcherName, doNotQueue), G_VARIANT_TYPE("(u)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    auto answer = 0U;
    if (reply)
        g_variant_get(reply.get(), "(u)", &answer);
    if (answer != isOwner)
        giveUp("another status area is on the bus");
}

MeasuringHost::~MeasuringHost()
{
    g_dbus_connection_unregister_object(bus_, object_);
    g_dbus_connection_remove_filter(bus_, filter_);
    g_dbus_node_info_unref(interfaces_);
    g_object_unref(bus_);
}

void MeasuringHost::reset()
{
    const std::lock_guard lock(mutex_);
    arrivals_.clear();
    items_.clear();
}

Clock::time_point MeasuringHost::waitForItems(std::size_t count)
{
    if (!waitUntil([&] { return items_.size() >= count; }, patience))
        giveUp("only " + std::to_string(items_.size()) + " status items were registered");
    const std::lock_guard lock(mutex_);
    return arrivals_.at(count - 1);
}

const MeasuringHost::Item& MeasuringHost::itemWithId(const std::string& id)
{
    const auto found
        = std::find_if(items_.begin(), items_.end(), [&](const auto& item) { return property(item, "Id") == id; });
    if (found == items_.end())
        giveUp("there is no item \"" + id + "\"");
    return *found;
}

GVariant* MeasuringHost::call(
    const Item& item, const char* path, const char* interface, const char* method, GVariant* arguments)
{
    GError* error = nullptr;
    auto* reply = g_dbus_connection_call_sync(bus_, item.name.c_str(), path, interface, method, arguments, nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &error);
    if (!reply)
        giveUp(std::string(method) + ": " + error->message);
    return reply;
}

std::string MeasuringHost::property(const Item& item, const char* name)
{
    const Variant reply(
        call(item, item.path.c_str(), propertiesInterface, "Get", g_variant_new("(ss)", itemInterface, name)));
    const Variant boxed(g_variant_get_child_value(reply.get(), 0));
    const Variant text(g_variant_get_variant(boxed.get()));
    return g_variant_get_string(text.get(), nullptr);
}

GVariant* MeasuringHost::menuLayout(const Item& item, const std::string& menu)
{
    static const char* const all[] = { nullptr };
    const Variant reply(call(item, menu.c_str(), menuInterface, "GetLayout", g_variant_new("(ii^as)", 0, -1, all)));
    return g_variant_get_child_value(reply.get(), 1);
}

bool MeasuringHost::readPicture(const Item& item)
{
    const Variant reply(
        call(item, item.path.c_str(), propertiesInterface, "GetAll", g_variant_new("(s)", itemInterface)));
    const Variant properties(g_variant_get_child_value(reply.get(), 0));
    const char* name = "";
    g_variant_lookup(properties.get(), "IconName", "&s", &name);
    const Variant pixels(g_variant_lookup_value(properties.get(), "IconPixmap", G_VARIANT_TYPE("a(iiay)")));
    return name[0] != '\0' || (pixels && g_variant_n_children(pixels.get()) > 0);
}

void MeasuringHost::showItems()
{
    const auto items = items_; // a copy: more may come meanwhile
    for (const auto& item : items) {
        if (!waitUntil([&] { return readPicture(item); }, patience))
            giveUp("an item stays without a picture");
        const Variant layout(menuLayout(item, property(item, "Menu")));
    }
}

void MeasuringHost::choose(const std::string& row)
{
    const auto item = items_.front(); // a copy: more may come meanwhile
    // Not waited for: what the panel paints meanwhile does not hold the user up.
    g_dbus_connection_call(bus_, item.name.c_str(), item.path.c_str(), propertiesInterface, "GetAll",
        g_variant_new("(s)", itemInterface), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
    const auto menu = property(item, "Menu");
    const Variant layout(menuLayout(item, menu));
    const auto id = idOfRow(layout.get(), { row });
    const Variant done(call(item, menu.c_str(), menuInterface, "Event", clickOn(id)));
}

MeasuringHost::Row MeasuringHost::rowOf(const Item& item, const std::vector<std::string>& labels)
{
    const auto menu = property(item, "Menu");
    const Variant changed(call(item, menu.c_str(), menuInterface, "AboutToShow", g_variant_new("(i)", 0)));
    const Variant layout(menuLayout(item, menu));
    return { item.name, menu, idOfRow(layout.get(), labels) };
}

void MeasuringHost::click(const Row& row)
{
    g_dbus_connection_call(bus_, row.item.c_str(), row.menu.c_str(), menuInterface, "Event", clickOn(row.id), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

void MeasuringHost::waitForDeparture()
{
    const auto isGone = [&](const std::string& name) { return !isOnBus(bus_, name); };
    const auto areAllGone = [&] {
        return isGone("org.perchly.Perchly") && isGone("org.perchly.Items")
            && std::all_of(items_.begin(), items_.end(), [&](const auto& item) { return isGone(item.name); });
    };
    if (!waitUntil(areAllGone, patience))
        giveUp("the program before is still on the bus");
}

} // namespace bench
