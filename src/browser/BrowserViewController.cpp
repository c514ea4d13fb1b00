#include "browser/BrowserViewController.h"

#include "bookmarks/Address.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "bookmarks/UserAgents.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/KeyEquivalent.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/webkit/WebsiteDataStore.h"

#include <algorithm>

namespace perchly {
namespace {

constexpr foundation::Size defaultSize { 600, 700 };
constexpr double minimumLength = 320;

const Bookmark* firstBookmarkAt(std::string_view address)
{
    const auto& bookmarks = BookmarkManager::shared().bookmarks();
    const auto found = std::ranges::find(bookmarks, address, &Bookmark::url);
    return found == bookmarks.end() ? nullptr : &*found;
}

/// Whichever edge was dragged, the window grows to the right and downwards.
void resizeFromTopLeft(appkit::Window& window, foundation::Size contentSize)
{
    const auto before = window.frame();
    const auto top = before.origin.y + before.size.height;
    window.setContentSize(contentSize);
    const auto size = window.frame().size;
    window.setFrame({ { before.origin.x, top - size.height }, size });
}

} // namespace

void BrowserViewController::loadView()
{
    foundation::assertMainThread();
    auto root = std::make_shared<appkit::View>(foundation::Rect { {}, defaultSize });
    setupWebView(*root);
    setupToolbar(*root);
    setupResizeAreas(*root);
    setView(std::move(root));
}

void BrowserViewController::setupWebView(appkit::View& root)
{
    webView_ = std::make_shared<webkit::WebView>(
        webkit::WebViewConfiguration { webkit::WebsiteDataStore::defaultDataStore() });
    webView_->setCustomUserAgent(agents::systemDefault);
    webView_->setNavigationDelegate(weak_from_this());
    webView_->setUIDelegate(weak_from_this());
    webView_->setTranslatesAutoresizingMaskIntoConstraints(false);

    // The effects come after the event that caused the change, when the controller may be gone.
    const auto later = [weak = weak_from_this()](void (BrowserViewController::*follow)()) {
        foundation::dispatchMainAsync([weak, follow] {
            if (auto self = weak.lock())
                (self.get()->*follow)();
        });
    };
    urlObservation_ = webView_->observeURL([later] { later(&BrowserViewController::refreshAfterNavigation); });
    loadingObservation_ = webView_->observeIsLoading([later] { later(&BrowserViewController::updateSpinner); });

    root.addSubview(webView_);
    appkit::activateConstraints({
        webView_->topAnchor().equalTo(root.topAnchor(), BrowserToolbar::height),
        webView_->leadingAnchor().equalTo(root.leadingAnchor(), 2),
        webView_->trailingAnchor().equalTo(root.trailingAnchor(), -2),
        webView_->bottomAnchor().equalTo(root.bottomAnchor(), -2),
    });
}

void BrowserViewController::setupToolbar(appkit::View& root)
{
    using Self = BrowserViewController;
    const auto self = weak_from_this();
    toolbar_.emplace(root,
        BrowserToolbar::Actions {
            .goBack = { "goBack", self, &Self::goBack },
            .goForward = { "goForward", self, &Self::goForward },
            .goHome = { "goHome", self, &Self::goHome },
            .reload = { "reload", self, &Self::reload },
            .toggleCurrentPagePin = { "toggleCurrentPagePin", self, &Self::toggleCurrentPagePin },
            .toggleCurrentPageMenuBar = { "toggleCurrentPageMenuBar", self, &Self::toggleCurrentPageMenuBar },
            .addCurrentPageToBookmarks = { "addCurrentPageToBookmarks", self, &Self::addCurrentPageToBookmarks },
            .urlTextFieldAction = { "urlTextFieldAction", self, &Self::urlTextFieldAction },
        });
    toolbar_->urlTextField->setDelegate(self);
    const appkit::Action selectAddress { "selectAddress", self, &Self::selectAddress };
    root.addKeyEquivalent({ .character = U'l', .withCommand = true }, selectAddress);
    root.addKeyEquivalent({ .character = appkit::KeyEquivalent::f6, .withCommand = false }, selectAddress);
    updateNavigationButtons();
    updateBookmarkButtons();
}

void BrowserViewController::setupResizeAreas(appkit::View& root)
{
    resizeAreas_.emplace(root, [weak = weak_from_this()](double deltaWidth, double deltaHeight) {
        if (const auto self = weak.lock())
            self->resizeBy(deltaWidth, deltaHeight);
    });
}

void BrowserViewController::resizeBy(double deltaWidth, double deltaHeight)
{
    foundation::assertMainThread();
    const auto current = view()->frame().size;
    const foundation::Size size { std::max(current.width + deltaWidth, minimumLength),
        std::max(current.height + deltaHeight, minimumLength) };
    if (size == preferredContentSize())
        return;
    setPreferredContentSize(size);
    if (const auto window = view()->window(); window && window->className().find("Popover") == std::string::npos)
        resizeFromTopLeft(*window, size);
    if (const auto delegate = delegate_.lock())
        delegate->browserDidResize(*this, size.width, size.height);
    view()->setFrameSize(size);
}

void BrowserViewController::loadURLString(std::string_view text, CurrentBookmark currentBookmark)
{
    foundation::assertMainThread();
    loadViewIfNeeded();
    if (currentBookmark == CurrentBookmark::Clear)
        currentBookmarkId_.reset();
    const auto entered = foundation::trimmed(text);
    if (entered.empty() || entered == blankPageAddress)
        return showBlankPage();
    auto address = addressWithScheme(entered);
    const auto url = foundation::URL::parse(address);
    if (!url)
        return;
    lastVisitedURL_ = address;
    webView_->load({ *url });
    toolbar_->urlTextField->setStringValue(address);
}

void BrowserViewController::showBlankPage()
{
    // The page being left is where showing the bookmark again returns to.
    if (!showsBlankPage())
        lastVisitedURL_ = pageAddress();
    webView_->load({ *foundation::URL::parse(blankPageAddress) });
    toolbar_->urlTextField->setStringValue({});
}

void BrowserViewController::loadBookmark(const Bookmark& bookmark)
{
    foundation::assertMainThread();
    loadViewIfNeeded();
    originalURL_ = addressWithScheme(bookmark.url);
    const auto wasShowingIt = currentBookmarkId_ == bookmark.id;
    const foundation::Size size { bookmark.preferredWidth.value_or(defaultSize.width),
        bookmark.preferredHeight.value_or(defaultSize.height) };
    if (preferredContentSize() != size) {
        setPreferredContentSize(size);
        view()->setFrameSize(size);
    }
    webView_->setCustomUserAgent(bookmark.userAgent ? std::string_view(*bookmark.userAgent) : agents::systemDefault);
    currentBookmarkId_ = bookmark.id;

    // Copies, because loading sets the fields they come from.
    const auto original = *originalURL_;
    const auto last = lastVisitedURL_.value_or("");
    const auto isFirstVisit = last.empty() && !wasShowingIt;
    if (bookmark.shouldReloadOnOpen || isFirstVisit)
        loadURLString(original, CurrentBookmark::Keep);
    else if (!last.empty() && pageAddress() != last)
        loadURLString(last, CurrentBookmark::Keep);
}

bool BrowserViewController::showsBlankPage() const
{
    const auto address = pageAddress();
    return address.empty() || address == blankPageAddress;
}

std::string BrowserViewController::pageAddress() const
{
    const auto url = webView_ ? webView_->url() : std::nullopt;
    return url ? url->absoluteString() : std::string {};
}

void BrowserViewController::silence()
{
    foundation::assertMainThread();
    if (!webView_)
        return;
    webView_->stopLoading();
    webView_->pauseAllMediaPlayback();
}

void BrowserViewController::goBack()
{
    foundation::assertMainThread();
    webView_->goBack();
}

void BrowserViewController::goForward()
{
    foundation::assertMainThread();
    webView_->goForward();
}

void BrowserViewController::reload()
{
    foundation::assertMainThread();
    webView_->reload();
}

void BrowserViewController::goHome()
{
    foundation::assertMainThread();
    if (originalURL_) {
        const auto original = *originalURL_;
        return loadURLString(original, CurrentBookmark::Keep);
    }
    loadHomePage();
}

void BrowserViewController::loadHomePage()
{
    const auto homePage = foundation::UserDefaults::standard().stringForKey(preferences::homePageURL);
    if (homePage && !homePage->empty())
        loadURLString(*homePage, CurrentBookmark::Clear);
}

void BrowserViewController::selectAddress()
{
    foundation::assertMainThread();
    toolbar_->urlTextField->selectText();
}

void BrowserViewController::urlTextFieldAction()
{
    foundation::assertMainThread();
    navigateToEnteredAddress();
}

void BrowserViewController::navigateToEnteredAddress()
{
    const auto text = toolbar_->urlTextField->stringValue();
    if (const auto entered = foundation::trimmed(text); !entered.empty())
        loadURLString(entered, CurrentBookmark::Clear);
}

bool BrowserViewController::controlDoCommandBySelector(appkit::TextField& /*field*/, std::string_view selector)
{
    if (selector != "insertNewline:")
        return false;
    navigateToEnteredAddress();
    return true;
}

void BrowserViewController::webViewDidFinishNavigation(webkit::WebView& /*webView*/)
{
    refreshAfterNavigation();
}

void BrowserViewController::refreshAfterNavigation()
{
    toolbar_->urlTextField->setStringValue(pageAddress());
    updateNavigationButtons();
    updateBookmarkButtons();
}

void BrowserViewController::updateSpinner()
{
    toolbar_->showLoading(webView_->isLoading());
}

void BrowserViewController::updateNavigationButtons()
{
    foundation::assertMainThread();
    toolbar_->showNavigation(webView_->canGoBack(), webView_->canGoForward());
}

void BrowserViewController::updateBookmarkButtons()
{
    foundation::assertMainThread();
    const auto address = pageAddress();
    toolbar_->showBookmark(address.empty() ? nullptr : firstBookmarkAt(address));
}

std::shared_ptr<webkit::WebView> BrowserViewController::createWebView(
    webkit::WebView& webView, const webkit::NavigationAction& action)
{
    if (!action.hasTargetFrame)
        webView.load(action.request);
    return nullptr;
}

Bookmark BrowserViewController::makeBookmarkForPage() const
{
    auto address = pageAddress();
    auto title = webView_->title().value_or(address);
    return { .title = std::move(title), .url = std::move(address) };
}

void BrowserViewController::toggleForPage(bool Bookmark::*flag)
{
    foundation::assertMainThread();
    const auto address = pageAddress();
    if (address.empty())
        return;
    auto& store = BookmarkManager::shared();
    if (const auto* found = firstBookmarkAt(address)) {
        auto changed = *found;
        changed.*flag = !(changed.*flag);
        store.updateBookmark(changed);
    } else {
        auto added = makeBookmarkForPage();
        added.*flag = true;
        store.addBookmark(added);
    }
    updateBookmarkButtons();
    notifications::postBookmarksDidChange();
}

void BrowserViewController::toggleCurrentPagePin()
{
    toggleForPage(&Bookmark::isPinned);
}

void BrowserViewController::toggleCurrentPageMenuBar()
{
    toggleForPage(&Bookmark::isAddedToMenuBar);
}

void BrowserViewController::addCurrentPageToBookmarks()
{
    foundation::assertMainThread();
    if (pageAddress().empty())
        return;
    const auto added = makeBookmarkForPage();
    BookmarkManager::shared().addBookmark(added);
    notifications::postBookmarksDidChange();
    updateBookmarkButtons();

    appkit::Alert alert;
    alert.messageText = "Bookmark Added";
    alert.informativeText = "Saved: " + added.title;
    alert.runModal();
}

} // namespace perchly
