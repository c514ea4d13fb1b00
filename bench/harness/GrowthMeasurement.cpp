#include "BrowserProgram.h"
#include "Measurements.h"
#include "PageServer.h"
#include "ProcessTree.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

struct Holding {
    double memory = 0; // MiB
    double descriptors = 0;
    double processes = 0;
};

Holding holding()
{
    constexpr auto tolerance = 10; // milliseconds: kept pages have their timers
    waitForRest(1s, tolerance);
    const auto members = ProcessTree::members();
    return { static_cast<double>(ownMemory(members)) / 1024, static_cast<double>(openDescriptors(members)),
        static_cast<double>(members.size()) };
}

struct Growth {
    Series memory; // percent
    Series descriptors;
    Series processes;
};

/// One and the same page, many times.
void reopen(PerchlyBrowsers& program, Growth& into)
{
    constexpr auto warm = 10;
    constexpr auto all = 200;
    ScreenProbe screen;
    auto opening = 0;
    // The least of some: one time in a few, pictures as large as the window still wait for their end.
    const auto leastUntil = [&](int last) {
        constexpr auto some = 5;
        auto least = std::optional<Holding>();
        while (opening < last) {
            (void)program.show(0, screen);
            program.hide(screen);
            if (++opening <= last - some)
                continue;
            const auto now = holding();
            if (!least || now.memory < least->memory)
                least = now;
        }
        return least.value();
    };
    const auto before = leastUntil(warm);
    const auto after = leastUntil(all);
    into.memory.push_back((after.memory / before.memory - 1) * 100);
    into.descriptors.push_back(after.descriptors - before.descriptors);
    into.processes.push_back(after.processes - before.processes);
}

/// Many pages, each once. A browser is kept, so each costs something; the later ones must not cost more than the first.
void openMany(PerchlyBrowsers& program, std::size_t pages, Growth& into)
{
    constexpr std::size_t warm = 10;
    ScreenProbe screen;
    Holding first;
    Holding before;
    for (std::size_t page = 0; page < pages; ++page) {
        (void)program.show(page, screen);
        program.hide(screen);
        if (page == 0)
            first = holding();
        if (page + 1 == warm)
            before = holding();
    }
    const auto after = holding();
    const auto excess = [&](double Holding::*what) {
        const auto early = (before.*what - first.*what) / static_cast<double>(warm - 1);
        const auto late = (after.*what - before.*what) / static_cast<double>(pages - warm);
        return std::pair { late - early, early };
    };
    const auto [memory, early] = excess(&Holding::memory);
    into.memory.push_back(memory / early * 100);
    into.descriptors.push_back(excess(&Holding::descriptors).first);
    into.processes.push_back(excess(&Holding::processes).first);
}

void add(Report& report, const std::string& what, const Growth& growth)
{
    constexpr auto percent = 2.0;
    report.add({ what + ": memory", "%", std::nullopt, growth.memory, percent });
    report.add({ what + ": descriptors", "", std::nullopt, growth.descriptors, 0.0 });
    report.add({ what + ": processes", "", std::nullopt, growth.processes, 0.0 });
}

} // namespace

void measureGrowth(const Setting& setting, MeasuringHost& host, Report& report)
{
    constexpr std::size_t pages = 50;
    constexpr auto patience = 30s;
    const PageServers servers(pages);
    const auto addresses = servers.addresses("");
    Growth reopened;
    Growth opened;
    std::string left;
    for (auto run = 0; run < setting.runs; ++run) {
        {
            PerchlyBrowsers program(setting.programs, host, { addresses.front() });
            reopen(program, reopened);
        }
        PerchlyBrowsers program(setting.programs, host, addresses);
        openMany(program, pages, opened);
        program.quit();
        if (!waitUntil([] { return ProcessTree::isEmpty(); }, patience))
            left += (left.empty() ? "run " : ", ") + std::to_string(run);
    }
    add(report, "Growth from the 10th to the 200th opening", reopened);
    add(report, "What each of 40 more browsers costs above each of the 9 before", opened);
    report.require("Of 50 browsers no process is left after the end", left);
}

} // namespace bench
