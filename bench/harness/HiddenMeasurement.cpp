#include "BrowserProgram.h"
#include "Measurements.h"
#include "PageServer.h"
#include "ProcessTree.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t browsers = 5;

struct Unrest {
    Series wakeUps;
    Series processor;
};

/// What the program does from ten seconds after the last page was hidden, for ten seconds.
void watch(BrowserProgram& program, Unrest* into)
{
    constexpr auto settling = 10s;
    constexpr auto span = 10s;
    constexpr auto seconds = std::chrono::duration<double>(span).count();
    {
        ScreenProbe screen;
        for (std::size_t page = 0; page < browsers; ++page) {
            (void)program.show(page, screen);
            program.hide(screen);
        }
    }
    (void)waitUntil([] { return false; }, settling);
    const auto processes = ProcessTree::members();
    const auto switches = contextSwitches(processes);
    const auto processor = processorMilliseconds(processes);
    (void)waitUntil([] { return false; }, span);
    if (!into)
        return;
    into->wakeUps.push_back(switchesBetween(switches, contextSwitches(processes)) / seconds);
    into->processor.push_back((processorMilliseconds(processes) - processor) / seconds);
}

} // namespace

void measureHidden(const Setting& setting, MeasuringHost& host, Report& report)
{
    const PageServers servers(browsers);
    const auto addresses = servers.addresses("busy");
    Unrest bare;
    Unrest ours;
    interleave(
        setting.runs,
        [&](bool counts) {
            BareBrowsers program(setting.programs, addresses);
            watch(program, counts ? &bare : nullptr);
        },
        [&](bool counts) {
            PerchlyBrowsers program(setting.programs, host, addresses);
            watch(program, counts ? &ours : nullptr);
        });
    constexpr auto limit = 1.2;
    report.add({ "Wake-ups with five hidden busy pages", "1/s", bare.wakeUps, ours.wakeUps, limit });
    report.add({ "Processor time with them", "ms/s", bare.processor, ours.processor, limit });
}

} // namespace bench
