#include "platform/appkit/Popover.h"

#include "platform/macos/appkit/Conversions.h"
#import "platform/macos/appkit/HostedViewController.h"
#include "platform/macos/appkit/StatusBarButtonNative.h"

@interface PerchlyPopoverDelegate : NSObject <NSPopoverDelegate>
@property (nonatomic) std::weak_ptr<appkit::PopoverDelegate> delegate;
@end

@implementation PerchlyPopoverDelegate

- (void)popoverDidClose:(NSNotification*)notification
{
    if (auto delegate = self.delegate.lock())
        delegate->popoverDidClose();
}

@end

namespace appkit {

struct Popover::Native {
    NSPopover* popover = [[NSPopover alloc] init];
    PerchlyPopoverDelegate* delegate = [[PerchlyPopoverDelegate alloc] init];
};

Popover::Popover()
    : native_(std::make_unique<Native>())
{
    native_->popover.delegate = native_->delegate;
}

Popover::~Popover()
{
    [native_->popover close];
}

void Popover::setBehavior(PopoverBehavior behavior)
{
    native_->popover.behavior
        = behavior == PopoverBehavior::Transient ? NSPopoverBehaviorTransient : NSPopoverBehaviorApplicationDefined;
}

void Popover::setAnimates(bool animates)
{
    native_->popover.animates = animates;
}

void Popover::setDelegate(std::weak_ptr<PopoverDelegate> delegate)
{
    native_->delegate.delegate = std::move(delegate);
}

void Popover::setContentViewController(std::shared_ptr<ViewController> content)
{
    content_ = std::move(content);
    PerchlyHostedViewController* controller = content_ ? [PerchlyHostedViewController controllerHosting:content_] : nil;
    // Not out of the popover's own window.
    if (native_->popover.contentViewController != controller)
        [controller leaveWindow];
    native_->popover.contentViewController = controller;
}

void Popover::setContentSize(foundation::Size size)
{
    native_->popover.contentSize = nativeSize(size);
}

foundation::Size Popover::contentSize() const
{
    return sizeFrom(native_->popover.contentSize);
}

void Popover::show(foundation::Rect rect, StatusBarButton& anchor, RectEdge preferredEdge)
{
    [native_->popover showRelativeToRect:nativeRect(rect)
                                  ofView:anchor.native().button
                           preferredEdge:static_cast<NSRectEdge>(preferredEdge)];
}

void Popover::performClose()
{
    [native_->popover performClose:nil];
}

bool Popover::isShown() const
{
    return native_->popover.isShown;
}

} // namespace appkit
