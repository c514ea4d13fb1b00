#include "Measurements.h"
#include "MenuReader.h"
#include "TableProgram.h"
#include "Turns.h"

#include <fstream>
#include <iterator>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 30s;

/// The pin in the sixth row of the manager's window, which is in the middle of the screen.
constexpr ScreenArea pinArea { 801, 355, 24, 24 };

struct Times {
    Series row;
    Series menu;
    Series file;
};

/// Whether the file has a pinned bookmark.
bool hasPin(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    const std::string contents { std::istreambuf_iterator<char>(stream), {} };
    return contents.find("\"isPinned\":true") != std::string::npos;
}

void click(PerchlyTable& program, MenuReader& menu, ScreenProbe& screen, Times& into)
{
    const auto file = program.folders().bookmarkFile();
    const auto wasPinned = hasPin(file);
    const auto before = std::filesystem::last_write_time(file);
    program.input().holdButton();
    waitForRest(200ms, 1);
    screen.watch();
    menu.forget();
    std::optional<Clock::time_point> written;
    const auto isDone = [&] {
        if (!written && std::filesystem::last_write_time(file) != before)
            written = Clock::now();
        return written && menu.lastChange() && screen.lastChange();
    };
    const auto released = Clock::now();
    program.input().releaseButton();
    if (!waitUntil(isDone, patience))
        giveUp("a click on the pin does not reach the row, the menu and the file");
    waitForRest(300ms, 1);
    if (hasPin(file) == wasPinned)
        giveUp("the click on the pin is not in the file");
    into.row.push_back(millisecondsBetween(released, screen.lastChange().value()));
    into.menu.push_back(millisecondsBetween(released, menu.lastChange().value()));
    into.file.push_back(millisecondsBetween(released, written.value()));
}

} // namespace

void measureTablePin(const Setting& setting, MeasuringHost& host, Report& report)
{
    constexpr std::size_t rows = 10000;
    constexpr auto clicks = 4; // sets it as often as it takes it away
    Times times;
    for (auto run = 0; run < setting.runs; ++run) {
        PerchlyTable program(setting.programs, host, rows);
        program.folders().stopAnimations();
        program.start();
        (void)program.open();
        MenuReader menu(host.rowOf({ "Bookmarks Manager" }));
        program.input().point(pinArea.x + pinArea.width / 2, pinArea.y + pinArea.height / 2);
        waitForRest(300ms, 1);
        ScreenProbe screen(pinArea);
        for (auto number = 0; number < clicks; ++number)
            click(program, menu, screen, times);
    }
    const auto add = [&](const char* name, const Series& series) {
        report.add({ name, "ms", std::nullopt, series, std::nullopt });
    };
    add("From a click on a pin, of 10 000 bookmarks, to the file", times.file);
    add("To the menu at the status area", times.menu);
    add("To the row on the screen", times.row);
}

} // namespace bench
