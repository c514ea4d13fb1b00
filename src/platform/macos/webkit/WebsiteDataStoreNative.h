#pragma once

#include "platform/webkit/WebsiteDataStore.h"

#import <WebKit/WebKit.h>

namespace webkit {

struct WebsiteDataStore::Native {
    WKWebsiteDataStore* store;
};

} // namespace webkit
