#include "ItemProgram.h"
#include "Measurements.h"
#include "Turns.h"

#include <functional>
#include <optional>

namespace bench {

void measureItemSync(const Setting& setting, MeasuringHost& host, Report& report)
{
    constexpr std::size_t items = 200;
    const auto bookmarks = bookmarksWithSymbols(setting.programs, items);
    const UserFolders kept; // the warming round leaves there what is drawn for the items
    kept.setMenuBarBookmarks(bookmarks);
    const auto measure
        = [&](const std::string& name, std::optional<double> limit, const std::function<double()>& ours) {
              Result result { name, "ms", Series(), {}, limit };
              const auto taker = [](const std::function<double()>& take, Series& into) {
                  return [&into, take](bool counts) {
                      const auto time = take();
                      if (counts)
                          into.push_back(time);
                  };
              };
              const auto bare = [&] {
                  ItemProgram program({ setting.programs / "bare_items", std::to_string(items) }, kept, host);
                  return program.synchronise(items);
              };
              interleave(setting.runs, taker(bare, *result.bare), taker(ours, result.ours));
              report.add(std::move(result));
          };
    const auto synchronise = [&](const UserFolders& folders) {
        ItemProgram program({ setting.programs / "bench_items_perchly" }, folders, host);
        return program.synchronise(items);
    };
    constexpr auto limit = 1.5;
    measure("Synchronising 200 bookmarks with their items", limit, [&] { return synchronise(kept); });
    // Once in the life of a bookmark, a file has to be written.
    measure("The same with symbols that never were shown before", std::nullopt, [&] {
        const UserFolders fresh;
        fresh.setMenuBarBookmarks(bookmarks);
        return synchronise(fresh);
    });
}

} // namespace bench
