#pragma once

#include "platform/appkit/SavePanel.h"

#include <gtk/gtk.h>

#include <string>

namespace appkit {

/// What a panel for choosing a file asks for.
struct FilePanel {
    GtkFileChooserAction action;
    std::string title;
    ContentType contentType;
    /// Of a file to be saved.
    std::string suggestedName {};
};

/// Shows the panel in front of the window that the user works with, and blocks none. A new file to be saved gets the
/// suffix of its type if it has no other. The handler is called once.
void beginFilePanel(const FilePanel& panel, SavePanel::CompletionHandler completionHandler);

/// Ends every panel as if the user had cancelled it, so that the program can end.
void cancelFilePanels();

} // namespace appkit
