#pragma once

#include "Waiting.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace bench {

/// A status area: takes registrations, noting when they arrive, and reads items and chooses rows as a panel does.
/// Where no item is named, it is the first that was registered: Perchly's own comes before those of bookmarks.
class MeasuringHost {
public:
    struct Item {
        std::string name;
        std::string path;
    };

    MeasuringHost();
    ~MeasuringHost();
    MeasuringHost(const MeasuringHost&) = delete;
    MeasuringHost& operator=(const MeasuringHost&) = delete;

    /// Forgets the items of the run before.
    void reset();

    /// Waits for so many items and returns when the last of them came in.
    [[nodiscard]] Clock::time_point waitForItems(std::size_t count);
    [[nodiscard]] Clock::time_point waitForItem() { return waitForItems(1); }

    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    [[nodiscard]] const Item& itemWithId(const std::string& id);

    /// Reads all there is to show of all items, picture and menu, until it has them.
    void showItems();

    /// Starts to read the item, as showItem does, and chooses the row at once.
    void choose(const std::string& row);

    /// A row of a menu, for many clicks.
    struct Row {
        std::string item;
        std::string menu;
        std::int32_t id = 0;
    };

    /// Opens the menu and finds the row of the last label below that of the one before, and so on.
    [[nodiscard]] Row rowOf(const Item& item, const std::vector<std::string>& labels);
    [[nodiscard]] Row rowOf(const std::vector<std::string>& labels) { return rowOf(items_.front(), labels); }

    /// Does not wait for anything.
    void click(const Row& row);

    /// Waits until the names of the run before are off the bus.
    void waitForDeparture();

private:
    GVariant* call(const Item& item, const char* path, const char* interface, const char* method, GVariant* arguments);
    std::string property(const Item& item, const char* name);
    bool readPicture(const Item& item);
    GVariant* menuLayout(const Item& item, const std::string& menu);

    GDBusConnection* bus_;
    GDBusNodeInfo* interfaces_;
    unsigned filter_ = 0;
    unsigned object_ = 0;
    std::mutex mutex_;
    std::vector<Clock::time_point> arrivals_; // written by the bus thread
    std::vector<Item> items_;
};

} // namespace bench
