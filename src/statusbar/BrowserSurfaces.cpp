#include "statusbar/BrowserSurfaces.h"

#include "bookmarks/Bookmark.h"
#include "browser/BrowserViewController.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/Window.h"

namespace perchly {
namespace {

// Stands for the general browser where an id is asked for; a bookmark of that id shares it.
constexpr std::string_view generalKey = "general";

} // namespace

BrowserSurfaces::BrowserSurfaces(std::weak_ptr<appkit::PopoverDelegate> popoverDelegate,
    std::weak_ptr<BrowserViewControllerDelegate> browserDelegate)
    : browserDelegate_(std::move(browserDelegate))
    , popover_(std::make_unique<appkit::Popover>())
{
    popover_->setBehavior(appkit::PopoverBehavior::Transient);
    popover_->setAnimates(false);
    popover_->setDelegate(std::move(popoverDelegate));
}

BrowserSurfaces::~BrowserSurfaces() = default;

std::shared_ptr<BrowserViewController> BrowserSurfaces::browserViewControllerForBookmark(const Bookmark* bookmark)
{
    if (!bookmark || bookmark->id == generalKey) {
        if (!generalBrowserViewController_) {
            auto browser = makeBrowser();
            browser->loadViewIfNeeded();
            browser->loadHomePage();
            generalBrowserViewController_ = std::move(browser);
        }
        return generalBrowserViewController_;
    }
    if (const auto cached = browserViewControllers_.find(bookmark->id); cached != browserViewControllers_.end())
        return cached->second;
    auto browser = makeBrowser();
    browser->loadBookmark(*bookmark);
    browserViewControllers_.emplace(bookmark->id, browser);
    return browser;
}

std::shared_ptr<BrowserViewController> BrowserSurfaces::makeBrowser() const
{
    auto browser = std::make_shared<BrowserViewController>();
    browser->setDelegate(browserDelegate_);
    return browser;
}

void BrowserSurfaces::showInPopover(
    const std::shared_ptr<BrowserViewController>& browser, appkit::StatusBarButton* anchor)
{
    // Where the popover stays open behind the menu, another browser may be in it still.
    const auto before = browserInPopover();
    if (before && before != browser)
        before->silence();
    popover_->setContentViewController(browser);
    popover_->setContentSize(browser->preferredContentSize());
    if (anchor)
        popover_->show(anchor->bounds(), *anchor, appkit::RectEdge::MinY);
    if (before && before != browser)
        detachedWindows_.takeBack(before);
    // The click that closes the popover opens nothing.
    if (anchor && !popover_->isShown())
        emptyClosedPopover();
}

void BrowserSurfaces::bringForward(appkit::Window& window)
{
    // The popover may have the window's browser.
    if (popover_->isShown() && popover_->contentViewController() == window.contentViewController())
        popover_->performClose();
    window.makeKeyAndOrderFront();
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
}

void BrowserSurfaces::showInWindow(const Bookmark& bookmark)
{
    if (detachedWindows_.windowFor(bookmark))
        return;
    const auto browser = browserViewControllerForBookmark(&bookmark);
    if (browser->showsBlankPage())
        browser->loadBookmark(bookmark);
    detachedWindows_.open(bookmark, browser);
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    if (popover_->isShown() && popover_->contentViewController() == browser)
        popover_->performClose();
}

void BrowserSurfaces::emptyClosedPopover()
{
    const auto browser = browserInPopover();
    if (browser)
        browser->silence();
    popover_->setContentViewController(nullptr);
    if (browser)
        detachedWindows_.takeBack(browser);
}

std::shared_ptr<BrowserViewController> BrowserSurfaces::browserInPopover() const
{
    return std::dynamic_pointer_cast<BrowserViewController>(popover_->contentViewController());
}

} // namespace perchly
