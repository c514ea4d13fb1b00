#pragma once

#include "browser/BrowserToolbar.h"
#include "browser/ResizeAreas.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/ViewController.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/webkit/WebView.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace perchly {

struct Bookmark;
class BrowserViewController;

class BrowserViewControllerDelegate {
public:
    virtual ~BrowserViewControllerDelegate() = default;

    /// The user has dragged an edge of the browser to a new size in points; once per step of the drag.
    virtual void browserDidResize(BrowserViewController& controller, double width, double height) = 0;
};

/// Whether a load leaves the view showing its bookmark, or makes it a free page.
enum class CurrentBookmark { Keep, Clear };

/// The content of every browsing surface: a page under a toolbar. Holds its delegate weakly. Main thread.
class BrowserViewController : public appkit::ViewController,
                              public webkit::NavigationDelegate,
                              public webkit::UIDelegate,
                              public appkit::TextFieldDelegate,
                              public std::enable_shared_from_this<BrowserViewController> {
public:
    void setDelegate(std::weak_ptr<BrowserViewControllerDelegate> delegate) { delegate_ = std::move(delegate); }

    /// Loads what the user or the program names: "https://" is put in front of a bare address, blank text shows the
    /// blank page, and an address that does not parse changes nothing.
    void loadURLString(std::string_view text, CurrentBookmark currentBookmark);

    /// Shows the bookmark at its size and under its user agent: the page where this view last was, or else the
    /// bookmark's own.
    void loadBookmark(const Bookmark& bookmark);

    /// True when there is no page to lose: nothing loaded yet, or "about:blank".
    [[nodiscard]] bool showsBlankPage() const;

    /// Loads the home page of the preferences where there is one.
    void loadHomePage();

    /// Stops the loading and pauses what plays; for a browser that goes out of sight. The page stays.
    void silence();

    void goBack();
    void goForward();
    void goHome();
    void reload();
    void urlTextFieldAction();
    void toggleCurrentPagePin();
    void toggleCurrentPageMenuBar();
    void addCurrentPageToBookmarks();
    void selectAddress();

    void updateNavigationButtons();
    void updateBookmarkButtons();

    /// Null until the view is loaded.
    [[nodiscard]] const std::shared_ptr<webkit::WebView>& webView() const { return webView_; }
    /// Only once the view is loaded.
    [[nodiscard]] const BrowserToolbar& toolbar() const { return *toolbar_; }

    /// Makes the browser larger or smaller, though never smaller than 320 points in either direction, and with it the
    /// window that it stands in, unless that is the popover's, which is the delegate's to resize. Deltas in points.
    void resizeBy(double deltaWidth, double deltaHeight);

    /// Only once the view is loaded.
    [[nodiscard]] const ResizeAreas& resizeAreas() const { return *resizeAreas_; }

    /// The bookmark that this view is showing; none for a free page.
    [[nodiscard]] const std::optional<std::string>& currentBookmarkId() const { return currentBookmarkId_; }
    /// Where Home leads: the address of the bookmark shown last.
    [[nodiscard]] const std::optional<std::string>& originalURL() const { return originalURL_; }
    /// The last address that this view was sent to.
    [[nodiscard]] const std::optional<std::string>& lastVisitedURL() const { return lastVisitedURL_; }

    bool controlDoCommandBySelector(appkit::TextField& field, std::string_view selector) override;
    void webViewDidFinishNavigation(webkit::WebView& webView) override;
    std::shared_ptr<webkit::WebView> createWebView(
        webkit::WebView& webView, const webkit::NavigationAction& action) override;

protected:
    void loadView() override;

private:
    void setupWebView(appkit::View& root);
    void setupToolbar(appkit::View& root);
    void setupResizeAreas(appkit::View& root);
    void showBlankPage();
    void navigateToEnteredAddress();
    void refreshAfterNavigation();
    void updateSpinner();
    [[nodiscard]] std::string pageAddress() const;
    [[nodiscard]] Bookmark makeBookmarkForPage() const;
    void toggleForPage(bool Bookmark::*flag);

    std::weak_ptr<BrowserViewControllerDelegate> delegate_;
    std::shared_ptr<webkit::WebView> webView_;
    std::optional<BrowserToolbar> toolbar_;
    std::optional<ResizeAreas> resizeAreas_;
    std::optional<std::string> originalURL_;
    std::optional<std::string> lastVisitedURL_;
    std::optional<std::string> currentBookmarkId_;
    foundation::ObservationToken urlObservation_;
    foundation::ObservationToken loadingObservation_;
};

} // namespace perchly
