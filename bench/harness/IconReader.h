#pragma once

#include "Bus.h"
#include "Waiting.h"

#include <optional>
#include <string>

namespace bench {

/// Follows an item's picture as a panel does: reads the item again whenever it says that its icon is new.
class IconReader {
public:
    /// An item with the usual path. Reads it once, and waits for that.
    explicit IconReader(std::string item);
    ~IconReader();
    IconReader(const IconReader&) = delete;
    IconReader& operator=(const IconReader&) = delete;

    /// Waits until the item has another picture than the last time, and returns when it was here.
    [[nodiscard]] Clock::time_point waitForNewPicture();

private:
    void read();
    void take(GVariant* properties);

    GDBusConnection* bus_;
    std::string item_;
    unsigned subscription_;
    GCancellable* cancellable_ = g_cancellable_new();
    std::string picture_; // as text: name and pixels
    std::optional<Clock::time_point> arrival_;
};

} // namespace bench
