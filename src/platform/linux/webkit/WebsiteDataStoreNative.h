#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/webkit/WebsiteDataStore.h"

#include <webkit/webkit.h>

namespace webkit {

struct WebsiteDataStore::Native {
    desktop::ObjectPointer<WebKitNetworkSession> session;
    desktop::SignalConnection downloads;
};

} // namespace webkit
