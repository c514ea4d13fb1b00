#include "Measurements.h"

#include "Idle.h"
#include "PageServer.h"
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
    waitForRest(50ms); // bookmarks may have items that come after the first, and must not come into the next run
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
    constexpr std::size_t items = 4; // its own, and those of three of the default bookmarks
    const auto watchOnce = [&](const char* program, std::size_t itemCount, Idle& into) {
        const UserFolders folders;
        watchIdle(setting.programs / program, folders, itemCount, host, into);
    };
    watchOnce("bare_item", 1, bare);
    for (auto round = 0; round < setting.runs; ++round)
        watchOnce("perchly", items, ours);
    constexpr auto megabytes = 15.0;
    report.add({ "Memory at rest (PSS, all processes)", "MiB", std::nullopt, ours.megabytes, megabytes });
    report.add({ "The bare item's, for scale", "MiB", std::nullopt, bare.megabytes, std::nullopt });
    report.add({ "Wake-ups at rest", "1/s", std::nullopt, ours.wakeUps, 0.0 });
    requireNothingElse("at rest", ours, report);
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
