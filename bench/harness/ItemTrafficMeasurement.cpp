#include "BusMonitor.h"
#include "IconReader.h"
#include "ItemProgram.h"
#include "Measurements.h"
#include "Turns.h"

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t items = 200;

std::string listed(const std::vector<std::string>& words)
{
    std::string list;
    for (const auto& word : words)
        list += " " + word;
    return list;
}

} // namespace

void measureItemTraffic(const Setting& setting, MeasuringHost& host, Report& report)
{
    static constexpr const char* sizes[] = { "Small", "Large", "Extra Large", "Medium" };
    const UserFolders folders;
    folders.setMenuBarBookmarks(bookmarksWithSymbols(setting.programs, items));
    host.reset();
    ProgramRun run({ setting.programs / "perchly" }, folders.environment());
    (void)host.waitForItems(items + 1); // and the one of Perchly itself
    host.showItems();

    Series messages;
    std::string others;
    const auto& changed = host.itemWithId("perchly-100");
    IconReader reader(changed.name);
    for (const auto* size : sizes) {
        const auto row = host.rowOf(changed, { "Icon Size", size });
        waitForRest(1s);
        const BusMonitor monitor;
        host.click(row);
        (void)reader.waitForNewPicture();
        waitForRest(1s);
        for (const auto& item : host.items()) {
            const auto said = monitor.messagesFrom(item.name);
            if (item.name == changed.name)
                messages.push_back(static_cast<double>(said.size()));
            else if (!said.empty())
                others += (others.empty() ? "" : ",") + std::string(" ") + item.name + ":" + listed(said);
        }
    }
    run.end();
    host.waitForDeparture();
    report.add({ "Messages of an item whose icon's size was changed by a click, all replies among them", "",
        std::nullopt, messages, std::nullopt });
    report.require("None of the 200 other items speaks", others);
}

} // namespace bench
