#include "BrowserProgram.h"
#include "Measurements.h"
#include "PageServer.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto showings = 40;

/// From a click to the pixels of a page that was there before. Both programs are there, and one waits for the other.
void showManyTimes(BrowserProgram& first, Series& ofFirst, BrowserProgram& second, Series& ofSecond)
{
    ScreenProbe screen;
    const auto showOnce = [&](BrowserProgram& program, Series* into) {
        const auto time = program.show(0, screen);
        if (into)
            into->push_back(time);
        program.hide(screen);
        waitForRest(150ms, 1);
    };
    // The first click makes the browser, the second one warms what only a second one needs.
    for (auto warming = 0; warming < 2; ++warming) {
        showOnce(first, nullptr);
        showOnce(second, nullptr);
    }
    for (auto showing = 0; showing < showings; ++showing) {
        showOnce(first, &ofFirst);
        showOnce(second, &ofSecond);
    }
}

} // namespace

void measureShow(const Setting& setting, MeasuringHost& host, Report& report)
{
    const PageServer server;
    Series bareTimes;
    Series ourTimes;
    for (auto run = 0; run < setting.runs; ++run) {
        BareBrowsers bare(setting.programs, { server.address() });
        PerchlyBrowsers ours(setting.programs, host, { server.address() });
        if (run % 2 == 0)
            showManyTimes(bare, bareTimes, ours, ourTimes);
        else
            showManyTimes(ours, ourTimes, bare, bareTimes);
    }
    constexpr auto limit = 1.3;
    constexpr auto slowest = 0.95;
    constexpr auto milliseconds = 25.0;
    report.add({ "From a click to the pixels of a kept browser", "ms", bareTimes, ourTimes, limit });
    report.add({ "Its 95th percentile", "ms", std::nullopt, { percentile(ourTimes, slowest) }, milliseconds });
    report.add(
        { "The bare program's, for scale", "ms", std::nullopt, { percentile(bareTimes, slowest) }, std::nullopt });
}

} // namespace bench
