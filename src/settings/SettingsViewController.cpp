#include "settings/SettingsViewController.h"

#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "bookmarks/Preferences.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/Box.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/GridView.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/StackView.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/Text.h"
#include "platform/foundation/UserDefaults.h"
#include "platform/webkit/WebsiteDataStore.h"

namespace perchly {
namespace {

using appkit::Button;
using appkit::StackView;
using appkit::TextField;
using appkit::View;

constexpr foundation::Size viewSize { 500, 320 };

std::shared_ptr<TextField> makeSectionLabel(std::string_view text)
{
    auto label = TextField::label(text);
    label->setFont(appkit::Font::systemFont(13));
    label->setAlignment(appkit::TextAlignment::Right);
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    return label;
}

std::shared_ptr<Button> makePushButton(std::string_view title, appkit::Action action)
{
    auto button = Button::withTitle(title, std::move(action));
    button->setBezelStyle(appkit::BezelStyle::Rounded);
    return button;
}

/// A button over a line that says what it does.
std::shared_ptr<StackView> makeExplained(std::shared_ptr<Button> button, std::string_view explanation)
{
    auto note = TextField::label(explanation);
    note->setFont(appkit::Font::systemFont(11));
    note->setTextColor(appkit::Color::SecondaryLabel);
    auto stack = std::make_shared<StackView>(appkit::LayoutOrientation::Vertical);
    stack->setAlignment(appkit::StackAlignment::Leading);
    stack->setSpacing(4);
    stack->addArrangedSubview(std::move(button));
    stack->addArrangedSubview(std::move(note));
    return stack;
}

/// True if the first button, which does it, was chosen.
bool confirm(std::string question, std::string button, appkit::AlertStyle style)
{
    appkit::Alert alert;
    alert.messageText = std::move(question);
    alert.style = style;
    alert.buttonTitles = { std::move(button), "Cancel" };
    return alert.runModal() == 0;
}

} // namespace

void SettingsViewController::loadView()
{
    using Self = SettingsViewController;
    const auto self = weak_from_this();
    auto resetButton = makePushButton("Reset All Data", { "resetAllData", self, &Self::resetAllData });
    resetButton->setContentTintColor(appkit::Color::SystemRed);
    const std::vector<appkit::GridView::Row> rows {
        { makeSectionLabel("General:"),
            Button::checkbox("Launch at login", { "toggleLaunchAtLogin:", self, &Self::toggleLaunchAtLogin }) },
        { appkit::Box::separator(), nullptr },
        { makeSectionLabel("Home Page:"), makeHomePageRow() },
        { makeSectionLabel("Web Cache:"),
            makeExplained(makePushButton("Clear Cache", { "clearCache", self, &Self::clearCache }),
                "Deletes cookies and local storage.") },
        { makeSectionLabel("Factory Reset:"),
            makeExplained(std::move(resetButton), "Restores bookmarks and settings to defaults.") },
    };
    const auto grid = std::make_shared<appkit::GridView>(rows);
    grid->setTranslatesAutoresizingMaskIntoConstraints(false);
    grid->setRowSpacing(20);
    grid->setColumnSpacing(20);
    grid->setXPlacement(appkit::GridXPlacement::Leading);
    grid->setYPlacement(appkit::GridYPlacement::Top);
    grid->mergeCells(1);
    grid->setColumnWidth(0, 120);
    grid->setColumnXPlacement(0, appkit::GridXPlacement::Trailing);
    for (const auto& row : rows) {
        if (const auto label = std::dynamic_pointer_cast<TextField>(row.front()))
            appkit::activateConstraints({ label->heightAnchor().equalToConstant(22) });
    }

    auto root = std::make_shared<View>(foundation::Rect { {}, viewSize });
    root->addSubview(grid);
    appkit::activateConstraints({
        grid->topAnchor().equalTo(root->topAnchor(), 30),
        grid->leadingAnchor().equalTo(root->leadingAnchor(), 20),
        grid->trailingAnchor().equalTo(root->trailingAnchor(), -20),
    });
    setView(std::move(root));
}

std::shared_ptr<View> SettingsViewController::makeHomePageRow()
{
    homePageTextField_ = std::make_shared<TextField>();
    homePageTextField_->setSelectable(true);
    homePageTextField_->setPlaceholderString("example.com or https://...");
    homePageTextField_->setStringValue(
        foundation::UserDefaults::standard().stringForKey(preferences::homePageURL).value_or(""));
    homePageTextField_->setDelegate(weak_from_this());
    homePageTextField_->setAccessibilityLabel("Home Page");
    auto row = std::make_shared<StackView>(appkit::LayoutOrientation::Horizontal);
    row->setAlignment(appkit::StackAlignment::CenterY);
    row->setSpacing(8);
    row->addArrangedSubview(homePageTextField_);
    row->addArrangedSubview(
        makePushButton("Save URL", { "saveHomePage", weak_from_this(), &SettingsViewController::saveHomePage }));
    appkit::activateConstraints({ homePageTextField_->widthAnchor().equalToConstant(260) });
    return row;
}

bool SettingsViewController::controlDoCommandBySelector(TextField& /*field*/, std::string_view /*selector*/)
{
    return false;
}

void SettingsViewController::toggleLaunchAtLogin()
{
    foundation::assertMainThread();
}

void SettingsViewController::saveHomePage()
{
    foundation::assertMainThread();
    const auto text = homePageTextField_->stringValue();
    foundation::UserDefaults::standard().setString(foundation::trimmed(text), preferences::homePageURL);
    notifications::postSettingsDidChange();
    appkit::Alert alert;
    alert.messageText = "Saved";
    alert.runModal();
}

void SettingsViewController::clearCache()
{
    foundation::assertMainThread();
    if (confirm("Clear Cache?", "Clear", appkit::AlertStyle::Warning))
        webkit::WebsiteDataStore::defaultDataStore()->removeAllData([] {});
}

void SettingsViewController::resetAllData()
{
    foundation::assertMainThread();
    if (!confirm("Reset Everything?", "Reset", appkit::AlertStyle::Critical))
        return;
    foundation::UserDefaults::standard().removeObjectForKey(preferences::homePageURL);
    homePageTextField_->setStringValue("");
    notifications::postSettingsDidChange();
    BookmarkManager::shared().loadDefaultBookmarks();
    notifications::postBookmarksDidChange();
}

} // namespace perchly
