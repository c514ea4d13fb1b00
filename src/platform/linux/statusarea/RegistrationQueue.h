#pragma once

#include "platform/linux/desktop/GObject.h"

#include <deque>
#include <functional>

namespace desktop {

/// Items register one after another, in the order in which they enter. After one that registers over a connection of
/// its own the next waits for the status area's answer, because connections are in no order; on Xfce, after any, until
/// the panel has taken it up: while it writes down an item that it meets for the first time, it forgets others that
/// come, and never shows them.
/// Items are told apart by their connections. Main thread.
class RegistrationQueue {
public:
    static RegistrationQueue& shared();

    enum class Connection { Own, Shared };

    /// Calls `registerItem`, which registers over a connection of that kind, when it is the item's turn: maybe at once.
    void enter(GDBusConnection* item, Connection connection, std::function<void()> registerItem);

    /// The status area has answered the item.
    void itemWasRegistered(GDBusConnection* item);

    /// A host has read all of the item.
    void itemWasRead(GDBusConnection* item);

    /// The item need not wait any more, nor be waited for.
    void leave(GDBusConnection* item);

private:
    struct Entry {
        GDBusConnection* item;
        Connection connection;
        std::function<void()> registerItem;
    };

    void next();

    std::deque<Entry> waiting_;
    GDBusConnection* current_ = nullptr;
    SourceHandle end_; // of the current one's turn
};

} // namespace desktop
