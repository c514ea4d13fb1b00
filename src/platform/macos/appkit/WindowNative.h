#pragma once

#include "platform/appkit/Window.h"

#import <AppKit/AppKit.h>

namespace appkit {

struct Window::Native {
    NSWindow* window;
    /// Only of windows that were made as such; others are borrowed for a look.
    NSObject<NSWindowDelegate>* delegate = nil;
};

/// The window that shows the view, or null. One that was made as a Window is found again as long as somebody has it.
[[nodiscard]] std::shared_ptr<Window> windowOf(NSView* view);

} // namespace appkit
