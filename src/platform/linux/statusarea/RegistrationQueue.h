#pragma once

#include "platform/linux/desktop/GObject.h"

#include <deque>
#include <functional>

namespace desktop {

/// On Xfce, items register one after another, each when the panel has taken up the one before: while it writes down an
/// item that it meets for the first time, it forgets others that come, and never shows them. Elsewhere nobody waits.
/// Items are told apart by their connections. Main thread.
class RegistrationQueue {
public:
    static RegistrationQueue& shared();

    /// Calls `registerItem` when it is the item's turn, which may be at once.
    void enter(GDBusConnection* item, std::function<void()> registerItem);

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
