#pragma once

#include <functional>
#include <memory>

namespace webkit {

/// Cookies, caches and databases of the sites, on disk. Shared by every view that names it. Main thread.
class WebsiteDataStore {
public:
    static std::shared_ptr<WebsiteDataStore> defaultDataStore();

    /// Removes all data of all kinds and sites, of whatever time, also those that open pages have. The handler is
    /// called on the main thread, when all is gone.
    void removeAllData(std::function<void()> completionHandler);

    ~WebsiteDataStore();
    WebsiteDataStore(const WebsiteDataStore&) = delete;
    WebsiteDataStore& operator=(const WebsiteDataStore&) = delete;

    struct Native;
    [[nodiscard]] Native& native() const { return *native_; }

private:
    explicit WebsiteDataStore(std::unique_ptr<Native> native);

    std::unique_ptr<Native> native_;
};

} // namespace webkit
