#include "platform/appkit/SavePanel.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/SavePanelNative.h"

namespace appkit {

UTType* nativeContentType(ContentType type)
{
    switch (type) {
    case ContentType::Json:
        return UTTypeJSON;
    }
}

void begin(NSSavePanel* panel, SavePanel::CompletionHandler completionHandler)
{
    [panel beginWithCompletionHandler:^(NSModalResponse response) {
        NSURL* url = response == NSModalResponseOK ? panel.URL : nil;
        completionHandler(url ? std::optional(foundation::pathFrom(url.path)) : std::nullopt);
    }];
}

void SavePanel::begin(CompletionHandler completionHandler) const
{
    NSSavePanel* panel = [NSSavePanel savePanel];
    panel.title = nativeText(title);
    panel.allowedContentTypes = @[ nativeContentType(allowedContentType) ];
    panel.nameFieldStringValue = nativeText(nameFieldStringValue);
    appkit::begin(panel, std::move(completionHandler));
}

} // namespace appkit
