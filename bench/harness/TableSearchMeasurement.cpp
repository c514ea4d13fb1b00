#include "Measurements.h"
#include "TableProgram.h"
#include "Turns.h"

#include <array>
#include <optional>

namespace bench {
namespace {

using namespace std::chrono_literals;

constexpr auto limit = 0.5;

struct Search {
    const char* name;
    std::vector<std::string> keysBefore;
    std::string key;
    /// None where no rows are to be looked through, and both programs do little but paint.
    std::optional<double> limit;
};

/// Each changes the rows in the window's middle.
const std::array searches {
    Search { "A letter that one row in three has", {}, "b", limit },
    Search { "The third letter of a word, one row in twelve", { "c", "o" }, "n", limit },
    Search { "A letter that one row in 5 000 has", {}, "z", limit },
    Search { "A letter that no row has", {}, "q", limit },
    Search { "The last digit of a number, when few rows are left", { "9", "8", "7" }, "6", std::nullopt },
    Search { "The key that takes the only letter away", { "b" }, "BackSpace", std::nullopt },
};

using Times = std::array<Series, searches.size()>;

void search(TableProgram& program, Times* into)
{
    constexpr auto times = 3;
    program.start();
    (void)program.open();
    for (auto round = 0; round < times; ++round) {
        for (std::size_t index = 0; index < searches.size(); ++index) {
            for (const auto& key : searches.at(index).keysBefore) {
                program.input().press(key);
                waitForRest(200ms, 1);
            }
            const auto time = program.press(searches.at(index).key);
            if (into)
                into->at(index).push_back(time);
            program.input().press("ctrl+a BackSpace");
            waitForRest(200ms, 1);
        }
    }
}

void measureSearchAmong(std::size_t rows, const Setting& setting, MeasuringHost& host, Report& report)
{
    Times bare;
    Times ours;
    interleave(
        setting.runs,
        [&](bool counts) {
            BareTable program(setting.programs, rows);
            search(program, counts ? &bare : nullptr);
        },
        [&](bool counts) {
            PerchlyTable program(setting.programs, host, rows);
            search(program, counts ? &ours : nullptr);
        });
    for (std::size_t index = 0; index < searches.size(); ++index) {
        const auto& [name, keysBefore, key, most] = searches.at(index);
        report.add({ std::string(name) + ": until the rows among " + std::to_string(rows) + " are painted", "ms",
            bare.at(index), ours.at(index), most });
    }
}

} // namespace

void measureTableSearch(const Setting& setting, MeasuringHost& host, Report& report)
{
    for (const std::size_t rows : { 10000, 100000 })
        measureSearchAmong(rows, setting, host, report);
}

} // namespace bench
