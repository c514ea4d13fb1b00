#include "platform/appkit/Alert.h"

#include "platform/appkit/Window.h"
#include "platform/linux/appkit/AlertNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/ActivationWatch.h"
#include "platform/linux/desktop/AlertWindow.h"
#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/desktop/Toolkit.h"

#include <algorithm>
#include <optional>

namespace appkit {

struct Alert::Native {
    struct Sheet;

    /// Called with the button that answers.
    std::function<void(std::size_t)> end;
};

namespace {

struct RunningAlert {
    Alert* alert;
    GtkWindow* window;
};

/// The latest last.
std::vector<RunningAlert> runningAlerts;
/// Only while an alert is running.
std::optional<desktop::ActivationWatch> activations;

std::vector<std::string> titlesOf(const Alert& alert)
{
    return alert.buttonTitles.empty() ? std::vector<std::string> { "OK" } : alert.buttonTitles;
}

GtkWidget* accessoryOf(const Alert& alert)
{
    return alert.accessoryView ? widgetOf(*alert.accessoryView) : nullptr;
}

GtkWindow* makeWindow(const Alert& alert, GtkWindow* parent, const std::function<void(std::size_t)>& answer)
{
    auto titles = titlesOf(alert);
    const auto isDestructive = alert.style == AlertStyle::Critical && titles.size() > 1;
    return desktop::makeAlertWindow(
        { alert.messageText, alert.informativeText, std::move(titles), accessoryOf(alert), isDestructive }, parent,
        answer);
}

void takeDown(const Alert& alert, GtkWindow* window)
{
    // Its owner may still want to read it.
    if (auto* accessory = accessoryOf(alert))
        gtk_widget_unparent(accessory);
    gtk_window_destroy(window);
}

void begin(const RunningAlert& running)
{
    runningAlerts.push_back(running);
    desktop::presentAbove(running.window);
    if (activations)
        return;
    activations.emplace([](GtkWindow* activated) {
        if (activated != runningAlerts.back().window)
            bringAlertForward();
    });
}

/// The one before waits on.
void end()
{
    runningAlerts.pop_back();
    bringAlertForward();
    if (runningAlerts.empty())
        activations.reset();
}

} // namespace

std::size_t Alert::runModal()
{
    desktop::loadToolkit();
    auto answer = titlesOf(*this).size() - 1;
    auto* loop = g_main_loop_new(nullptr, FALSE);
    Native native { [&](std::size_t buttonIndex) {
        answer = buttonIndex;
        g_main_loop_quit(loop);
    } };
    native_ = &native;
    auto* window = makeWindow(*this, desktop::frontWindow(), native.end);
    begin({ this, window });
    g_main_loop_run(loop);
    end();
    takeDown(*this, window);
    g_main_loop_unref(loop);
    native_ = nullptr;
    return answer;
}

/// An alert that is attached to a window, or is going to be when those before it have been answered. Ends with the
/// window.
struct Alert::Native::Sheet {
    Sheet(const Alert& content, GtkWindow* newParent)
        : alert(content)
        , native { [this](std::size_t) { end(*this); } }
        , parent(newParent)
        , closing(desktop::connect<void()>(parent, "unmap", [this] { end(*this); }))
        , going(desktop::connect<void()>(parent, "destroy", [this] { end(*this); }))
    {
        alert.native_ = &native;
    }

    void show()
    {
        // A group of its own: the other windows of the program stay usable.
        group = desktop::adopt(gtk_window_group_new());
        window = makeWindow(alert, parent, native.end);
        gtk_window_group_add_window(group.get(), parent);
        gtk_window_group_add_window(group.get(), window);
        desktop::presentOver(window, parent);
    }

    static void begin(const Alert& alert, GtkWindow* parent)
    {
        const auto isFirst = !shownOn(parent);
        sheets().push_back(std::make_unique<Sheet>(alert, parent));
        if (isFirst)
            sheets().back()->show();
    }

    static void end(Sheet& sheet)
    {
        const auto place = std::ranges::find(sheets(), &sheet, &std::unique_ptr<Sheet>::get);
        const auto ended = std::move(*place);
        sheets().erase(place);
        if (!ended->window)
            return;
        gtk_window_group_remove_window(ended->group.get(), ended->parent);
        takeDown(ended->alert, ended->window);
        if (auto* next = shownOn(ended->parent))
            next->show();
    }

    /// Null for none.
    static Sheet* shownOn(const GtkWindow* parent)
    {
        const auto found = std::ranges::find(sheets(), parent, [](const auto& sheet) { return sheet->parent; });
        return found == sheets().end() ? nullptr : found->get();
    }

    /// In the order in which they began.
    static std::vector<std::unique_ptr<Sheet>>& sheets()
    {
        // Never destroyed: at exit it is too late to take windows down.
        static auto& all = *new std::vector<std::unique_ptr<Sheet>>;
        return all;
    }

    Alert alert;
    Native native;
    GtkWindow* parent;
    desktop::ObjectPointer<GtkWindowGroup> group;
    GtkWindow* window = nullptr;
    desktop::SignalConnection closing;
    desktop::SignalConnection going;
};

void Alert::beginSheetModal(const std::shared_ptr<Window>& window) const
{
    Native::Sheet::begin(*this, window->native().window);
}

Alert* Alert::sheetOf(const Window& window)
{
    auto* sheet = Native::Sheet::shownOn(window.native().window);
    return sheet ? &sheet->alert : nullptr;
}

Alert* Alert::running()
{
    return runningAlerts.empty() ? nullptr : runningAlerts.back().alert;
}

void Alert::performClick(std::size_t buttonIndex)
{
    if (!native_)
        return;
    // A copy: a sheet is gone after its answer.
    const auto end = native_->end;
    end(buttonIndex);
}

void cancelRunningAlerts()
{
    for (const auto& [alert, window] : runningAlerts)
        alert->performClick(titlesOf(*alert).size() - 1);
}

void bringAlertForward()
{
    if (!runningAlerts.empty())
        desktop::presentAbove(runningAlerts.back().window);
}

} // namespace appkit
