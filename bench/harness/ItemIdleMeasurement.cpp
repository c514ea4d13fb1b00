#include "Idle.h"
#include "ItemProgram.h"
#include "Measurements.h"
#include "PageServer.h"
#include "Pages.h"

namespace bench {
namespace {

constexpr std::size_t items = 20;

/// Every kind of icon, in turns.
std::vector<UserFolders::MenuBarBookmark> bookmarksOfAllKinds(const Setting& setting, const PageServer& server)
{
    const auto site = server.address();
    const std::string plainSite = "http://" + std::string(siteWithoutIcon) + "/";
    const auto symbols = symbolNames(setting.programs, items);
    std::vector<UserFolders::MenuBarBookmark> bookmarks;
    while (bookmarks.size() < items) {
        const auto number = std::to_string(bookmarks.size());
        const auto atSite = [&](std::string file) { return file.insert(0, site).append("?").append(number); };
        const UserFolders::MenuBarBookmark kinds[] = {
            { "Symbol " + number, site, symbols.at(bookmarks.size()), {}, {} },
            { "Text " + number, site, "T" + number, {}, {} },
            { "Emoji " + number, site, {}, bookmarks.size() % 2 == 0 ? "\U0001F98A" : "\U0001F419", {} },
            { "Icon address, a drawing " + number, site, {}, {}, atSite("icon.svg") },
            { "Icon address, a photo " + number, site, {}, {}, atSite("picture") },
            { "Favicon " + number, site, {}, {}, {} },
            { "Letter " + number, plainSite, {}, {}, {} },
        };
        bookmarks.push_back(kinds[bookmarks.size() % std::size(kinds)]);
    }
    return bookmarks;
}

} // namespace

void measureItemIdle(const Setting& setting, MeasuringHost& host, Report& report)
{
    const PageServer server;
    const auto bookmarks = bookmarksOfAllKinds(setting, server);
    Idle idle;
    for (auto run = 0; run < setting.runs; ++run) {
        const UserFolders folders;
        folders.setMenuBarBookmarks(bookmarks);
        folders.setFaviconService(server.origin());
        watchIdle(setting.programs / "perchly", folders, items + 1, host, idle); // and the one of Perchly itself
    }
    constexpr auto megabytes = 25.0;
    report.add({ "Memory at rest with 20 items (PSS, all processes)", "MiB", std::nullopt, idle.megabytes, megabytes });
    report.add({ "Wake-ups at rest with them", "1/s", std::nullopt, idle.wakeUps, 0.0 });
    requireNothingElse("at rest with them", idle, report);
}

} // namespace bench
