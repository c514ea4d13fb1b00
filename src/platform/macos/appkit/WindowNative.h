#pragma once

#include "platform/appkit/Window.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct Window::Native {
    NSWindow* window;
};

} // namespace appkit
