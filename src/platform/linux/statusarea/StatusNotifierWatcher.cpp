#include "platform/linux/statusarea/StatusNotifierWatcher.h"

#include "platform/foundation/Log.h"
#include "platform/linux/desktop/StartUp.h"
#include "platform/linux/statusarea/RegistrationQueue.h"

#include <algorithm>
#include <vector>

namespace desktop {
namespace {

constexpr const char* watcherName = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* busName = "org.freedesktop.DBus";

constexpr unsigned patienceMilliseconds = 4000;
constexpr gint64 leastIntervalMicroseconds = 2'000'000;

/// Whether there is a status area, for all items together: one line in the log tells of its absence.
class Absence {
public:
    void begin()
    {
        if (isAbsent_)
            return;
        isAbsent_ = true;
        report_ = callAfter(patienceMilliseconds, [] {
            foundation::log("StatusBar - There is no status area; the items will appear as soon as there is one");
        });
    }

    void end()
    {
        isAbsent_ = false;
        report_.reset();
    }

private:
    bool isAbsent_ = false;
    SourceHandle report_;
};

Absence& absence()
{
    static Absence absence;
    return absence;
}

} // namespace

/// What the bus and the status area tell, heard once for all items and while there are any: on a connection of its own,
/// each of them would cost the bus two rules, and be told of all the others.
class StatusAreaSignals {
public:
    static std::shared_ptr<StatusAreaSignals> shared()
    {
        static std::weak_ptr<StatusAreaSignals> existing;
        auto signals = existing.lock();
        if (!signals)
            existing = signals = std::make_shared<StatusAreaSignals>();
        return signals;
    }

    StatusAreaSignals()
        : connection_(adopt(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)))
    {
        if (!connection_)
            return;
        watchOwner();
        watchUnregistration();
        // The rules must be there before any item registers on a connection of its own: an area that appears in between
        // would be missed. An answer means that they are.
        auto* answer = g_dbus_connection_call_sync(connection_.get(), busName, "/org/freedesktop/DBus",
            "org.freedesktop.DBus.Peer", "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        if (answer)
            g_variant_unref(answer);
    }

    ~StatusAreaSignals()
    {
        for (const auto subscription : subscriptions_)
            g_dbus_connection_signal_unsubscribe(connection_.get(), subscription);
    }

    StatusAreaSignals(const StatusAreaSignals&) = delete;
    StatusAreaSignals& operator=(const StatusAreaSignals&) = delete;

    /// Null without a bus.
    [[nodiscard]] GDBusConnection* connection() const { return connection_.get(); }

    void add(StatusNotifierWatcher& item) { items_.push_back(&item); }
    void remove(StatusNotifierWatcher& item) { std::erase(items_, &item); }

private:
    void watchOwner()
    {
        const auto changed = +[](GDBusConnection*, const char*, const char*, const char*, const char*,
                                  GVariant* parameters, gpointer data) {
            const char* owner = nullptr;
            g_variant_get(parameters, "(&s&s&s)", nullptr, nullptr, &owner);
            tell(data, [&](auto& item) { item.ownerChanged(*owner != '\0'); });
        };
        subscriptions_.push_back(
            g_dbus_connection_signal_subscribe(connection_.get(), busName, busName, "NameOwnerChanged",
                "/org/freedesktop/DBus", watcherName, G_DBUS_SIGNAL_FLAGS_NONE, changed, this, nullptr));
    }

    void watchUnregistration()
    {
        const auto unregistered = +[](GDBusConnection*, const char*, const char*, const char*, const char*,
                                       GVariant* parameters, gpointer data) {
            if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(s)")))
                return;
            const char* name = nullptr;
            g_variant_get(parameters, "(&s)", &name);
            tell(data, [&](auto& item) { item.itemUnregistered(name); });
        };
        // From any sender: to follow the watcher's name would cost more messages, and a lie does no harm here.
        subscriptions_.push_back(g_dbus_connection_signal_subscribe(connection_.get(), nullptr, watcherName,
            "StatusNotifierItemUnregistered", watcherPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, unregistered, this,
            nullptr));
    }

    template <class Message>
    static void tell(gpointer data, Message message)
    {
        const auto& items = static_cast<StatusAreaSignals*>(data)->items_;
        const auto toTell = items; // a copy, because items may come and go meanwhile
        const auto keptAlive = shared();
        for (auto* item : toTell) {
            if (std::ranges::find(items, item) != items.end())
                message(*item);
        }
    }

    ObjectPointer<GDBusConnection> connection_;
    std::vector<guint> subscriptions_;
    std::vector<StatusNotifierWatcher*> items_;
};

StatusNotifierWatcher::StatusNotifierWatcher(GDBusConnection* connection, std::string service)
    : connection_(retain(connection))
    , cancellable_(adopt(g_cancellable_new()))
    , service_(std::move(service))
    , signals_(StatusAreaSignals::shared())
{
    signals_->add(*this);
    registerItem();
}

StatusNotifierWatcher::~StatusNotifierWatcher()
{
    g_cancellable_cancel(cancellable_.get());
    RegistrationQueue::shared().leave(connection_.get());
    signals_->remove(*this);
}

void StatusNotifierWatcher::registerItem()
{
    retry_.reset();
    using Connection = RegistrationQueue::Connection;
    RegistrationQueue::shared().enter(connection_.get(),
        sender() == connection_.get() ? Connection::Own : Connection::Shared, [this] { sendRegistration(); });
}

GDBusConnection* StatusNotifierWatcher::sender() const
{
    const bool isPath = service_.starts_with('/');
    return isPath || !signals_->connection() ? connection_.get() : signals_->connection();
}

void StatusNotifierWatcher::sendRegistration()
{
    lastRegistration_ = g_get_monotonic_time();
    const auto answered = +[](GObject* source, GAsyncResult* result, gpointer self) {
        ErrorPointer error;
        auto* reply = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, error.out());
        if (reply)
            g_variant_unref(reply);
        // Cancelled: the watcher object is gone.
        if (!error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            static_cast<StatusNotifierWatcher*>(self)->registrationAnswered(reply != nullptr);
    };
    constexpr auto defaultTimeout = -1;
    g_dbus_connection_call(sender(), watcherName, watcherPath, watcherName, "RegisterStatusNotifierItem",
        g_variant_new("(s)", service_.c_str()), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, defaultTimeout,
        cancellable_.get(), answered, this);
}

void StatusNotifierWatcher::registrationAnswered(bool succeeded)
{
    endStartUp();
    if (succeeded) {
        absence().end();
        return RegistrationQueue::shared().itemWasRegistered(connection_.get());
    }
    absence().begin();
    RegistrationQueue::shared().leave(connection_.get());
}

void StatusNotifierWatcher::ownerChanged(bool hasOwner)
{
    if (hasOwner)
        registerItem();
    else
        absence().begin();
}

/// Watchers name an item by its connection, with or without its path.
void StatusNotifierWatcher::itemUnregistered(std::string_view item)
{
    const std::string_view own = g_dbus_connection_get_unique_name(connection_.get());
    const bool isOurs = item.starts_with(own) && (item.size() == own.size() || !g_ascii_isdigit(item[own.size()]));
    if (!isOurs || retry_)
        return;
    const auto elapsed = g_get_monotonic_time() - lastRegistration_;
    const auto wait = std::clamp<gint64>(leastIntervalMicroseconds - elapsed, 0, leastIntervalMicroseconds);
    retry_ = callAfter(static_cast<unsigned>(wait / 1000), [this] { registerItem(); });
}

} // namespace desktop
