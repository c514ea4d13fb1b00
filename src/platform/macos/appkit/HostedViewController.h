#pragma once

#include "platform/appkit/ViewController.h"

#import <AppKit/AppKit.h>

/// The NSViewController that stands for a view controller of the application. It keeps it alive.
@interface PerchlyHostedViewController : NSViewController

+ (instancetype)controllerHosting:(const std::shared_ptr<appkit::ViewController>&)content;

/// Takes the view out of the window whose content it is, if it is one's.
- (void)leaveWindow;

@end
