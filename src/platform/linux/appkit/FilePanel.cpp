#include "platform/linux/appkit/FilePanel.h"

#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Toolkit.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace appkit {
namespace {

using Chooser = desktop::ObjectPointer<GtkFileChooserNative>;

/// A panel on the screen.
struct OpenedPanel {
    Chooser chooser;
    SavePanel::CompletionHandler completionHandler;
    desktop::SignalConnection response;
};

std::vector<std::unique_ptr<OpenedPanel>>& openedPanels()
{
    // Never destroyed: at exit it is too late to take windows down.
    static auto& panels = *new std::vector<std::unique_ptr<OpenedPanel>>;
    return panels;
}

desktop::ObjectPointer<GtkFileFilter> filterFor(ContentType type)
{
    auto filter = desktop::adopt(gtk_file_filter_new());
    switch (type) {
    case ContentType::Json:
        gtk_file_filter_set_name(filter.get(), "JSON");
        gtk_file_filter_add_suffix(filter.get(), "json");
        gtk_file_filter_add_mime_type(filter.get(), "application/json");
    }
    return filter;
}

Chooser makeChooser(const FilePanel& panel)
{
    auto made = desktop::adopt(
        gtk_file_chooser_native_new(panel.title.c_str(), desktop::frontWindow(), panel.action, nullptr, nullptr));
    gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(made.get()), TRUE);
    auto* chooser = GTK_FILE_CHOOSER(made.get());
    gtk_file_chooser_add_filter(chooser, filterFor(panel.contentType).get());
    if (panel.action == GTK_FILE_CHOOSER_ACTION_SAVE)
        gtk_file_chooser_set_current_name(chooser, panel.suggestedName.c_str());
    return made;
}

/// None for a file that is not on this machine's disks.
std::optional<std::filesystem::path> chosenFile(GtkFileChooser* chooser)
{
    const desktop::ObjectPointer<GFile> file(gtk_file_chooser_get_file(chooser));
    const desktop::GLibPointer<> path(file ? g_file_get_path(file.get()) : nullptr);
    return path ? std::optional<std::filesystem::path>(path.get()) : std::nullopt;
}

void end(const OpenedPanel& panel, int response)
{
    auto& panels = openedPanels();
    const auto place = std::ranges::find(panels, &panel, &std::unique_ptr<OpenedPanel>::get);
    const auto ended = std::move(*place);
    panels.erase(place);
    ended->response.disconnect();
    const auto file
        = response == GTK_RESPONSE_ACCEPT ? chosenFile(GTK_FILE_CHOOSER(ended->chooser.get())) : std::nullopt;
    gtk_native_dialog_destroy(GTK_NATIVE_DIALOG(ended->chooser.get()));
    ended->completionHandler(file);
}

} // namespace

void beginFilePanel(const FilePanel& panel, SavePanel::CompletionHandler completionHandler)
{
    desktop::loadToolkit();
    auto opened = std::make_unique<OpenedPanel>();
    opened->chooser = makeChooser(panel);
    opened->completionHandler = std::move(completionHandler);
    opened->response = desktop::connect<void(int)>(
        opened->chooser.get(), "response", [self = opened.get()](int response) { end(*self, response); });
    auto* chooser = GTK_NATIVE_DIALOG(opened->chooser.get());
    openedPanels().push_back(std::move(opened));
    gtk_native_dialog_show(chooser);
}

void cancelFilePanels()
{
    while (!openedPanels().empty())
        end(*openedPanels().back(), GTK_RESPONSE_CANCEL);
}

} // namespace appkit
