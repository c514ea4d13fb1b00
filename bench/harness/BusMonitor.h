#pragma once

#include <gio/gio.h>

#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace bench {

/// Listens to all that is said on the session bus while it is there.
class BusMonitor {
public:
    BusMonitor();
    ~BusMonitor();
    BusMonitor(const BusMonitor&) = delete;
    BusMonitor& operator=(const BusMonitor&) = delete;

    /// What that connection has said so far: the methods and signals by name, replies as "reply".
    [[nodiscard]] std::vector<std::string> messagesFrom(const std::string& connection) const;

private:
    static GDBusMessage* record(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming, gpointer data);

    GDBusConnection* bus_;
    mutable std::mutex mutex_; // the bus thread writes
    std::multimap<std::string, std::string> messages_;
};

} // namespace bench
