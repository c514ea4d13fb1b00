#include "Turns.h"

#include "ProcessTree.h"
#include "Waiting.h"

#include <algorithm>

namespace bench {

using namespace std::chrono_literals;

void interleave(int runs, const std::function<void(bool counts)>& bare, const std::function<void(bool counts)>& ours)
{
    for (auto round = 0; round <= runs; ++round) {
        const auto& first = round % 2 == 0 ? bare : ours;
        const auto& second = round % 2 == 0 ? ours : bare;
        first(round > 0);
        second(round > 0);
    }
}

void waitForRest(std::chrono::milliseconds span, double tolerance)
{
    constexpr auto patience = 60s;
    const auto look = std::min<std::chrono::milliseconds>(span / 3, 100ms); // a look costs time, too
    const auto deadline = Clock::now() + patience;
    auto base = processorMilliseconds(ProcessTree::members());
    for (auto since = Clock::now(); Clock::now() - since < span;) {
        if (Clock::now() > deadline)
            giveUp("the program does not come to rest");
        (void)waitUntil([] { return false; }, look);
        const auto now = processorMilliseconds(ProcessTree::members());
        if (now - base > tolerance) {
            base = now;
            since = Clock::now();
        }
    }
}

} // namespace bench
