#include "platform/foundation/Timer.h"

#include "platform/foundation/FatalError.h"
#include "platform/linux/desktop/GObject.h"

namespace foundation {

struct Timer::Native {
    desktop::SourceHandle source;
};

Timer::Timer(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Timer::~Timer() = default;

std::unique_ptr<Timer> Timer::scheduledTimer(std::chrono::milliseconds interval, std::function<void()> block)
{
    assertMainThread();
    auto source = desktop::callAfter(static_cast<unsigned>(interval.count()), std::move(block));
    return std::unique_ptr<Timer>(new Timer(std::make_unique<Native>(Native { std::move(source) })));
}

void Timer::invalidate()
{
    native_->source.reset();
}

} // namespace foundation
