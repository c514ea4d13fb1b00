#pragma once

#include <memory>

namespace webkit {

/// Cookies, caches and databases of the sites, on disk. Shared by every view that names it. Main thread.
class WebsiteDataStore {
public:
    static std::shared_ptr<WebsiteDataStore> defaultDataStore();

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
