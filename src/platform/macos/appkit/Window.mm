#include "platform/appkit/Window.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/macos/appkit/Conversions.h"
#import "platform/macos/appkit/HostedViewController.h"
#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/appkit/WindowNative.h"

@interface PerchlyWindowDelegate : NSObject <NSWindowDelegate>
@property (nonatomic) std::weak_ptr<appkit::Window> owner;
@property (nonatomic, copy) void (^willClose)(void);
@end

@implementation PerchlyWindowDelegate

- (void)windowWillClose:(NSNotification*)notification
{
    self.willClose();
}

@end

namespace appkit {
namespace {

constexpr auto willClose = "willClose";

NSWindow* makeWindow(foundation::Rect contentRect, WindowStyleMask styleMask)
{
    // When it comes to the screen, AppKit itself keeps the title bar there.
    NSWindow* window = [[NSWindow alloc] initWithContentRect:nativeRect(contentRect)
                                                   styleMask:static_cast<NSWindowStyleMask>(styleMask)
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    window.releasedWhenClosed = NO;
    return window;
}

} // namespace

std::shared_ptr<Window> windowOf(NSView* view)
{
    NSWindow* window = view.window;
    if (!window)
        return nullptr;
    if ([window.delegate isKindOfClass:PerchlyWindowDelegate.class])
        return static_cast<PerchlyWindowDelegate*>(window.delegate).owner.lock();
    return std::make_shared<Window>(std::make_unique<Window::Native>(Window::Native { window }));
}

std::shared_ptr<Window> Window::create(foundation::Rect contentRect, WindowStyleMask styleMask)
{
    NSWindow* native = makeWindow(contentRect, styleMask);
    PerchlyWindowDelegate* delegate = [[PerchlyWindowDelegate alloc] init];
    auto window = std::make_shared<Window>(std::make_unique<Native>(Native { native, delegate }));
    const std::weak_ptr<Window> weakWindow = window;
    delegate.owner = weakWindow;
    delegate.willClose = ^{
        const auto self = weakWindow.lock();
        if (!self)
            return;
        self->notifications_.post(appkit::willClose);
        // The observers may let go of the window, which AppKit goes on closing.
        foundation::dispatchMainAsync([self] {});
    };
    native.delegate = delegate;
    return window;
}

Window::Window(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Window::~Window()
{
    if (!native_->delegate)
        return;
    native_->window.delegate = nil;
    // Its owners may want to show it elsewhere.
    native_->window.contentViewController = nil;
    [native_->window close];
}

void Window::setTitle(std::string_view title)
{
    native_->window.title = nativeText(title);
}

std::string Window::title() const
{
    return textFrom(native_->window.title);
}

void Window::setLevel(WindowLevel level)
{
    native_->window.level = static_cast<NSWindowLevel>(level);
}

WindowLevel Window::level() const
{
    return static_cast<WindowLevel>(native_->window.level);
}

void Window::setHidesOnDeactivate(bool hides)
{
    native_->window.hidesOnDeactivate = hides;
}

void Window::setContentViewController(std::shared_ptr<ViewController> content)
{
    // The former content must outlive its leaving the window.
    const auto before = std::exchange(content_, std::move(content));
    const NSRect frame = native_->window.frame;
    // Also where the content stays the same: it may have been elsewhere meanwhile, and AppKit would see no change.
    native_->window.contentViewController = nil;
    if (!content_)
        return;
    PerchlyHostedViewController* controller = [PerchlyHostedViewController controllerHosting:content_];
    [controller leaveWindow];
    native_->window.contentViewController = controller;
    // One that comes back finds the window as the user has it.
    if (content_ == before)
        [native_->window setFrame:frame display:YES];
}

foundation::Rect Window::frame() const
{
    return rectFrom(native_->window.frame);
}

void Window::setFrame(foundation::Rect frame)
{
    [native_->window setFrame:nativeRect(frame) display:YES animate:NO];
}

void Window::setContentSize(foundation::Size size)
{
    [native_->window setContentSize:nativeSize(size)];
}

void Window::center()
{
    [native_->window center];
}

void Window::setInitialFirstResponder(const View& view)
{
    native_->window.initialFirstResponder = nativeView(view);
}

void Window::makeKeyWindow()
{
    [native_->window makeKeyWindow];
}

bool Window::isKeyWindow() const
{
    return native_->window.isKeyWindow;
}

void Window::makeKeyAndOrderFront()
{
    [native_->window makeKeyAndOrderFront:nil];
}

bool Window::isVisible() const
{
    return native_->window.isVisible;
}

void Window::close()
{
    // A window in the Dock isn't visible.
    if (!isVisible() && !native_->window.isMiniaturized)
        return;
    const auto keepAlive = shared_from_this();
    [native_->window close];
}

foundation::ObservationToken Window::observeWillClose(std::function<void()> handler)
{
    return notifications_.addObserver(willClose, std::move(handler));
}

std::string Window::className() const
{
    return textFrom(NSStringFromClass([native_->window class]));
}

} // namespace appkit
