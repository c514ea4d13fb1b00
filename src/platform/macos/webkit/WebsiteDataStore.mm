#include "platform/webkit/WebsiteDataStore.h"

#include "platform/macos/webkit/WebsiteDataStoreNative.h"

namespace webkit {

std::shared_ptr<WebsiteDataStore> WebsiteDataStore::defaultDataStore()
{
    static const std::shared_ptr<WebsiteDataStore> store(
        new WebsiteDataStore(std::make_unique<Native>(Native { [WKWebsiteDataStore defaultDataStore] })));
    return store;
}

void WebsiteDataStore::removeAllData(std::function<void()> completionHandler)
{
    [native_->store removeDataOfTypes:[WKWebsiteDataStore allWebsiteDataTypes]
                        modifiedSince:NSDate.distantPast
                    completionHandler:^{ completionHandler(); }];
}

WebsiteDataStore::WebsiteDataStore(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

WebsiteDataStore::~WebsiteDataStore() = default;

} // namespace webkit
