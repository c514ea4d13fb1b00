#include "BrowserProgram.h"
#include "Measurements.h"
#include "PageServer.h"
#include "ProcessTree.h"
#include "Turns.h"

#include <array>

namespace bench {
namespace {

using namespace std::chrono_literals;

struct Step {
    std::size_t browsers;
    double limit;
};

constexpr std::array steps { Step { 1, 1.08 }, Step { 3, 1.05 }, Step { 5, 1.05 } };

using Megabytes = std::array<Series, steps.size()>;

/// Opens one page after the other; the last one is on the screen when the memory is taken.
void openAll(BrowserProgram& program, Megabytes* into)
{
    constexpr auto tolerance = 10; // milliseconds: kept pages have their timers
    ScreenProbe screen;
    std::size_t browsers = 0;
    for (std::size_t step = 0; step < steps.size(); ++step) {
        for (; browsers < steps.at(step).browsers; ++browsers) {
            if (browsers > 0)
                program.hide(screen);
            (void)program.show(browsers, screen);
            waitForRest(300ms, tolerance);
        }
        waitForRest(1s, tolerance);
        if (into)
            into->at(step).push_back(static_cast<double>(proportionalMemory(ProcessTree::members())) / 1024);
    }
}

} // namespace

void measureMemory(const Setting& setting, MeasuringHost& host, Report& report)
{
    const PageServers servers(steps.back().browsers);
    const auto addresses = servers.addresses("article");
    Megabytes bare;
    Megabytes ours;
    interleave(
        setting.runs,
        [&](bool counts) {
            BareBrowsers program(setting.programs, addresses);
            openAll(program, counts ? &bare : nullptr);
        },
        [&](bool counts) {
            PerchlyBrowsers program(setting.programs, host, addresses);
            openAll(program, counts ? &ours : nullptr);
        });
    for (std::size_t step = 0; step < steps.size(); ++step) {
        const auto [browsers, limit] = steps.at(step);
        report.add({ "Memory with " + std::to_string(browsers) + (browsers == 1 ? " browser" : " browsers")
                + " (PSS, all processes)",
            "MiB", bare.at(step), ours.at(step), limit });
    }
}

} // namespace bench
