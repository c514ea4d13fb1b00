#pragma once

#include "platform/linux/desktop/GObject.h"

#include <deque>
#include <functional>

namespace desktop {

/// Items register one after another, in the order in which they enter: their connections are no order by themselves.
/// Each waits until the status area has answered the one before; on Xfce, until the panel has taken that one up: while
/// it writes down an item that it meets for the first time, it forgets others that come, and never shows them.
/// Items are told apart by their connections. Main thread.
class RegistrationQueue {
public:
    static RegistrationQueue& shared();

    /// Calls `registerItem` when it is the item's turn, which may be at once.
    void enter(GDBusConnection* item, std::function<void()> registerItem);

    /// The status area has answered the item.
    void itemWasRegistered(GDBusConnection* item);

    /// A host has read all of the item.
    void itemWasRead(GDBusConnection* item);

    /// The item need not wait any more, nor be waited for.
    void leave(GDBusConnection* item);

private:
    struct Entry {
        GDBusConnection* item;
        std::function<void()> registerItem;
    };

    void next();

    std::deque<Entry> waiting_;
    GDBusConnection* current_ = nullptr;
    SourceHandle end_; // of the current one's turn
};

} // namespace desktop
