#include "platform/appkit/Alert.h"

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/Toolkit.h"

#include <gtk/gtk.h>

#include <ranges>

namespace appkit {

struct Alert::Native {
    GtkDialog* dialog;
    GMainLoop* loop;
    Alert* before;
    int response;
};

namespace {

Alert* runningAlert = nullptr;

GtkWindow* activeWindow()
{
    GtkWindow* visible = nullptr;
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        auto* window = GTK_WINDOW(link->data);
        if (gtk_window_is_active(window) || (!visible && gtk_widget_get_mapped(GTK_WIDGET(window))))
            visible = window;
    }
    g_list_free(windows);
    return visible;
}

GtkDialog* makeDialog(const Alert& alert, const std::vector<std::string>& titles)
{
    auto* dialog = gtk_message_dialog_new(
        activeWindow(), GTK_DIALOG_MODAL, GTK_MESSAGE_OTHER, GTK_BUTTONS_NONE, "%s", alert.messageText.c_str());
    if (!alert.informativeText.empty())
        gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), "%s", alert.informativeText.c_str());
    // The button that confirms stands at the end of the row.
    for (auto index = titles.size(); index-- > 0;)
        gtk_dialog_add_button(GTK_DIALOG(dialog), titles[index].c_str(), static_cast<int>(index));
    gtk_dialog_set_default_response(GTK_DIALOG(dialog), 0);
    // Escape would otherwise destroy it, which runModal does.
    gtk_window_set_hide_on_close(GTK_WINDOW(dialog), TRUE);
    return GTK_DIALOG(dialog);
}

} // namespace

std::size_t Alert::runModal()
{
    desktop::loadToolkit();
    const auto titles = buttonTitles.empty() ? std::vector<std::string> { "OK" } : buttonTitles;
    const auto cancel = static_cast<int>(titles.size()) - 1;
    Native native { makeDialog(*this, titles), g_main_loop_new(nullptr, FALSE), runningAlert, cancel };
    native_ = &native;
    runningAlert = this;
    {
        const auto answered = desktop::connect<void(int)>(native.dialog, "response", [&native](int response) {
            if (response >= 0)
                native.response = response;
            g_main_loop_quit(native.loop);
        });
        gtk_window_present(GTK_WINDOW(native.dialog));
        g_main_loop_run(native.loop);
    }
    gtk_window_destroy(GTK_WINDOW(native.dialog));
    g_main_loop_unref(native.loop);
    runningAlert = native.before;
    native_ = nullptr;
    return static_cast<std::size_t>(native.response);
}

Alert* Alert::running()
{
    return runningAlert;
}

void Alert::performClick(std::size_t buttonIndex)
{
    if (native_)
        gtk_dialog_response(native_->dialog, static_cast<int>(buttonIndex));
}

} // namespace appkit
