#include "platform/appkit/Workspace.h"

#include "platform/macos/appkit/Conversions.h"

namespace appkit {

Workspace& Workspace::sharedWorkspace()
{
    static Workspace workspace;
    return workspace;
}

void Workspace::openURL(const foundation::URL& url)
{
    [NSWorkspace.sharedWorkspace openURL:foundation::nativeURL(url)];
}

} // namespace appkit
