#include "platform/appkit/OpenPanel.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/SavePanelNative.h"

namespace appkit {

void OpenPanel::begin(CompletionHandler completionHandler) const
{
    NSOpenPanel* panel = [NSOpenPanel openPanel];
    panel.title = nativeText(title);
    panel.allowedContentTypes = @[ nativeContentType(allowedContentType) ];
    panel.canChooseFiles = YES;
    panel.canChooseDirectories = NO;
    panel.allowsMultipleSelection = NO;
    appkit::begin(panel, std::move(completionHandler));
}

} // namespace appkit
