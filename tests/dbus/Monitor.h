#pragma once

#include "TestBus.h"

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace testbus {

/// Sees every message on the bus from now on.
class Monitor {
public:
    Monitor();
    ~Monitor();
    Monitor(const Monitor&) = delete;
    Monitor& operator=(const Monitor&) = delete;

    /// The names of the methods and signals that came from a connection, and "answer" for each of its answers.
    [[nodiscard]] std::vector<std::string> messagesFrom(const std::string& connection) const;
    [[nodiscard]] bool hasSeen(const std::string& connection, const std::string& message) const;

private:
    static GDBusMessage* record(GDBusConnection* connection, GDBusMessage* message, gboolean incoming, gpointer self);

    Connection connection_;
    guint filter_ = 0;
    mutable std::mutex mutex_; // the record is written on the connection's own thread
    std::vector<std::pair<std::string, std::string>> messages_;
};

} // namespace testbus
