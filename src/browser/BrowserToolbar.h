#pragma once

#include "platform/appkit/Action.h"

#include <memory>

namespace appkit {
class Button;
class ProgressIndicator;
class TextField;
class View;
} // namespace appkit

namespace perchly {

struct Bookmark;

/// The strip above a page: seven buttons around the address field, and the spinner inside it.
/// It shows states and sends actions; what they do is its owner's.
class BrowserToolbar {
public:
    struct Actions {
        appkit::Action goBack;
        appkit::Action goForward;
        appkit::Action goHome;
        appkit::Action reload;
        appkit::Action toggleCurrentPagePin;
        appkit::Action toggleCurrentPageMenuBar;
        appkit::Action addCurrentPageToBookmarks;
        appkit::Action urlTextFieldAction;
    };

    /// Points between the top of the browser and the page.
    static constexpr double height = 40;

    /// Adds the views to the top of `root`.
    BrowserToolbar(appkit::View& root, const Actions& actions);

    void showNavigation(bool canGoBack, bool canGoForward);

    /// The bookmark of the page that is shown, or null.
    void showBookmark(const Bookmark* bookmark);

    void showLoading(bool isLoading);

    const std::shared_ptr<appkit::TextField> urlTextField;
    const std::shared_ptr<appkit::Button> backButton;
    const std::shared_ptr<appkit::Button> forwardButton;
    const std::shared_ptr<appkit::Button> homeButton;
    const std::shared_ptr<appkit::Button> reloadButton;
    const std::shared_ptr<appkit::Button> pinButton;
    const std::shared_ptr<appkit::Button> menuButton;
    const std::shared_ptr<appkit::Button> addBookmarkButton;
    const std::shared_ptr<appkit::ProgressIndicator> progressIndicator;

private:
    void addTo(appkit::View& root);
    void layOut(appkit::View& root);
};

} // namespace perchly
