#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/KeyEquivalent.h"

#import <AppKit/AppKit.h>

namespace appkit {
class View;
} // namespace appkit

/// The NSView behind a view that is no control.
@interface PerchlyPlainView : NSView

- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

/// Null once it is gone, because AppKit may keep the NSView for longer.
@property (nonatomic) appkit::View* owner;

/// Whether the mouse's and the cursor's operations go to the owner. Without, they are NSView's own.
@property (nonatomic) BOOL handlesMouse;

- (void)addKeyEquivalent:(const appkit::KeyEquivalent&)key action:(appkit::Action)action;

@end
