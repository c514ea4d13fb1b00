#include "platform/linux/popover/PopoverDismissal.h"

#include <utility>

namespace desktop {

void PopoverDismissal::shown()
{
    isShown_ = true;
    isInGrace_ = false;
    wasBehindDialog_ = false;
    turnedAway_ = false;
    turnedAwayAt_.reset();
}

void PopoverDismissal::closed(Time now)
{
    isShown_ = false;
    isInGrace_ = false;
    if (turnedAway_)
        turnedAwayAt_ = now;
}

PopoverDismissal::Decision PopoverDismissal::activeChanged(bool isActive)
{
    const auto wasInGrace = isInGrace_;
    isInGrace_ = isTransient_ && isShown_ && !isActive;
    if (!isInGrace_)
        wasBehindDialog_ = false;
    if (!isInGrace_ || wasInGrace)
        return {};
    return { .wakesAfter = grace };
}

PopoverDismissal::Decision PopoverDismissal::woken(const Surroundings& surroundings)
{
    if (!isInGrace_)
        return {};
    if (surroundings.isActive) {
        isInGrace_ = false;
        return {};
    }
    if (std::exchange(wasBehindDialog_, surroundings.hasDialog) && !surroundings.hasDialog)
        return { .takesKeyboard = true, .wakesAfter = grace };
    // Nothing announces that the keyboard which was lent goes on to someone else, so look again.
    if (surroundings.isActiveWindow || surroundings.hasDialog || surroundings.isButtonDown)
        return { .wakesAfter = grace };
    return turnAway();
}

PopoverDismissal::Decision PopoverDismissal::pressed(Press press, bool hasDialog)
{
    if (!isTransient_ || !isShown_ || hasDialog || press != Press::Elsewhere)
        return {};
    return turnAway();
}

PopoverDismissal::Decision PopoverDismissal::escapePressed()
{
    return { .closes = isTransient_ && isShown_ };
}

bool PopoverDismissal::wasClosedByClick(Time now) const
{
    return !isShown_ && turnedAwayAt_ && now - *turnedAwayAt_ < reopenGuard;
}

PopoverDismissal::Decision PopoverDismissal::turnAway()
{
    isInGrace_ = false;
    turnedAway_ = true;
    return { .closes = true };
}

} // namespace desktop
