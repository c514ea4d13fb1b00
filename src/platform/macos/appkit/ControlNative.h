#pragma once

#import "platform/macos/appkit/ActionTarget.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {

/// A control whose action goes to the target.
[[nodiscard]] inline std::unique_ptr<View::Native> makeNativeControl(NSControl* control, PerchlyActionTarget* target)
{
    control.target = target;
    control.action = @selector(invoke:);
    return makeNative(control, target);
}

/// A target's handler that sends the action of the target's view; silent for a view that is going.
[[nodiscard]] inline void (^actionHandler(View& view, const Action& action))(void)
{
    View* sender = &view;
    const Action* sent = &action;
    return ^{
        // Held until the operation has returned, which may take the view away.
        if (const auto self = sender->weak_from_this().lock())
            sent->send(*self);
    };
}

} // namespace appkit
