#include "platform/appkit/OpenPanel.h"

#include "platform/linux/appkit/FilePanel.h"

namespace appkit {

void OpenPanel::begin(CompletionHandler completionHandler) const
{
    beginFilePanel({ GTK_FILE_CHOOSER_ACTION_OPEN, title, allowedContentType }, std::move(completionHandler));
}

} // namespace appkit
