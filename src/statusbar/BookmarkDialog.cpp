#include "statusbar/BookmarkDialog.h"

#include "bookmarks/BookmarkPresets.h"
#include "pinned/BookmarkForm.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/TextField.h"
#include "statusbar/ClosureHandler.h"

#include <algorithm>

namespace perchly {
namespace {

constexpr std::string_view customTitle = "Custom...";

/// The choice of what the browser calls itself. The field is seen only while it counts.
struct UserAgentChooser {
    std::shared_ptr<appkit::PopUpButton> popUp;
    std::shared_ptr<appkit::TextField> customField;
    std::shared_ptr<ClosureHandler> chosen;

    explicit UserAgentChooser(const std::optional<std::string>& userAgent)
        : popUp(std::make_shared<appkit::PopUpButton>())
        , customField(makeFormField({}, "Enter custom User Agent string"))
        , chosen(std::make_shared<ClosureHandler>(
              [popUp = popUp, field = customField] { field->setHidden(popUp->titleOfSelectedItem() != customTitle); }))
    {
        for (const auto& preset : addDialogUserAgentPresets)
            popUp->addItem(preset.title);
        customField->setHidden(true);
        popUp->setAction({ "invoke", std::weak_ptr(chosen), &ClosureHandler::invoke });
        if (userAgent)
            select(*userAgent);
    }

    void select(const std::string& userAgent) const
    {
        const auto row = std::ranges::find(addDialogUserAgentPresets, userAgent, &UserAgentPreset::value);
        if (row != addDialogUserAgentPresets.end())
            return popUp->selectItemAt(static_cast<std::size_t>(row - addDialogUserAgentPresets.begin()));
        popUp->selectItemWithTitle(customTitle);
        customField->setStringValue(userAgent);
        customField->setHidden(false);
    }

    [[nodiscard]] std::optional<std::string> userAgent() const
    {
        const auto& preset = userAgentPresetAt(popUp->indexOfSelectedItem());
        if (preset.value == customUserAgentMarker)
            return textOrNone(*customField);
        return preset.value ? std::optional<std::string>(*preset.value) : std::nullopt;
    }
};

} // namespace

std::optional<Bookmark> askForBookmark(const std::optional<Bookmark>& bookmark)
{
    appkit::Alert alert;
    alert.messageText = bookmark ? "Edit Bookmark" : "Add New Bookmark";
    alert.informativeText = "Enter details below:";
    alert.buttonTitles = { bookmark ? "Save" : "Add", "Cancel" };

    const auto current = bookmark.value_or(Bookmark {});
    BookmarkForm form({ 350, 300 }, 10, 330, appkit::Color::SecondaryLabel);
    const auto title = form.add("Title:", makeFormField(current.title, "Title (e.g. Google)"));
    const auto address = form.add("URL:", makeFormField(current.url, "URL (example.com)"));
    const auto symbol = form.add("Custom Icon: Emoji(🚀), SF Symbol(safari), or Text (WB):",
        makeFormField(current.sfSymbolName, "e.g. 🚀, 🔥, safari, terminal, YT, FB"));
    const auto iconAddress
        = form.add("OR Custom Icon URL (PNG/JPG):", makeFormField(current.iconURL, "https://example.com/icon.png"));
    const auto size = form.add("Icon Size in Menubar:", makeIconSizeChooser(bookmark ? &*bookmark : nullptr));
    const UserAgentChooser agent(current.userAgent);
    form.add("Browser Agent:", agent.popUp);
    form.addNamed("Custom User Agent", agent.customField);
    const auto openInSystemBrowser = appkit::Button::checkbox("Open in System Default Browser");
    openInSystemBrowser->setState(current.openInSystemBrowser ? appkit::ControlState::On : appkit::ControlState::Off);
    form.stack()->addArrangedSubview(openInSystemBrowser);
    alert.accessoryView = form.stack();
    if (alert.runModal() != 0)
        return std::nullopt;

    auto entered = bookmark.value_or(Bookmark {});
    entered.title = trimmedText(*title);
    entered.url = trimmedText(*address);
    entered.sfSymbolName = textOrNone(*symbol);
    entered.iconURL = textOrNone(*iconAddress);
    entered.menubarIconSize = iconSizePresetAt(size->indexOfSelectedItem()).points;
    entered.userAgent = agent.userAgent();
    entered.openInSystemBrowser = openInSystemBrowser->state() == appkit::ControlState::On;
    if (entered.url.empty())
        return std::nullopt;
    if (entered.title.empty())
        entered.title = entered.url;
    return entered;
}

} // namespace perchly
