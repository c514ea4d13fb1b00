#include "platform/appkit/Application.h"

#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/MenuNative.h"

// A second start never comes here as applicationStartedAgain(): macOS brings the running program forward by itself.
@interface PerchlyApplicationDelegate : NSObject <NSApplicationDelegate>
@property (nonatomic) std::weak_ptr<appkit::ApplicationDelegate> delegate;
@end

@implementation PerchlyApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification
{
    if (auto delegate = self.delegate.lock())
        delegate->applicationDidFinishLaunching();
}

@end

namespace appkit {
namespace {

/// None for an event that the application has no name for, and for nil, which has no type.
std::optional<Event> eventFrom(NSEvent* native)
{
    switch (native.type) {
    case NSEventTypeLeftMouseDown:
        return Event { EventType::LeftMouseDown };
    case NSEventTypeLeftMouseUp:
        return Event { EventType::LeftMouseUp };
    case NSEventTypeRightMouseUp:
        return Event { EventType::RightMouseUp };
    case NSEventTypeLeftMouseDragged:
        return Event { EventType::LeftMouseDragged };
    default:
        return std::nullopt;
    }
}

} // namespace

struct Application::Native {
    NSApplication* application = [NSApplication sharedApplication];
    PerchlyApplicationDelegate* delegate = [[PerchlyApplicationDelegate alloc] init];
    std::shared_ptr<Menu> mainMenu;
};

Application::Application()
    : native_(std::make_unique<Native>())
{
    native_->application.delegate = native_->delegate;
}

Application::~Application() = default;

Application& Application::sharedApplication()
{
    static Application application;
    return application;
}

void Application::setDelegate(std::weak_ptr<ApplicationDelegate> delegate)
{
    native_->delegate.delegate = std::move(delegate);
}

int Application::run(int argc, char** argv)
{
    @autoreleasepool {
        return NSApplicationMain(argc, const_cast<const char**>(argv));
    }
}

void Application::setActivationPolicy(ActivationPolicy policy)
{
    [native_->application setActivationPolicy:policy == ActivationPolicy::Accessory
                              ? NSApplicationActivationPolicyAccessory
                              : NSApplicationActivationPolicyRegular];
}

ActivationPolicy Application::activationPolicy() const
{
    return native_->application.activationPolicy == NSApplicationActivationPolicyAccessory ? ActivationPolicy::Accessory
                                                                                           : ActivationPolicy::Regular;
}

void Application::setMainMenu(std::shared_ptr<Menu> menu)
{
    native_->mainMenu = std::move(menu);
    NSMenu* native = native_->mainMenu ? makeNativeMenu(*native_->mainMenu) : nil;
    // Rows for the first responder are enabled by AppKit, which asks it.
    for (NSMenuItem* row in native.itemArray)
        row.submenu.autoenablesItems = YES;
    native_->application.mainMenu = native;
}

const std::shared_ptr<Menu>& Application::mainMenu() const
{
    return native_->mainMenu;
}

std::optional<Event> Application::currentEvent() const
{
    return eventFrom(native_->application.currentEvent);
}

std::shared_ptr<Image> Application::applicationIconImage() const
{
    // The same as NSApp.applicationIconImage, by its name.
    return Image::imageNamed(textFrom(NSImageNameApplicationIcon));
}

void Application::activateIgnoringOtherApps()
{
    [native_->application activateIgnoringOtherApps:YES];
}

void Application::terminate()
{
    [native_->application terminate:nil];
}

} // namespace appkit
