#include "platform/appkit/Alert.h"

#include "platform/linux/appkit/AlertNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/AlertWindow.h"
#include "platform/linux/desktop/Toolkit.h"

#include <algorithm>

namespace appkit {

struct Alert::Native {
    GMainLoop* loop;
    std::size_t answer;

    void end(std::size_t buttonIndex)
    {
        answer = buttonIndex;
        g_main_loop_quit(loop);
    }
};

namespace {

struct RunningAlert {
    Alert* alert;
    GtkWindow* window;
};

/// The latest last.
std::vector<RunningAlert> runningAlerts;

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
    Native native { g_main_loop_new(nullptr, FALSE), titles.size() - 1 };
    native_ = &native;
    auto* accessory = accessoryView ? widgetOf(*accessoryView) : nullptr;
    auto* window = desktop::makeAlertWindow({ messageText, informativeText, titles, accessory }, activeWindow(),
        [&native](std::size_t buttonIndex) { native.end(buttonIndex); });
    gtk_window_present(window);
    runningAlerts.push_back({ this, window });
    g_main_loop_run(native.loop);
    runningAlerts.pop_back();
    // Its owner may still want to read it.
    if (accessory)
        gtk_widget_unparent(accessory);
    gtk_window_destroy(window);
    g_main_loop_unref(native.loop);
    native_ = nullptr;
    return native.answer;
}

Alert* Alert::running()
{
    return runningAlerts.empty() ? nullptr : runningAlerts.back().alert;
}

void Alert::performClick(std::size_t buttonIndex)
{
    if (native_)
        native_->end(buttonIndex);
}

void cancelRunningAlerts()
{
    for (const auto& [alert, window] : runningAlerts)
        alert->performClick(std::max<std::size_t>(alert->buttonTitles.size(), 1) - 1);
}

void bringAlertForward()
{
    if (!runningAlerts.empty())
        gtk_window_present(runningAlerts.back().window);
}

} // namespace appkit
