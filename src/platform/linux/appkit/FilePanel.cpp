#include "platform/linux/appkit/FilePanel.h"

#include "platform/appkit/Alert.h"
#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/WindowIcon.h"

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
    /// For a file to be saved whose name has none; else empty.
    std::string suffix;
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

std::string suffixFor(ContentType type)
{
    switch (type) {
    case ContentType::Json:
        return ".json";
    }
    return {};
}

Chooser makeChooser(const FilePanel& panel)
{
    auto made = desktop::adopt(
        gtk_file_chooser_native_new(panel.title.c_str(), desktop::frontWindow(), panel.action, nullptr, nullptr));
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

bool mayReplace(const std::filesystem::path& file)
{
    Alert question;
    question.style = AlertStyle::Critical;
    question.messageText = "A file named “" + file.filename().string() + "” already exists. Do you want to replace it?";
    question.informativeText = "Replacing it will overwrite its contents.";
    question.buttonTitles = { "Replace", "Cancel" };
    return question.runModal() == 0;
}

/// A file of just that name is the one that is meant: the panel has asked about it, but not about one with the suffix.
std::optional<std::filesystem::path> withSuffix(std::filesystem::path file, const std::string& suffix)
{
    std::error_code isUnknown;
    if (suffix.empty() || file.has_extension() || std::filesystem::exists(file, isUnknown))
        return file;
    file += suffix;
    return !std::filesystem::exists(file, isUnknown) || mayReplace(file) ? std::optional(file) : std::nullopt;
}

/// Panels of the toolkit's own are windows of this program; those of a desktop's portal are not.
void setPanelIcons()
{
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        if (GTK_IS_FILE_CHOOSER(link->data) && gtk_widget_get_realized(GTK_WIDGET(link->data)))
            desktop::setWindowIcon(GTK_WIDGET(link->data));
    }
    g_list_free(windows);
}

void end(const OpenedPanel& panel, int response)
{
    auto& panels = openedPanels();
    const auto place = std::ranges::find(panels, &panel, &std::unique_ptr<OpenedPanel>::get);
    const auto ended = std::move(*place);
    panels.erase(place);
    ended->response.disconnect();
    auto file = response == GTK_RESPONSE_ACCEPT ? chosenFile(GTK_FILE_CHOOSER(ended->chooser.get())) : std::nullopt;
    gtk_native_dialog_destroy(GTK_NATIVE_DIALOG(ended->chooser.get()));
    if (file)
        file = withSuffix(*std::move(file), ended->suffix);
    ended->completionHandler(file);
}

} // namespace

void beginFilePanel(const FilePanel& panel, SavePanel::CompletionHandler completionHandler)
{
    desktop::loadToolkit();
    auto opened = std::make_unique<OpenedPanel>();
    opened->chooser = makeChooser(panel);
    if (panel.action == GTK_FILE_CHOOSER_ACTION_SAVE)
        opened->suffix = suffixFor(panel.contentType);
    opened->completionHandler = std::move(completionHandler);
    opened->response = desktop::connect<void(int)>(
        opened->chooser.get(), "response", [self = opened.get()](int response) { end(*self, response); });
    auto* chooser = GTK_NATIVE_DIALOG(opened->chooser.get());
    openedPanels().push_back(std::move(opened));
    gtk_native_dialog_show(chooser);
    setPanelIcons();
}

void cancelFilePanels()
{
    while (!openedPanels().empty())
        end(*openedPanels().back(), GTK_RESPONSE_CANCEL);
}

} // namespace appkit
