#include "browser/BrowserToolbar.h"

#include "bookmarks/Bookmark.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/ProgressIndicator.h"
#include "platform/appkit/TextField.h"

#include <string_view>

namespace perchly {
namespace {

using appkit::Image;

std::shared_ptr<appkit::TextField> makeAddressField(const appkit::Action& action)
{
    auto field = std::make_shared<appkit::TextField>();
    field->setSelectable(true);
    field->setPlaceholderString("Enter URL or select a bookmark");
    field->setAccessibilityLabel("Address");
    field->setAction(action);
    field->setBezeled(true);
    field->setBordered(true);
    // Only Return navigates; leaving the field never does.
    field->setSendsActionOnEndEditing(false);
    return field;
}

std::shared_ptr<appkit::Button> makeButton(std::string_view symbol, std::string_view accessibilityDescription,
    std::string_view toolTip, const appkit::Action& action)
{
    auto button = appkit::Button::withImage(Image::systemSymbol(symbol, accessibilityDescription), action);
    button->setBezelStyle(appkit::BezelStyle::TexturedRounded);
    button->setToolTip(toolTip);
    return button;
}

std::shared_ptr<appkit::ProgressIndicator> makeSpinner()
{
    auto spinner = std::make_shared<appkit::ProgressIndicator>();
    spinner->setStyle(appkit::ProgressIndicatorStyle::Spinning);
    spinner->setControlSize(appkit::ControlSize::Small);
    spinner->setDisplayedWhenStopped(false);
    return spinner;
}

} // namespace

BrowserToolbar::BrowserToolbar(appkit::View& root, const Actions& actions)
    : urlTextField(makeAddressField(actions.urlTextFieldAction))
    , backButton(makeButton("chevron.left", "Back", {}, actions.goBack))
    , forwardButton(makeButton("chevron.right", "Forward", {}, actions.goForward))
    , homeButton(makeButton("house", "Home", "Go to Bookmark Home", actions.goHome))
    , reloadButton(makeButton("arrow.clockwise", "Reload", {}, actions.reload))
    , pinButton(makeButton("pin", "Pin to Quick Access", "Pin to Quick Access", actions.toggleCurrentPagePin))
    , menuButton(makeButton("plus.circle", "Add to Menubar", "Add to Menubar", actions.toggleCurrentPageMenuBar))
    , addBookmarkButton(makeButton("star", "Add Bookmark", "Bookmark current page", actions.addCurrentPageToBookmarks))
    , progressIndicator(makeSpinner())
{
    addTo(root);
    layOut(root);
}

void BrowserToolbar::addTo(appkit::View& root)
{
    const std::shared_ptr<appkit::View> views[] = { urlTextField, backButton, forwardButton, homeButton, reloadButton,
        pinButton, menuButton, addBookmarkButton, progressIndicator };
    for (const auto& view : views) {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        root.addSubview(view);
    }
}

void BrowserToolbar::layOut(appkit::View& root)
{
    auto& field = *urlTextField;
    appkit::activateConstraints({
        field.topAnchor().equalTo(root.topAnchor(), 8),
        field.leadingAnchor().equalTo(homeButton->trailingAnchor(), 8),
        field.trailingAnchor().equalTo(pinButton->leadingAnchor(), -8),
        field.heightAnchor().equalToConstant(24),

        progressIndicator->trailingAnchor().equalTo(field.trailingAnchor(), -4),
        progressIndicator->centerYAnchor().equalTo(field.centerYAnchor()),
        progressIndicator->widthAnchor().equalToConstant(16),
        progressIndicator->heightAnchor().equalToConstant(16),

        backButton->leadingAnchor().equalTo(root.leadingAnchor(), 8),
        forwardButton->leadingAnchor().equalTo(backButton->trailingAnchor(), 2),
        homeButton->leadingAnchor().equalTo(forwardButton->trailingAnchor(), 2),

        pinButton->trailingAnchor().equalTo(menuButton->leadingAnchor(), -2),
        menuButton->trailingAnchor().equalTo(addBookmarkButton->leadingAnchor(), -2),
        addBookmarkButton->trailingAnchor().equalTo(reloadButton->leadingAnchor(), -2),
        reloadButton->trailingAnchor().equalTo(root.trailingAnchor(), -8),
    });
    for (const auto& button :
        { backButton, forwardButton, homeButton, reloadButton, pinButton, menuButton, addBookmarkButton }) {
        appkit::activateConstraints({
            button->centerYAnchor().equalTo(field.centerYAnchor()),
            button->widthAnchor().equalToConstant(26),
        });
    }
}

void BrowserToolbar::showNavigation(bool canGoBack, bool canGoForward)
{
    backButton->setEnabled(canGoBack);
    forwardButton->setEnabled(canGoForward);
}

void BrowserToolbar::showBookmark(const Bookmark* bookmark)
{
    pinButton->setImage(Image::systemSymbol(bookmark && bookmark->isPinned ? "pin.fill" : "pin"));
    menuButton->setImage(Image::systemSymbol(bookmark && bookmark->isAddedToMenuBar ? "minus.circle" : "plus.circle"));
    addBookmarkButton->setEnabled(!bookmark);
}

void BrowserToolbar::showLoading(bool isLoading)
{
    if (isLoading)
        progressIndicator->startAnimation();
    else
        progressIndicator->stopAnimation();
}

} // namespace perchly
