#include "IconReader.h"
#include "ItemProgram.h"
#include "Measurements.h"
#include "ProcessTree.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t items = 20;
constexpr auto changesInARun = 3; // of each kind, so that the slowest of twenty can be told

/// Every time another one.
std::string emojiAt(std::size_t index)
{
    constexpr gunichar first = 0x1F400; // a rat; animals follow
    std::array<char, 6> bytes {};
    const auto length = g_unichar_to_utf8(first + static_cast<gunichar>(index), bytes.data());
    return { bytes.data(), static_cast<std::size_t>(length) };
}

struct Kind {
    const char* name;
    std::function<void(ItemProgram&, const std::string& bookmark, std::size_t index)> change;
    Series first;
    Series next;
};

void change(ItemProgram& program, Kind& kind, MeasuringHost& host, std::size_t& index)
{
    const auto bookmark = std::to_string(index % items);
    IconReader reader(host.itemWithId("perchly-" + bookmark).name);
    const auto changeOnce = [&](Series& into) {
        const auto ordered = Clock::now();
        kind.change(program, bookmark, index++);
        into.push_back(millisecondsBetween(ordered, reader.waitForNewPicture()));
    };
    // Nothing that draws is running, as when a user changes an icon after a while.
    if (!waitUntil([] { return ProcessTree::members().size() == 1; }, 30s))
        giveUp("the drawing program does not end");
    waitForRest(300ms);
    changeOnce(kind.first);
    waitForRest(150ms);
    changeOnce(kind.next);
}

} // namespace

void measureItemIcons(const Setting& setting, MeasuringHost& host, Report& report)
{
    const auto bookmarks = bookmarksWithSymbols(setting.programs, items);
    const auto symbols = symbolNames(setting.programs, 1000);
    Kind kinds[] = {
        { "A symbol",
            [&](auto& program, auto& bookmark, auto index) {
                program.setIcon(bookmark, symbols.at(items + index), "");
            },
            {}, {} },
        { "A text",
            [](auto& program, auto& bookmark, auto index) {
                program.setIcon(bookmark, "T" + std::to_string(index), "");
            },
            {}, {} },
        { "An emoji", [](auto& program, auto& bookmark, auto index) { program.setIcon(bookmark, "", emojiAt(index)); },
            {}, {} },
    };
    for (auto run = 0; run < setting.runs; ++run) {
        const UserFolders folders;
        folders.setMenuBarBookmarks(bookmarks);
        ItemProgram program({ setting.programs / "bench_items_perchly" }, folders, host);
        program.synchronise(items);
        host.showItems();
        std::size_t index = 0;
        for (auto round = 0; round < changesInARun; ++round) {
            for (auto& kind : kinds)
                change(program, kind, host, index);
        }
    }
    constexpr auto milliseconds = 50.0;
    constexpr auto slowest = 0.95;
    const auto add = [&](const std::string& name, const Series& series) {
        report.add({ name, "ms", std::nullopt, series, milliseconds });
        report.add({ "Its 95th percentile", "ms", std::nullopt, { percentile(series, slowest) }, milliseconds });
    };
    for (const auto& kind : kinds) {
        add(std::string(kind.name) + ": from the change to the picture at the status area", kind.first);
        add(std::string(kind.name) + ": the same right after another change", kind.next);
    }
}

} // namespace bench
