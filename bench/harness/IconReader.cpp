#include "IconReader.h"

#include <utility>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;
constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto itemInterface = "org.kde.StatusNotifierItem";

} // namespace

IconReader::IconReader(std::string item)
    : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr))
    , item_(std::move(item))
{
    constexpr auto isNew = +[](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*,
                                gpointer data) { static_cast<IconReader*>(data)->read(); };
    subscription_ = g_dbus_connection_signal_subscribe(bus_, item_.c_str(), itemInterface, "NewIcon", itemPath, nullptr,
        G_DBUS_SIGNAL_FLAGS_NONE, isNew, this, nullptr);
    read();
    (void)waitForNewPicture();
}

IconReader::~IconReader()
{
    g_cancellable_cancel(cancellable_);
    g_object_unref(cancellable_);
    g_dbus_connection_signal_unsubscribe(bus_, subscription_);
    g_object_unref(bus_);
}

Clock::time_point IconReader::waitForNewPicture()
{
    if (!waitUntil([&] { return arrival_.has_value(); }, patience))
        giveUp("an item got no new picture");
    return std::exchange(arrival_, std::nullopt).value();
}

void IconReader::read()
{
    constexpr auto answered = +[](GObject* bus, GAsyncResult* result, gpointer data) {
        GError* error = nullptr;
        const Variant reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        if (reply)
            static_cast<IconReader*>(data)->take(Variant(g_variant_get_child_value(reply.get(), 0)).get());
        else if (!g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
            giveUp(std::string("an item cannot be read: ") + error->message);
        g_clear_error(&error);
    };
    g_dbus_connection_call(bus_, item_.c_str(), itemPath, "org.freedesktop.DBus.Properties", "GetAll",
        g_variant_new("(s)", itemInterface), G_VARIANT_TYPE("(a{sv})"), G_DBUS_CALL_FLAGS_NONE, -1, cancellable_,
        answered, this);
}

void IconReader::take(GVariant* properties)
{
    const auto now = Clock::now();
    const char* name = "";
    g_variant_lookup(properties, "IconName", "&s", &name);
    const Variant pixels(g_variant_lookup_value(properties, "IconPixmap", G_VARIANT_TYPE("a(iiay)")));
    if (!pixels || g_variant_n_children(pixels.get()) == 0)
        return;
    std::string picture = name;
    picture.append(static_cast<const char*>(g_variant_get_data(pixels.get())), g_variant_get_size(pixels.get()));
    if (std::exchange(picture_, picture) != picture)
        arrival_ = now;
}

} // namespace bench
