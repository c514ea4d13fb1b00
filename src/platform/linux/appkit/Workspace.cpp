#include "platform/appkit/Workspace.h"

#include "platform/foundation/URL.h"

#include <gio/gio.h>

namespace appkit {

Workspace& Workspace::sharedWorkspace()
{
    static Workspace workspace;
    return workspace;
}

void Workspace::openURL(const foundation::URL& url)
{
    g_app_info_launch_default_for_uri_async(url.absoluteString().c_str(), nullptr, nullptr, nullptr, nullptr);
}

} // namespace appkit
