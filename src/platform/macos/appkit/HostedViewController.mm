#import "platform/macos/appkit/HostedViewController.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"

@implementation PerchlyHostedViewController {
    std::shared_ptr<appkit::ViewController> _content;
}

+ (instancetype)controllerHosting:(const std::shared_ptr<appkit::ViewController>&)content
{
    // One controller for each view: AppKit links the two, also while the view moves from a bubble to a window.
    static NSMapTable<NSView*, PerchlyHostedViewController*>* controllers = [NSMapTable weakToWeakObjectsMapTable];
    NSView* view = appkit::nativeView(*content->view());
    PerchlyHostedViewController* controller = [controllers objectForKey:view];
    if (!controller) {
        controller = [[PerchlyHostedViewController alloc] initWithNibName:nil bundle:nil];
        controller->_content = content;
        [controllers setObject:controller forKey:view];
    }
    return controller;
}

- (void)leaveWindow
{
    // A new place takes the view by itself, but the window's link to the controller would stay, and pull the view away
    // from there when the window lets go of its content.
    NSWindow* window = self.view.window;
    if (window.contentViewController == self)
        window.contentViewController = nil;
}

- (void)loadView
{
    self.view = appkit::nativeView(*_content->view());
}

// Asked for when a popover gets the controller. A popover follows only changes that are announced, and those of the
// application's controllers aren't: whoever makes one sets the size of the popover or the window, too.
- (NSSize)preferredContentSize
{
    return appkit::nativeSize(_content->preferredContentSize());
}

@end
