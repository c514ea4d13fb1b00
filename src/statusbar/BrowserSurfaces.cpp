#include "statusbar/BrowserSurfaces.h"

#include "bookmarks/Bookmark.h"
#include "browser/BrowserViewController.h"
#include "platform/appkit/Popover.h"
#include "platform/appkit/StatusBarButton.h"

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
    if (popover_->contentViewController() != browser)
        silencePopover();
    popover_->setContentViewController(browser);
    popover_->setContentSize(browser->preferredContentSize());
    if (anchor)
        popover_->show(anchor->bounds(), *anchor, appkit::RectEdge::MinY);
}

void BrowserSurfaces::emptyClosedPopover()
{
    silencePopover();
    popover_->setContentViewController(nullptr);
}

void BrowserSurfaces::silencePopover()
{
    const auto browser = std::dynamic_pointer_cast<BrowserViewController>(popover_->contentViewController());
    if (!browser)
        return;
    browser->webView()->stopLoading();
    browser->webView()->pauseAllMediaPlayback();
}

} // namespace perchly
