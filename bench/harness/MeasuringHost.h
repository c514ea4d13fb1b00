#pragma once

#include "Waiting.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// A status area: takes registrations, noting when they arrive, and reads items and chooses rows as a panel does.
class MeasuringHost {
public:
    MeasuringHost();
    ~MeasuringHost();
    MeasuringHost(const MeasuringHost&) = delete;
    MeasuringHost& operator=(const MeasuringHost&) = delete;

    /// Forgets the item of the run before.
    void reset();

    /// Waits for an item and returns when its registration came in.
    [[nodiscard]] Clock::time_point waitForItem();

    /// Reads all there is to show, picture and menu, and waits for the answers.
    void showItem();

    /// Starts to read the item, as showItem does, and chooses the row at once.
    void choose(const std::string& row);

    /// A row of the menu, for many clicks.
    struct Row {
        std::string menu;
        std::int32_t id = 0;
    };

    /// Opens the menu and finds the row of the last label below that of the one before, and so on.
    [[nodiscard]] Row rowOf(const std::vector<std::string>& labels);

    /// Does not wait for anything.
    void click(const Row& row);

    /// Waits until the names of the run before are off the bus.
    void waitForDeparture();

private:
    GVariant* call(const char* path, const char* interface, const char* method, GVariant* arguments);
    std::string menuPath();
    GVariant* menuLayout(const std::string& menu);

    GDBusConnection* bus_;
    GDBusNodeInfo* interfaces_;
    unsigned filter_ = 0;
    unsigned object_ = 0;
    std::atomic<std::int64_t> arrival_ = 0; // written by the bus thread, in nanoseconds of Clock
    std::string itemName_;
    std::string itemPath_;
};

} // namespace bench
