#pragma once

#include "platform/appkit/StatusBarButton.h"
#import "platform/macos/appkit/ActionTarget.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct StatusBarButton::Native {
    NSStatusBarButton* button;
    PerchlyActionTarget* target = [[PerchlyActionTarget alloc] init];
};

} // namespace appkit
