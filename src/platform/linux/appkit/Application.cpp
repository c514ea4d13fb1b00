#include "platform/appkit/Application.h"

#include "platform/appkit/Image.h"
#include "platform/linux/appkit/AlertNative.h"
#include "platform/linux/appkit/EventScope.h"
#include "platform/linux/appkit/FilePanel.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/UnfinishedWork.h"

#include <array>

namespace appkit {
namespace {

constexpr auto applicationId = "org.perchly.Perchly";

/// Takes in whatever is no option, so that it can be refused.
constexpr GOptionEntry options[] = {
    { G_OPTION_REMAINING, 0, 0, G_OPTION_ARG_STRING_ARRAY, nullptr, nullptr, nullptr },
    {},
};

/// The exit status; negative to go on.
int refuseArguments(GVariantDict* given)
{
    if (!g_variant_dict_contains(given, G_OPTION_REMAINING))
        return -1;
    g_printerr("Usage: perchly [--help]\n");
    return 1;
}

std::optional<Event>& eventUnderWay()
{
    static std::optional<Event> event;
    return event;
}

} // namespace

EventScope::EventScope(EventType type)
    : before_(std::exchange(eventUnderWay(), Event { type }))
{
}

EventScope::~EventScope()
{
    eventUnderWay() = before_;
}

struct Application::Native {
    std::weak_ptr<ApplicationDelegate> delegate;
    std::shared_ptr<Menu> mainMenu;
    ActivationPolicy activationPolicy = ActivationPolicy::Regular;
    bool isLaunched = false;
    desktop::ObjectPointer<GApplication> application;
    std::array<desktop::SignalConnection, 3> connections;

    void start()
    {
        g_application_hold(application.get());
        if (auto owner = delegate.lock())
            owner->applicationDidFinishLaunching();
    }

    // The first activation is this process's own start, each later one another process's.
    void activate()
    {
        if (!std::exchange(isLaunched, true))
            return;
        if (auto owner = delegate.lock())
            owner->applicationStartedAgain();
    }
};

Application::Application()
    : native_(std::make_unique<Native>())
{
}

Application::~Application() = default;

Application& Application::sharedApplication()
{
    static Application application;
    return application;
}

void Application::setDelegate(std::weak_ptr<ApplicationDelegate> delegate)
{
    native_->delegate = std::move(delegate);
}

int Application::run(int argc, char** argv)
{
    g_set_prgname("perchly");
    g_set_application_name("Perchly");
    native_->application = desktop::adopt(g_application_new(applicationId, G_APPLICATION_DEFAULT_FLAGS));
    auto* application = native_->application.get();
    g_application_add_main_option_entries(application, options);
    native_->connections
        = { desktop::connect<gint(GVariantDict*)>(application, "handle-local-options", refuseArguments),
              desktop::connect<void()>(application, "startup", [this] { native_->start(); }),
              desktop::connect<void()>(application, "activate", [this] { native_->activate(); }) };
    return g_application_run(application, argc, argv);
}

void Application::setActivationPolicy(ActivationPolicy policy)
{
    native_->activationPolicy = policy;
}

ActivationPolicy Application::activationPolicy() const
{
    return native_->activationPolicy;
}

void Application::setMainMenu(std::shared_ptr<Menu> menu)
{
    // GTK's text fields and WebKit's pages bring the editing keys along; no window shows the menu itself.
    native_->mainMenu = std::move(menu);
}

const std::shared_ptr<Menu>& Application::mainMenu() const
{
    return native_->mainMenu;
}

std::optional<Event> Application::currentEvent() const
{
    return eventUnderWay();
}

std::shared_ptr<Image> Application::applicationIconImage() const
{
    constexpr foundation::Size usualSize { 128, 128 };
    auto icon = Image::imageNamed(applicationId);
    if (icon)
        icon->setSize(usualSize);
    return icon;
}

void Application::activateIgnoringOtherApps()
{
    // There is no active application on these desktops, only active windows, and each of ours asks for it when shown.
    // What is left is the one window that the others wait for.
    bringAlertForward();
}

void Application::terminate()
{
    cancelFilePanels();
    cancelRunningAlerts();
    // What the user has asked for shortly before is still done.
    constexpr auto longestWait = 2000U;
    desktop::finishWork(longestWait, [this] { g_application_quit(native_->application.get()); });
}

} // namespace appkit
