#include "platform/appkit/SavePanel.h"

#include "platform/linux/appkit/FilePanel.h"

namespace appkit {

void SavePanel::begin(CompletionHandler completionHandler) const
{
    beginFilePanel({ GTK_FILE_CHOOSER_ACTION_SAVE, title, allowedContentType, nameFieldStringValue },
        std::move(completionHandler));
}

} // namespace appkit
