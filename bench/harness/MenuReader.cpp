#include "MenuReader.h"

#include <utility>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto menuInterface = "com.canonical.dbusmenu";

} // namespace

MenuReader::MenuReader(const MeasuringHost::Row& row)
    : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
    , item_(row.item)
    , menu_(row.menu)
{
    constexpr auto patience = 30s;
    constexpr auto isNew = +[](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
                                gpointer data) { static_cast<MenuReader*>(data)->read(); };
    subscription_ = g_dbus_connection_signal_subscribe(bus_, item_.c_str(), menuInterface, "LayoutUpdated",
        menu_.c_str(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE, isNew, this, nullptr);
    read();
    if (!waitUntil([&] { return rows_.has_value(); }, patience))
        giveUp("a menu cannot be read");
}

MenuReader::~MenuReader()
{
    g_cancellable_cancel(cancellable_);
    g_object_unref(cancellable_);
    g_dbus_connection_signal_unsubscribe(bus_, subscription_);
    g_object_unref(bus_);
}

void MenuReader::read()
{
    constexpr auto answered = +[](GObject* bus, GAsyncResult* result, gpointer data) {
        GError* error = nullptr;
        const Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        if (reply) {
            const Variant layout(g_variant_get_child_value(reply.get(), 1));
            g_autofree char* rows = g_variant_print(layout.get(), FALSE);
            static_cast<MenuReader*>(data)->take(rows);
        } else if (!g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
            giveUp(std::string("a menu cannot be read: ") + error->message);
        g_clear_error(&error);
    };
    const char* labels[] = { "label", nullptr }; // the numbers of rows change, too
    g_dbus_connection_call(bus_, item_.c_str(), menu_.c_str(), menuInterface, "GetLayout",
        g_variant_new("(ii^as)", 0, -1, labels), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, cancellable_, answered, this);
}

void MenuReader::take(const std::string& rows)
{
    if (rows_ && *rows_ != rows)
        lastChange_ = Clock::now();
    rows_ = rows;
}

} // namespace bench
