#include "platform/appkit/Alert.h"

#include "platform/linux/appkit/AlertNative.h"
#include "platform/linux/desktop/AlertWindow.h"
#include "platform/linux/desktop/Toolkit.h"

namespace appkit {

struct Alert::Native {
    GMainLoop* loop;
    Alert* before;
    std::size_t answer;

    void end(std::size_t buttonIndex)
    {
        answer = buttonIndex;
        g_main_loop_quit(loop);
    }
};

namespace {

Alert* runningAlert = nullptr;
std::vector<GMainLoop*> runningLoops;

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

} // namespace

std::size_t Alert::runModal()
{
    desktop::loadToolkit();
    const auto titles = buttonTitles.empty() ? std::vector<std::string> { "OK" } : buttonTitles;
    Native native { g_main_loop_new(nullptr, FALSE), runningAlert, titles.size() - 1 };
    native_ = &native;
    runningAlert = this;
    auto* window = desktop::makeAlertWindow({ messageText, informativeText, titles }, activeWindow(),
        [&native](std::size_t buttonIndex) { native.end(buttonIndex); });
    gtk_window_present(window);
    runningLoops.push_back(native.loop);
    g_main_loop_run(native.loop);
    runningLoops.pop_back();
    gtk_window_destroy(window);
    g_main_loop_unref(native.loop);
    runningAlert = native.before;
    native_ = nullptr;
    return native.answer;
}

Alert* Alert::running()
{
    return runningAlert;
}

void Alert::performClick(std::size_t buttonIndex)
{
    if (native_)
        native_->end(buttonIndex);
}

void cancelRunningAlerts()
{
    for (auto* loop : runningLoops)
        g_main_loop_quit(loop);
}

} // namespace appkit
