#include "Measurements.h"
#include "ProcessTree.h"
#include "TableProgram.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

struct Megabytes {
    double before = 0;
    double manager = 0;
};

double memoryAtRest()
{
    waitForRest(1s, 1);
    return static_cast<double>(ownMemory(ProcessTree::members())) / 1024;
}

/// What the program takes, and what the manager adds to it, once it has been scrolled through.
Megabytes take(TableProgram& program)
{
    constexpr auto pages = 30;
    program.startWarm();
    Megabytes megabytes;
    megabytes.before = memoryAtRest();
    (void)program.open();
    program.enterTable();
    for (auto page = 0; page < pages; ++page) {
        program.input().press("Next");
        waitForRest(50ms, 1);
    }
    program.input().press("End");
    megabytes.manager = memoryAtRest() - megabytes.before;
    return megabytes;
}

} // namespace

void measureTableMemory(const Setting& setting, MeasuringHost& host, Report& report)
{
    constexpr std::size_t few = 100;
    constexpr std::size_t many = 100000;
    Series store;
    Series added;
    Series beyond;
    for (auto run = 0; run < setting.runs; ++run) {
        const auto with = [&](std::size_t rows) {
            PerchlyTable program(setting.programs, host, rows);
            return take(program);
        };
        const auto ofFew = with(few);
        const auto ofMany = with(many);
        store.push_back(ofMany.before - ofFew.before);
        added.push_back(ofMany.manager - ofFew.manager);
        beyond.push_back(added.back() - store.back());
    }
    // One number for each row, and nothing else.
    constexpr auto megabytes = 1.0;
    const auto add = [&](const char* name, const Series& series, std::optional<double> limit) {
        report.add({ name, "MiB", std::nullopt, series, limit });
    };
    add("Memory of 100 000 bookmarks above that of 100", store, std::nullopt);
    add("What the manager adds with so many, above what it adds with 100", added, std::nullopt);
    add("What of it is not its own list of them", beyond, megabytes);
}

} // namespace bench
