#pragma once

#include "platform/appkit/SavePanel.h"

#include <string>

namespace appkit {

/// Asks the user for one file to open.
class OpenPanel {
public:
    std::string title;
    ContentType allowedContentType = ContentType::Json;

    using CompletionHandler = SavePanel::CompletionHandler;

    /// Shows the panel and returns at once; the panel may go. The handler is called once, on the main thread.
    void begin(CompletionHandler completionHandler) const;
};

} // namespace appkit
