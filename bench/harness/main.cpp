// bench_harness PROGRAMS RUNS RESULTS [start|paint|show|memory|growth|hidden|idle|items|manager|store]...
// Measures the programs of a folder on the session bus and the display that it finds, prints a table and writes it to
// RESULTS. The status is 0 when every target is met, 1 when one is missed, 2 when something could not be measured.
#include "Measurements.h"
#include "ProcessTree.h"

#include <glib-unix.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace {

std::string machine()
{
    std::string load;
    std::getline(std::ifstream("/proc/loadavg"), load);
    std::ostringstream text;
    text << g_get_num_processors() << " processors, load " << load << "\n";
    return text.str();
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    constexpr std::size_t fixed = 3;
    if (arguments.size() < fixed) {
        std::fputs("usage: bench_harness PROGRAMS RUNS RESULTS"
                   " [start|paint|show|memory|growth|hidden|idle|items|manager|store]...\n",
            stderr);
        return 2;
    }
    const bench::Setting setting { std::filesystem::absolute(arguments[0]), std::stoi(arguments[1]) };
    const auto isWanted = [&](const char* name) {
        return arguments.size() == fixed
            || std::find(arguments.begin() + fixed, arguments.end(), name) != arguments.end();
    };

    bench::ProcessTree::answerForOrphans();
    constexpr auto interrupted = +[](gpointer) -> gboolean { bench::giveUp("interrupted"); };
    g_unix_signal_add(SIGINT, interrupted, nullptr);
    g_unix_signal_add(SIGTERM, interrupted, nullptr);
    bench::MeasuringHost host;
    bench::Report report;
    auto text = "Medians of " + arguments[1] + " runs. Before: " + machine();
    using Measure = void (*)(const bench::Setting&, bench::MeasuringHost&, bench::Report&);
    constexpr std::pair<const char*, Measure> measurements[] = {
        { "start", bench::measureStart },
        { "paint", bench::measurePaint },
        { "show", bench::measureShow },
        { "memory", bench::measureMemory },
        { "growth", bench::measureGrowth },
        { "hidden", bench::measureHidden },
        { "idle", bench::measureIdle },
        { "items", bench::measureItemSync },
        { "items", bench::measureItemTraffic },
        { "items", bench::measureItemIcons },
        { "items", bench::measureItemMemory },
        { "items", bench::measureItemIdle },
        { "manager", bench::measureTableOpening },
        { "manager", bench::measureTableSearch },
        { "manager", bench::measureTableMemory },
        { "manager", bench::measureTablePin },
    };
    for (const auto& [name, measure] : measurements) {
        if (isWanted(name))
            measure(setting, host, report);
    }
    if (isWanted("store"))
        bench::measureStore(setting, report);
    text += "After: " + machine() + "\n" + report.markdown();

    std::fputs(text.c_str(), stdout);
    std::ofstream(arguments[2]) << text;
    return report.isMissed() ? 1 : 0;
}
