#include "ItemProgram.h"
#include "Measurements.h"
#include "ProcessTree.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t few = 20;
constexpr std::size_t many = 220;

/// In kilobytes, when all items have been shown and what draws them has ended.
double memoryAtRest(MeasuringHost& host)
{
    constexpr auto pixelsAreKept = 4s; // for hosts that ask again
    host.showItems();
    waitForRest(pixelsAreKept);
    return static_cast<double>(ownMemory(ProcessTree::members())) * 1.024;
}

double bareMemory(const Setting& setting, MeasuringHost& host, std::size_t items)
{
    const UserFolders folders;
    ItemProgram program({ setting.programs / "bare_items", std::to_string(items) }, folders, host);
    program.synchronise(items);
    return memoryAtRest(host);
}

double ourMemory(const Setting& setting, MeasuringHost& host, std::size_t items)
{
    const UserFolders folders;
    folders.setMenuBarBookmarks(bookmarksWithSymbols(setting.programs, items));
    host.reset();
    ProgramRun run({ setting.programs / "perchly" }, folders.environment());
    (void)host.waitForItems(items + 1); // and the one of Perchly itself
    const auto memory = memoryAtRest(host);
    run.end();
    host.waitForDeparture();
    return memory;
}

} // namespace

void measureItemMemory(const Setting& setting, MeasuringHost& host, Report& report)
{
    using Take = double (*)(const Setting&, MeasuringHost&, std::size_t);
    Series bare;
    Series ours;
    const auto taker = [&](Take memoryWith, Series& into) {
        return [&into, &setting, &host, memoryWith](bool counts) {
            const auto added = memoryWith(setting, host, many) - memoryWith(setting, host, few);
            if (counts)
                into.push_back(added / (many - few));
        };
    };
    interleave(setting.runs, taker(bareMemory, bare), taker(ourMemory, ours));
    Series above;
    for (std::size_t run = 0; run < ours.size(); ++run)
        above.push_back(ours[run] - bare[run]);
    constexpr auto kilobytes = 60.0;
    report.add({ "Memory of each further item, without what belongs to files", "kB", bare, ours, std::nullopt });
    report.add({ "What of it is above the bare item's", "kB", std::nullopt, above, kilobytes });
}

} // namespace bench
