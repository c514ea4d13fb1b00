#import "platform/macos/appkit/ActionTarget.h"

@implementation PerchlyActionTarget

- (void)invoke:(id)sender
{
    // A copy, because the handler may let go of this object.
    void (^handler)(void) = self.handler;
    if (handler)
        handler();
}

@end
