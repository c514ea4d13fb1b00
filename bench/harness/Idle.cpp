#include "Idle.h"

#include "DisplayTrap.h"
#include "ProcessTree.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

std::string joined(const std::vector<std::string>& texts)
{
    std::string text;
    for (const auto& one : texts)
        text += (text.empty() ? "" : ", ") + one;
    return text;
}

} // namespace

void watchIdle(const std::filesystem::path& program, const UserFolders& folders, std::size_t items, MeasuringHost& host,
    Idle& into)
{
    constexpr auto span = 10s;
    constexpr auto settling = 16s; // GLib's pool ends a thread that has waited 15 seconds for more to do
    const DisplayTrap display;
    auto environment = folders.environment();
    environment["DISPLAY"] = display.name();
    host.reset();
    ProgramRun run({ program }, environment);
    (void)host.waitForItems(items);
    host.showItems();
    waitForRest(settling);

    const auto processes = ProcessTree::members();
    into.megabytes.push_back(static_cast<double>(proportionalMemory(processes)) / 1024);
    const auto before = contextSwitches(processes);
    (void)waitUntil([] { return false; }, span);
    const auto after = ProcessTree::members();
    into.changes += after == processes ? "" : "yes";
    const auto switches = switchesBetween(before, contextSwitches(after));
    into.wakeUps.push_back(switches / std::chrono::duration<double>(span).count());

    into.engineProcesses += joined(namesWith(processes, { "WebKit" }));
    into.libraries
        += joined(mappingsWith(processes, { "libwebkit", "libjavascriptcore", "libgtk-", "libX11", "libxcb" }));
    into.display += display.wasTouched() ? display.name() : "";
    run.end();
    host.waitForDeparture();
}

void requireNothingElse(const std::string& when, const Idle& idle, Report& report)
{
    report.require("No process of the engine runs " + when, idle.engineProcesses);
    report.require("No library of the engine, of GTK or of X11 is mapped " + when, idle.libraries);
    report.require("The display is not touched " + when, idle.display);
    report.require("No process comes or goes " + when, idle.changes);
}

} // namespace bench
