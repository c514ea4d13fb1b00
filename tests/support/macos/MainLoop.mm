#include "support/MainLoop.h"

#import <AppKit/AppKit.h>

namespace perchly::test {
namespace {

void handleNextEvent(NSDate* until)
{
    @autoreleasepool {
        NSEvent* event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                            untilDate:until
                                               inMode:NSDefaultRunLoopMode
                                              dequeue:YES];
        if (event)
            [NSApp sendEvent:event];
    }
}

} // namespace

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    auto holds = condition();
    while (!holds && std::chrono::steady_clock::now() < end) {
        handleNextEvent([NSDate dateWithTimeIntervalSinceNow:0.005]);
        holds = condition();
    }
    return holds;
}

void handlePendingEvents()
{
    handleNextEvent(NSDate.distantPast);
}

} // namespace perchly::test
