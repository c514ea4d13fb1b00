#include "Measurements.h"
#include "TableProgram.h"
#include "Turns.h"

namespace bench {
namespace {

constexpr std::size_t rows = 10000;

struct Times {
    Series wall;
    Series processor; // of all there was until it was at rest
};

using Open = double (*)(TableProgram&);

double openCold(TableProgram& program)
{
    return program.startAndOpen();
}

double openWarm(TableProgram& program)
{
    program.startWarm();
    return program.open();
}

void take(TableProgram&& program, Open open, Times* into)
{
    const auto wall = open(program);
    const auto processor = program.end();
    if (!into)
        return;
    into->wall.push_back(wall);
    into->processor.push_back(processor);
}

} // namespace

void measureTableOpening(const Setting& setting, MeasuringHost& host, Report& report)
{
    constexpr auto limit = 1.5;
    const auto measure = [&](Open open, Times& bare, Times& ours) {
        interleave(
            setting.runs, [&](bool counts) { take(BareTable(setting.programs, rows), open, counts ? &bare : nullptr); },
            [&](bool counts) { take(PerchlyTable(setting.programs, host, rows), open, counts ? &ours : nullptr); });
    };
    Times bareWarm;
    Times oursWarm;
    measure(openWarm, bareWarm, oursWarm);
    report.add({ "From the click to the manager with 10 000 bookmarks, after another window", "ms", bareWarm.wall,
        oursWarm.wall, limit });
    Times bareCold;
    Times oursCold;
    measure(openCold, bareCold, oursCold);
    report.add({ "From the start of the program to it", "ms", bareCold.wall, oursCold.wall, limit });
    report.add({ "Processor time of that, all processes", "ms", bareCold.processor, oursCold.processor, std::nullopt });
}

} // namespace bench
