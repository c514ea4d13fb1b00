#include "FakeHosts.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr const char* menuInterfaceName = "com.canonical.dbusmenu";

GVariant* toVariant(const std::vector<std::int32_t>& ids)
{
    return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(std::int32_t));
}

std::string labelIn(GVariant* properties)
{
    const char* label = "";
    g_variant_lookup(properties, "label", "&s", &label);
    return label;
}

void readRows(GVariant* node, std::vector<KnownRow>& rows)
{
    const auto children = desktop::adoptVariant(g_variant_get_child_value(node, 2));
    for (gsize index = 0; index < g_variant_n_children(children.get()); ++index) {
        const auto boxed = desktop::adoptVariant(g_variant_get_child_value(children.get(), index));
        const auto child = desktop::adoptVariant(g_variant_get_variant(boxed.get()));
        const auto properties = desktop::adoptVariant(g_variant_get_child_value(child.get(), 1));
        gint32 id = 0;
        g_variant_get_child(child.get(), 0, "i", &id);
        rows.push_back({ id, labelIn(properties.get()) });
        readRows(child.get(), rows);
    }
}

} // namespace

FakeHost::FakeHost(std::string service, std::string path)
    : target_ { std::move(service), std::move(path), menuInterfaceName }
    , connection_(testbus::connect())
{
    filter_ = g_dbus_connection_add_filter(connection_.get(), record, this, nullptr);
    const auto signalled
        = +[](GDBusConnection*, const char*, const char*, const char*, const char* signal, GVariant*, gpointer self) {
              if (signal == std::string_view("LayoutUpdated"))
                  static_cast<FakeHost*>(self)->layoutUpdated();
          };
    subscription_ = g_dbus_connection_signal_subscribe(connection_.get(), target_.service.c_str(), menuInterfaceName,
        nullptr, target_.path.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE, signalled, this, nullptr);
    testbus::settle(connection_);
}

FakeHost::~FakeHost()
{
    g_dbus_connection_remove_filter(connection_.get(), filter_);
    g_dbus_connection_signal_unsubscribe(connection_.get(), subscription_);
    g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr);
}

GDBusMessage* FakeHost::record(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer self)
{
    auto& host = *static_cast<FakeHost*>(self);
    const std::lock_guard lock(host.mutex_);
    const auto type = g_dbus_message_get_message_type(message);
    const auto* member = g_dbus_message_get_member(message);
    if (!incoming && member && std::string_view(member).starts_with("AboutToShow"))
        host.pendingOpenings_.push_back(g_dbus_message_get_serial(message));
    if (incoming && type == G_DBUS_MESSAGE_TYPE_SIGNAL
        && g_dbus_message_get_interface(message) == std::string_view(menuInterfaceName))
        host.traffic_.emplace_back(member);
    if (incoming && type == G_DBUS_MESSAGE_TYPE_METHOD_RETURN
        && std::erase(host.pendingOpenings_, g_dbus_message_get_reply_serial(message)))
        host.traffic_.emplace_back("reply");
    return message;
}

std::vector<std::string> FakeHost::labels() const
{
    std::vector<std::string> labels;
    for (const auto& row : rows_)
        labels.push_back(row.label);
    return labels;
}

std::int32_t FakeHost::idOf(const std::string& label) const
{
    const auto row = std::ranges::find(rows_, label, &KnownRow::label);
    return row == rows_.end() ? -1 : row->id;
}

std::vector<std::string> FakeHost::traffic() const
{
    const std::lock_guard lock(mutex_);
    return traffic_;
}

void FakeHost::settle() const
{
    // The program answers on its main loop, in the order of the messages; then once more, for what that set going.
    const testbus::Call properties { target_.service, target_.path, "org.freedesktop.DBus.Properties" };
    for (auto round = 0; round < 2; ++round) {
        (void)testbus::call(connection_, properties, "Get", g_variant_new("(ss)", menuInterfaceName, "Version"));
        testbus::settle(connection_);
    }
}

desktop::VariantPointer FakeHost::call(const char* method, GVariant* parameters) const
{
    return testbus::call(connection_, target_, method, parameters);
}

void FakeHost::fetchLayout(int depth, const std::vector<const char*>& names)
{
    auto* wanted = g_variant_new_strv(names.data(), static_cast<gssize>(names.size()));
    const auto reply = call("GetLayout", g_variant_new("(ii@as)", 0, depth, wanted));
    rows_.clear();
    if (!reply)
        return;
    const auto root = desktop::adoptVariant(g_variant_get_child_value(reply.get(), 1));
    readRows(root.get(), rows_);
}

void FakeHost::fetchLabels()
{
    std::vector<std::int32_t> ids;
    for (const auto& row : rows_)
        ids.push_back(row.id);
    auto* all = g_variant_new_strv(nullptr, 0);
    const auto reply = call("GetGroupProperties", g_variant_new("(@ai@as)", toVariant(ids), all));
    const auto array = desktop::adoptVariant(g_variant_get_child_value(reply.get(), 0));
    for (gsize index = 0; index < g_variant_n_children(array.get()); ++index) {
        gint32 id = 0;
        GVariant* properties = nullptr;
        g_variant_get_child(array.get(), index, "(i@a{sv})", &id, &properties);
        const auto owned = desktop::adoptVariant(properties);
        std::ranges::find(rows_, id, &KnownRow::id)->label = labelIn(properties);
    }
}

GtkHost::GtkHost(std::string service, std::string path)
    : FakeHost(std::move(service), std::move(path))
{
    GtkHost::layoutUpdated();
}

void GtkHost::openMenu()
{
    // Without a callback the message says that no reply is expected.
    g_dbus_connection_call(connection_.get(), target_.service.c_str(), target_.path.c_str(), menuInterfaceName,
        "AboutToShowGroup", g_variant_new("(@ai)", toVariant({ 0 })), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        nullptr, nullptr);
    settle();
}

void GtkHost::layoutUpdated()
{
    fetchLayout(-1, { "type", "label", "visible", "enabled", "children-display" });
    fetchLabels();
}

PlasmaHost::PlasmaHost(std::string service, std::string path)
    : FakeHost(std::move(service), std::move(path))
{
    fetchLayout(1, {});
}

void PlasmaHost::openMenu()
{
    const auto start = static_cast<std::ptrdiff_t>(traffic().size());
    isOpening_ = true;
    const auto reply = call("AboutToShow", g_variant_new("(i)", 0));
    isOpening_ = false;
    gboolean needsUpdate = FALSE;
    g_variant_get(reply.get(), "(b)", &needsUpdate);
    ignoresNextUpdate_ = needsUpdate;
    // GIO may hand over a signal before the reply that it followed on the wire; Plasma's library never does.
    const auto arrived = traffic();
    const auto answered = std::find(arrived.begin() + start, arrived.end(), "reply");
    const auto early = static_cast<std::size_t>(std::count(arrived.begin() + start, answered, "LayoutUpdated"));
    if (ignoresNextUpdate_ || early > 0)
        fetchLayout(1, {});
    for (auto late = std::exchange(heldBack_, 0); late > early; --late)
        layoutUpdated();
    settle();
}

void PlasmaHost::layoutUpdated()
{
    if (isOpening_)
        ++heldBack_;
    else if (!std::exchange(ignoresNextUpdate_, false))
        fetchLayout(1, {});
}

GnomeHost::GnomeHost(std::string service, std::string path)
    : FakeHost(std::move(service), std::move(path))
{
    fetch();
}

void GnomeHost::fetch()
{
    isStale_ = false;
    fetchLayout(-1, { "type", "children-display" });
    fetchLabels();
}

void GnomeHost::openMenu()
{
    const auto reply = call("AboutToShow", g_variant_new("(i)", 0));
    gboolean needsUpdate = FALSE;
    g_variant_get(reply.get(), "(b)", &needsUpdate);
    if (needsUpdate || isStale_)
        fetch();
    settle();
}

void GnomeHost::layoutUpdated()
{
    isStale_ = true;
}
