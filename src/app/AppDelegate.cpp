#include "app/AppDelegate.h"

#include "pinned/PinnedBookmarkManager.h"
#include "platform/appkit/Menu.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/Log.h"
#include "statusbar/StatusBarController.h"

namespace perchly {
namespace {

// Never seen: its key equivalents bring the editing commands to the focused text field or page.
std::shared_ptr<appkit::Menu> buildMainMenu()
{
    auto editMenu = std::make_shared<appkit::Menu>("Edit");
    editMenu->addItem("Undo", appkit::Action("undo"), "z");
    editMenu->addItem("Redo", appkit::Action("redo"), "Z");
    editMenu->addSeparator();
    editMenu->addItem("Cut", appkit::Action("cut:"), "x");
    editMenu->addItem("Copy", appkit::Action("copy:"), "c");
    editMenu->addItem("Paste", appkit::Action("paste:"), "v");
    editMenu->addItem("Select All", appkit::Action("selectAll:"), "a");

    auto mainMenu = std::make_shared<appkit::Menu>();
    mainMenu->addItem("", {}).setSubmenu(std::move(editMenu));
    return mainMenu;
}

} // namespace

AppDelegate::AppDelegate() = default;
AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching()
{
    foundation::assertMainThread();
    foundation::dispatchMainAsync([weak = weak_from_this()] {
        if (auto self = weak.lock())
            self->completeLaunch();
    });
}

void AppDelegate::completeLaunch()
{
    foundation::assertMainThread();
    auto& application = appkit::Application::sharedApplication();
    application.setMainMenu(buildMainMenu());
    application.setActivationPolicy(appkit::ActivationPolicy::Accessory);
    statusBarController_ = StatusBarController::create();
    PinnedBookmarkManager::shared()->setDelegate(statusBarController_);
    foundation::log("AppDelegate: Application started successfully with icon");
    if (startedAgain_)
        statusBarController_->showBrowserWindow();
}

void AppDelegate::applicationStartedAgain()
{
    startedAgain_ = true;
    if (statusBarController_)
        statusBarController_->showBrowserWindow();
}

} // namespace perchly
