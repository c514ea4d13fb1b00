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

- (void)loadView
{
    self.view = appkit::nativeView(*_content->view());
}

- (NSSize)preferredContentSize
{
    return appkit::nativeSize(_content->preferredContentSize());
}

@end
