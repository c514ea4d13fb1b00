#include "Measurements.h"
#include "TableProgram.h"
#include "Turns.h"

namespace bench {
namespace {

constexpr std::size_t rows = 10000;

double openCold(TableProgram& program)
{
    return program.startAndOpen();
}

double openWarm(TableProgram& program)
{
    program.startWarm();
    return program.open();
}

} // namespace

void measureTableOpening(const Setting& setting, MeasuringHost& host, Report& report)
{
    const auto measure = [&](const std::string& name, double (*open)(TableProgram&)) {
        constexpr auto limit = 1.5;
        Result result { name, "ms", Series(), {}, limit };
        const auto openInto = [open](TableProgram&& program, Series* into) {
            const auto time = open(program);
            if (into)
                into->push_back(time);
        };
        interleave(
            setting.runs,
            [&](bool counts) { openInto(BareTable(setting.programs, rows), counts ? &*result.bare : nullptr); },
            [&](bool counts) {
                openInto(PerchlyTable(setting.programs, host, rows), counts ? &result.ours : nullptr);
            });
        report.add(std::move(result));
    };
    measure("From the click to the manager with 10 000 bookmarks, after another window", openWarm);
    measure("From the start of the program to it", openCold);
}

} // namespace bench
