#pragma once

#include "platform/linux/desktop/GObject.h"

#include <memory>
#include <string>

namespace desktop {

class StatusAreaSignals;

/// Keeps an item in the status area: registers it in its turn, and again whenever the area appears, restarts or forgets
/// it. Says once in the log when there is no area. The item must be exported before. Main thread.
class StatusNotifierWatcher {
public:
    /// `service` is what to register: an object path of this connection, or the connection's own name. A name can be
    /// registered by anyone, and is so over the connection that all items share.
    StatusNotifierWatcher(GDBusConnection* connection, std::string service);
    ~StatusNotifierWatcher();
    StatusNotifierWatcher(const StatusNotifierWatcher&) = delete;
    StatusNotifierWatcher& operator=(const StatusNotifierWatcher&) = delete;

private:
    friend class StatusAreaSignals;

    void registerItem();
    void sendRegistration();
    void registrationAnswered(bool succeeded);
    void ownerChanged(bool hasOwner);
    void itemUnregistered(std::string_view item);

    /// Where a registration is sent.
    [[nodiscard]] GDBusConnection* sender() const;

    ObjectPointer<GDBusConnection> connection_;
    ObjectPointer<GCancellable> cancellable_;
    std::string service_;
    std::shared_ptr<StatusAreaSignals> signals_;
    gint64 lastRegistration_ = 0;
    SourceHandle retry_;
};

} // namespace desktop
