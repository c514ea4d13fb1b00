#include "Measurements.h"

#include "DisplayTrap.h"
#include "PageServer.h"
#include "ProcessTree.h"
#include "ProgramRun.h"
#include "ScreenProbe.h"
#include "Turns.h"

#include <functional>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;

double timeToItem(const std::filesystem::path& program, const UserFolders& folders, MeasuringHost& host)
{
    host.reset();
    ProgramRun run({ program }, folders.environment());
    const auto time = millisecondsBetween(run.started(), host.waitForItem());
    run.end();
    host.waitForDeparture();
    return time;
}

struct Paint {
    Series wall;
    Series processor;
};

// `open` is what the user does once the program has started.
void paintOnce(const std::vector<std::string>& command, const UserFolders& folders, ScreenProbe& screen,
    const std::function<void()>& open, Paint* into)
{
    ProgramRun run(command, folders.environment());
    open();
    if (!waitUntil([&] { return screen.shows(PageServer::colour); }, patience))
        giveUp(command.front() + " painted no page");
    const auto wall = millisecondsBetween(run.started(), Clock::now());
    const auto processor = run.end();
    if (!waitUntil([&] { return !screen.shows(PageServer::colour); }, patience))
        giveUp("the page stays on the screen");
    if (!into)
        return;
    into->wall.push_back(wall);
    into->processor.push_back(processor);
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string text;
    for (const auto& one : texts)
        text += (text.empty() ? "" : ", ") + one;
    return text;
}

struct Idle {
    Series megabytes;
    Series wakeUps;
    std::string engineProcesses;
    std::string libraries;
    std::string display;
    std::string changes;
};

void idleOnce(const std::filesystem::path& program, MeasuringHost& host, Idle& into)
{
    constexpr auto span = 10s;
    const UserFolders folders;
    const DisplayTrap display;
    auto environment = folders.environment();
    environment["DISPLAY"] = display.name();
    host.reset();
    ProgramRun run({ program }, environment);
    (void)host.waitForItem();
    host.showItem();
    waitForRest(1s);

    const auto processes = ProcessTree::members();
    into.megabytes.push_back(static_cast<double>(proportionalMemory(processes)) / 1024);
    const auto before = contextSwitches(processes);
    (void)waitUntil([] { return false; }, span);
    const auto after = ProcessTree::members();
    into.changes += after == processes ? "" : "yes";
    const auto switches = static_cast<double>(contextSwitches(after)) - static_cast<double>(before);
    into.wakeUps.push_back(switches / std::chrono::duration<double>(span).count());

    into.engineProcesses += joined(namesWith(processes, { "WebKit" }));
    into.libraries
        += joined(mappingsWith(processes, { "libwebkit", "libjavascriptcore", "libgtk-", "libX11", "libxcb" }));
    into.display += display.wasTouched() ? display.name() : "";
    run.end();
    host.waitForDeparture();
}

double storeOnce(const std::vector<std::string>& command)
{
    std::string line;
    for (const auto& word : command)
        line += g_shell_quote(word.c_str()) + std::string(" ");
    g_autofree char* output = nullptr;
    int status = 0;
    if (!g_spawn_command_line_sync(line.c_str(), &output, nullptr, &status, nullptr) || status != 0)
        giveUp(line + "failed");
    return g_ascii_strtod(output, nullptr);
}

} // namespace

void measureStart(const Setting& setting, MeasuringHost& host, Report& report)
{
    const UserFolders kept; // the warming round leaves the bookmarks there
    const auto measure = [&](const std::string& name, const std::function<double()>& start) {
        constexpr auto limit = 2.5;
        constexpr auto more = 3; // a start is over soon, and a median of many says more
        Result result { name, "ms", Series(), {}, limit };
        const auto taker = [](const std::function<double()>& take, Series& into) {
            return [&into, take](bool counts) {
                const auto time = take();
                if (counts)
                    into.push_back(time);
            };
        };
        const auto startBare = [&] { return timeToItem(setting.programs / "bare_item", kept, host); };
        interleave(setting.runs * more, taker(startBare, *result.bare), taker(start, result.ours));
        report.add(std::move(result));
    };
    const auto program = setting.programs / "perchly";
    measure("Start until the item is registered", [&] { return timeToItem(program, kept, host); });
    measure("The very first start, which writes the default bookmarks",
        [&] { return timeToItem(program, UserFolders(), host); });
}

void measurePaint(const Setting& setting, MeasuringHost& host, Report& report)
{
    const PageServer server;
    ScreenProbe screen;
    const UserFolders folders;
    folders.setHomePage(server.address());
    Paint bare;
    Paint ours;
    interleave(
        setting.runs,
        [&](bool counts) {
            paintOnce(
                { setting.programs / "bare_browser", server.address() }, folders, screen, [] {},
                counts ? &bare : nullptr);
        },
        [&](bool counts) {
            host.reset();
            const auto open = [&] {
                (void)host.waitForItem();
                host.choose("Open Browser");
            };
            paintOnce({ setting.programs / "perchly" }, folders, screen, open, counts ? &ours : nullptr);
            host.waitForDeparture();
        });
    constexpr auto limit = 1.10;
    report.add({ "Start until the first page is painted", "ms", bare.wall, ours.wall, limit });
    report.add({ "Processor time until then, all processes", "ms", bare.processor, ours.processor, limit });
}

void measureIdle(const Setting& setting, MeasuringHost& host, Report& report)
{
    Idle bare;
    Idle ours;
    idleOnce(setting.programs / "bare_item", host, bare);
    for (auto round = 0; round < setting.runs; ++round)
        idleOnce(setting.programs / "perchly", host, ours);
    constexpr auto megabytes = 15.0;
    report.add({ "Memory at rest (PSS, all processes)", "MiB", std::nullopt, ours.megabytes, megabytes });
    report.add({ "The bare item's, for scale", "MiB", std::nullopt, bare.megabytes, std::nullopt });
    report.add({ "Wake-ups at rest", "1/s", std::nullopt, ours.wakeUps, 0.0 });
    report.require("No process of the engine runs at rest", ours.engineProcesses);
    report.require("No library of the engine, of GTK or of X11 is mapped at rest", ours.libraries);
    report.require("The display is not touched", ours.display);
    report.require("No process comes or goes at rest", ours.changes);
}

void measureStore(const Setting& setting, Report& report)
{
    const UserFolders folders;
    const std::filesystem::path folder = folders.environment().at("XDG_DATA_HOME");
    const auto document = folder / "big.json";
    const auto bareProgram = setting.programs / "bench_store_bare";
    const auto program = setting.programs / "bench_store_perchly";
    for (const auto& one : { bareProgram, program }) {
        if (!std::filesystem::exists(one))
            return report.require("The store's bench is built", one);
    }
    (void)storeOnce({ bareProgram, "generate", document, "100000" });
    const auto measure = [&](const std::string& name, const std::vector<std::string>& arguments) {
        Result result { name, "ms", Series(), {}, 1.5 };
        const auto taker = [&arguments](const std::filesystem::path& of, Series& into) {
            return [&arguments, &into, of](bool counts) {
                std::vector<std::string> command { of };
                command.insert(command.end(), arguments.begin(), arguments.end());
                const auto time = storeOnce(command);
                if (counts)
                    into.push_back(time);
            };
        };
        interleave(setting.runs, taker(bareProgram, *result.bare), taker(program, result.ours));
        report.add(std::move(result));
    };
    measure("Loading 100 000 bookmarks", { "load", document });
    measure("Saving them", { "save", document, folder / "saved.json" });
}

} // namespace bench
