#include "platform/foundation/Timer.h"

#include "platform/foundation/FatalError.h"

#import <Foundation/Foundation.h>

namespace foundation {

struct Timer::Native {
    NSTimer* timer;
};

Timer::Timer(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Timer::~Timer()
{
    invalidate();
}

std::unique_ptr<Timer> Timer::scheduledTimer(std::chrono::milliseconds interval, std::function<void()> block)
{
    assertMainThread();
    NSTimer* timer = [NSTimer timerWithTimeInterval:std::chrono::duration<double>(interval).count()
                                            repeats:NO
                                              block:^(NSTimer* fired) {
                                                  // A copy, because the block may let go of this timer.
                                                  const auto work = block;
                                                  work();
                                              }];
    // A timer that is only scheduled waits while a menu is open or a window's edge is dragged.
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    return std::unique_ptr<Timer>(new Timer(std::make_unique<Native>(Native { timer })));
}

void Timer::invalidate()
{
    [native_->timer invalidate];
}

} // namespace foundation
