#pragma once

#include "Bus.h"
#include "MeasuringHost.h"
#include "Waiting.h"

#include <optional>
#include <string>

namespace bench {

/// Follows an item's menu as a panel does: reads it again whenever it says that it has changed.
class MenuReader {
public:
    /// The menu that the row is in.
    explicit MenuReader(const MeasuringHost::Row& row);
    ~MenuReader();
    MenuReader(const MenuReader&) = delete;
    MenuReader& operator=(const MenuReader&) = delete;

    /// When a menu came in that was other than the one before. None if none has come since the last call of forget().
    [[nodiscard]] const std::optional<Clock::time_point>& lastChange() const { return lastChange_; }
    void forget() { lastChange_.reset(); }

private:
    void read();
    void take(const std::string& rows);

    GDBusConnection* bus_;
    std::string item_;
    std::string menu_;
    unsigned subscription_;
    GCancellable* cancellable_ = g_cancellable_new();
    std::optional<std::string> rows_; // as text
    std::optional<Clock::time_point> lastChange_;
};

} // namespace bench
