#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/webkit/WebsiteDataStore.h"

#include <webkit/webkit.h>

namespace webkit {

struct WebsiteDataStore::Native {
    desktop::ObjectPointer<WebKitNetworkSession> session;
    desktop::SignalConnection downloads;
};

/// Has data stay that the engine writes from now on: a page of ours begins to load.
void keepWhatIsLoaded();

} // namespace webkit
