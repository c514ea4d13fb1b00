#pragma once

#include "TestBus.h"
#include "platform/linux/statusarea/ExportedObject.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

inline constexpr const char* itemInterface = "org.kde.StatusNotifierItem";

/// A status area's watcher: keeps the items that register, by "name/path", and forgets those whose connection goes.
class FakeWatcher {
public:
    FakeWatcher();
    ~FakeWatcher();
    FakeWatcher(const FakeWatcher&) = delete;
    FakeWatcher& operator=(const FakeWatcher&) = delete;

    [[nodiscard]] const std::vector<std::string>& items() const { return items_; }

    /// How often an item has registered, repetitions included.
    [[nodiscard]] int registrations() const { return registrations_; }

    /// Registrations get no answer until `answer` is called.
    void holdAnswers() { holdsAnswers_ = true; }
    void answer();

    /// Drops the item as watchers with a fault do, and says so.
    void forget(std::string_view item);

private:
    void registerItem(const std::string& sender, const std::string& service);

    testbus::Connection connection_;
    std::unique_ptr<desktop::ExportedObject> object_;
    std::vector<guint> watches_;
    std::vector<std::string> items_;
    int registrations_ = 0;
    bool holdsAnswers_ = false;
    std::vector<GDBusMethodInvocation*> unanswered_;
};
