#include "platform/linux/desktop/StartUp.h"

#include "platform/linux/desktop/GObject.h"

#include <vector>

namespace desktop {
namespace {

constexpr unsigned patienceMilliseconds = 1000;

struct StartUp {
    bool hasBegun = false;
    /// While it is under way.
    SourceHandle deadline;
    std::vector<std::function<void()>> waiting;
};

StartUp& startUp()
{
    // Never destroyed: what waits may own what is static.
    static auto& startUp = *new StartUp;
    return startUp;
}

} // namespace

bool beginStartUp()
{
    if (std::exchange(startUp().hasBegun, true))
        return false;
    startUp().deadline = callAfter(patienceMilliseconds, endStartUp);
    return true;
}

void endStartUp()
{
    if (!startUp().deadline)
        return;
    startUp().deadline.reset();
    for (const auto& work : std::exchange(startUp().waiting, {}))
        work();
}

void afterStartUp(std::function<void()> work)
{
    if (startUp().deadline)
        startUp().waiting.push_back(std::move(work));
    else
        work();
}

} // namespace desktop
