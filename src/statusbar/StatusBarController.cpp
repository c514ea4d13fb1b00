#include "statusbar/StatusBarController.h"

#include "Product.h"
#include "bookmarklist/BookmarkListViewController.h"
#include "bookmarks/Address.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "pinned/RunningDialog.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/WindowController.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDefaults.h"
#include "settings/SettingsViewController.h"
#include "statusbar/AboutWindow.h"
#include "statusbar/BookmarkDialog.h"
#include "statusbar/StatusMenu.h"

namespace perchly {
namespace {

using appkit::WindowStyleMask;

constexpr std::chrono::milliseconds saveDelay { 500 };

void openInDefaultBrowser(std::string_view address)
{
    if (const auto url = foundation::URL::parse(address))
        appkit::Workspace::sharedWorkspace().openURL(*url);
}

const Bookmark* representedBookmark(const appkit::MenuItem& item)
{
    return std::any_cast<Bookmark>(&item.representedObject());
}

std::shared_ptr<appkit::WindowController> makeWindowController(std::string_view title, foundation::Size size,
    const std::shared_ptr<appkit::ViewController>& content, WindowStyleMask style)
{
    const auto window = appkit::Window::create({ {}, size }, style);
    window->setTitle(title);
    window->setContentViewController(content);
    window->center();
    return std::make_shared<appkit::WindowController>(window);
}

void bringForward(const appkit::WindowController& controller)
{
    controller.window()->makeKeyAndOrderFront();
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
}

std::shared_ptr<appkit::Image> statusItemImage()
{
    auto image = appkit::Image::imageNamed("AppStatusBarIcon");
    return image ? image : appkit::Image::systemSymbol("globe", "Browser");
}

} // namespace

std::shared_ptr<StatusBarController> StatusBarController::create()
{
    foundation::assertMainThread();
    auto controller = std::shared_ptr<StatusBarController>(new StatusBarController);
    controller->start();
    return controller;
}

void StatusBarController::start()
{
    surfaces_.emplace(weak_from_this(), weak_from_this());
    setupStatusItem();
    auto& center = foundation::NotificationCenter::defaultCenter();
    const auto observe
        = [&center, weak = weak_from_this()](std::string_view name, void (StatusBarController::*handler)()) {
              return center.addObserver(name, [weak, handler] {
                  if (auto self = weak.lock())
                      (self.get()->*handler)();
              });
          };
    settingsObservation_ = observe(notifications::settingsDidChange, &StatusBarController::settingsDidChange);
    bookmarksObservation_ = observe(notifications::bookmarksDidChange, &StatusBarController::bookmarksDidChange);
}

void StatusBarController::setupStatusItem()
{
    statusItem_ = appkit::StatusBar::systemStatusBar().statusItem();
    const auto button = statusItem_->button();
    if (!button)
        return foundation::log("DEBUG: StatusBar - Failed to create button!");
    if (auto image = statusItemImage()) {
        image->setTemplate(true);
        button->setImage(std::move(image));
    } else
        button->setTitle("🌐");
    button->setAction({ "statusBarButtonClicked", weak_from_this(), &StatusBarController::statusBarButtonClicked });
    updateMenu();
}

void StatusBarController::updateMenu()
{
    foundation::assertMainThread();
    using Self = StatusBarController;
    const auto self = weak_from_this();
    auto menu = makeStatusMenu(BookmarkManager::shared().bookmarks(),
        {
            .showBrowserWindow = { "showBrowserWindow", self, &Self::showBrowserWindow },
            .showBookmarkList = { "showBookmarkList", self, &Self::showBookmarkList },
            .showSettings = { "showSettings", self, &Self::showSettings },
            .showAbout = { "showAbout", self, &Self::showAbout },
            .quitApp = { "quitApp", self, &Self::quitApp },
            .pinnedBookmarkClicked = { "pinnedBookmarkClicked:", self, &Self::pinnedBookmarkClicked },
            .openInSystemBrowserClicked = { "openInSystemBrowserClicked:", self, &Self::openInSystemBrowserClicked },
        });
    statusItem_->setMenu(std::move(menu));
}

void StatusBarController::statusBarButtonClicked()
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    if (surfaces_->popover().isShown())
        return surfaces_->popover().performClose();
    const auto browser = showGeneralBrowser();
    if (const auto window = browser->view()->window())
        window->makeKeyWindow();
}

void StatusBarController::showBrowserWindow()
{
    if (!isHeldUpByDialog())
        showGeneralBrowser();
}

std::shared_ptr<BrowserViewController> StatusBarController::showGeneralBrowser()
{
    foundation::assertMainThread();
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    auto browser = surfaces_->browserViewControllerForBookmark(nullptr);
    if (browser->showsBlankPage())
        browser->loadHomePage();
    surfaces_->showInPopover(browser, statusItem_->button().get());
    return browser;
}

void StatusBarController::pinnedBookmarkClicked(appkit::MenuItem& sender)
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    const auto* bookmark = representedBookmark(sender);
    if (!bookmark)
        return;
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    if (bookmark->openInSystemBrowser)
        return openInDefaultBrowser(addressWithScheme(bookmark->url));
    openInPopover(*bookmark, statusItem_->button().get());
}

void StatusBarController::openInPopover(const Bookmark& bookmark, appkit::StatusBarButton* anchor)
{
    const auto browser = surfaces_->browserViewControllerForBookmark(&bookmark);
    if (bookmark.shouldReloadOnOpen || browser->showsBlankPage())
        browser->loadBookmark(bookmark);
    surfaces_->showInPopover(browser, anchor);
}

void StatusBarController::openPinnedBookmark(const Bookmark& bookmark, appkit::StatusBarButton& anchorButton)
{
    foundation::assertMainThread();
    if (const auto window = surfaces_->detachedWindows().windowFor(bookmark))
        return surfaces_->bringForward(*window);
    if (bookmark.prefersDetached)
        return openDetachedWindow(bookmark);
    openInPopover(bookmark, &anchorButton);
}

void StatusBarController::openDetachedWindow(const Bookmark& bookmark)
{
    foundation::assertMainThread();
    surfaces_->showInWindow(bookmark);
}

void StatusBarController::updateWindowLevel(const Bookmark& bookmark)
{
    foundation::assertMainThread();
    surfaces_->detachedWindows().updateLevel(bookmark);
}

void StatusBarController::openInSystemBrowserClicked(appkit::MenuItem& sender)
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    if (const auto* bookmark = representedBookmark(sender))
        openInDefaultBrowser(addressWithScheme(bookmark->url));
}

void StatusBarController::showBookmarkInPopover(const Bookmark& bookmark)
{
    foundation::assertMainThread();
    surfaces_->showInPopover(surfaces_->browserViewControllerForBookmark(&bookmark), statusItem_->button().get());
}

void StatusBarController::showBookmarkList()
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    if (!bookmarkListWindowController_) {
        const auto list = std::make_shared<BookmarkListViewController>();
        list->setDelegate(weak_from_this());
        bookmarkListWindowController_ = makeWindowController("Bookmarks Manager", { 950, 500 }, list,
            WindowStyleMask::Titled | WindowStyleMask::Closable | WindowStyleMask::Miniaturizable
                | WindowStyleMask::Resizable);
    }
    bringForward(*bookmarkListWindowController_);
}

void StatusBarController::showSettings()
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    if (!settingsWindowController_) {
        settingsWindowController_ = makeWindowController("Settings", { 450, 420 },
            std::make_shared<SettingsViewController>(), WindowStyleMask::Titled | WindowStyleMask::Closable);
        settingsWindowController_->window()->setLevel(appkit::WindowLevel::Floating);
    }
    bringForward(*settingsWindowController_);
}

void StatusBarController::showAbout()
{
    foundation::assertMainThread();
    if (isHeldUpByDialog())
        return;
    showAboutWindow({ "openAppWebsite", weak_from_this(), &StatusBarController::openAppWebsite });
}

void StatusBarController::closeAboutWindow(appkit::Sender& /*sender*/)
{
    foundation::assertMainThread();
}

void StatusBarController::showAddBookmarkDialog(
    const std::optional<Bookmark>& bookmark, const std::shared_ptr<BookmarkListViewController>& list)
{
    foundation::assertMainThread();
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    auto entered = askForBookmark(bookmark);
    if (!entered)
        return;
    auto& store = BookmarkManager::shared();
    if (bookmark)
        store.updateBookmark(std::move(*entered));
    else
        store.addBookmark(std::move(*entered));
    updateMenu();
    notifications::postBookmarksDidChange();
    if (list)
        list->reloadBookmarks();
}

void StatusBarController::openAppWebsite()
{
    foundation::assertMainThread();
    openInDefaultBrowser(product::website);
}

void StatusBarController::quitApp()
{
    foundation::assertMainThread();
    appkit::Application::sharedApplication().terminate();
}

void StatusBarController::bookmarksDidChange()
{
    foundation::assertMainThread();
    updateMenu();
}

void StatusBarController::settingsDidChange()
{
    foundation::assertMainThread();
    const auto& browser = surfaces_->generalBrowserViewController();
    if (!browser)
        return;
    const auto homePage = foundation::UserDefaults::standard().stringForKey(preferences::homePageURL);
    browser->loadURLString(homePage.value_or(""), CurrentBookmark::Clear);
}

void StatusBarController::popoverDidClose()
{
    foundation::assertMainThread();
    surfaces_->emptyClosedPopover();
}

void StatusBarController::browserDidResize(BrowserViewController& controller, double width, double height)
{
    foundation::assertMainThread();
    surfaces_->popover().setContentSize({ width, height });
    // A timer for all browsers: the end of the last drag is what counts.
    const auto save = [weak = weak_from_this(), browser = controller.shared_from_this(), width, height] {
        if (const auto self = weak.lock())
            self->saveBrowserSize(*browser, width, height);
    };
    saveTimer_ = foundation::Timer::scheduledTimer(saveDelay, [save] { foundation::dispatchMainAsync(save); });
}

void StatusBarController::saveBrowserSize(const BrowserViewController& controller, double width, double height)
{
    foundation::assertMainThread();
    const auto& id = controller.currentBookmarkId();
    if (!id)
        return;
    auto& store = BookmarkManager::shared();
    const auto* bookmark = store.bookmark(*id);
    if (!bookmark)
        return;
    auto resized = *bookmark;
    resized.preferredWidth = width;
    resized.preferredHeight = height;
    store.updateBookmark(resized);
    foundation::log(
        "DEBUG: Saved debounced size for " + resized.title + ": " + foundation::description({ width, height }));
}

} // namespace perchly
