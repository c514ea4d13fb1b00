#include "platform/linux/desktop/UnfinishedWork.h"

#include "platform/linux/desktop/GObject.h"

#include <vector>

namespace desktop {
namespace {

struct Waiting {
    std::function<void()> finished;
    SourceHandle deadline;
};

struct State {
    std::vector<const UnfinishedWork*> works;
    Waiting waiting;
};

State& state()
{
    // Never destroyed: work may outlive what is static.
    static auto& state = *new State;
    return state;
}

void endWaiting()
{
    const auto waiting = std::exchange(state().waiting, {});
    if (waiting.finished)
        waiting.finished();
}

} // namespace

UnfinishedWork::UnfinishedWork(std::function<void()> hurry)
    : hurry_(std::move(hurry))
{
    state().works.push_back(this);
}

UnfinishedWork::~UnfinishedWork()
{
    std::erase(state().works, this);
    if (state().works.empty())
        endWaiting();
}

void finishWork(unsigned milliseconds, std::function<void()> finished)
{
    if (state().works.empty())
        return finished();
    state().waiting = { std::move(finished), callAfter(milliseconds, endWaiting) };
    // Copies: some may end at once.
    std::vector<std::function<void()>> hurries;
    for (const auto* work : state().works)
        hurries.push_back(work->hurry());
    for (const auto& hurry : hurries)
        hurry();
}

} // namespace desktop
