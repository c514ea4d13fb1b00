#include "pinned/CustomIconDialog.h"

#include "bookmarks/BookmarkPresets.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/StackView.h"
#include "platform/appkit/TextField.h"
#include "platform/foundation/Text.h"

#include <algorithm>

namespace perchly {
namespace {

constexpr foundation::Size fieldSize { 290, 24 };
constexpr auto labelFont = appkit::Font::systemFont(11, appkit::FontWeight::Medium);

void addLabel(appkit::StackView& stack, std::string_view text)
{
    auto label = appkit::TextField::label(text);
    label->setFont(labelFont);
    stack.addArrangedSubview(std::move(label));
}

template <class Control>
std::shared_ptr<Control> addControl(appkit::StackView& stack, std::string_view label, std::shared_ptr<Control> control)
{
    control->setAccessibilityLabel(label);
    stack.addArrangedSubview(control);
    appkit::activateConstraints({
        control->widthAnchor().equalToConstant(fieldSize.width),
        control->heightAnchor().equalToConstant(fieldSize.height),
    });
    return control;
}

std::shared_ptr<appkit::TextField> makeField(const std::optional<std::string>& text, std::string_view placeholder)
{
    auto field = std::make_shared<appkit::TextField>();
    field->setStringValue(text.value_or(""));
    field->setPlaceholderString(placeholder);
    return field;
}

std::shared_ptr<appkit::PopUpButton> makeSizeChooser(const Bookmark& bookmark)
{
    auto chooser = std::make_shared<appkit::PopUpButton>();
    for (const auto& preset : iconSizePresets)
        chooser->addItem(preset.dialogTitle);
    const auto isCurrent = [&](const auto& preset) { return isCurrentIconSize(preset.points, bookmark); };
    const auto current = std::ranges::find_if(iconSizePresets, isCurrent);
    if (current != iconSizePresets.end())
        chooser->selectItemAt(static_cast<std::size_t>(current - iconSizePresets.begin()));
    return chooser;
}

std::optional<std::string> textOrNone(const appkit::TextField& field)
{
    const auto text = field.stringValue();
    const auto entered = foundation::trimmed(text);
    return entered.empty() ? std::nullopt : std::optional(std::string(entered));
}

} // namespace

std::optional<Bookmark> askForCustomIcon(const Bookmark& bookmark)
{
    const auto stack = std::make_shared<appkit::StackView>(
        appkit::LayoutOrientation::Vertical, foundation::Rect { {}, { 300, 160 } });
    stack->setSpacing(8);
    stack->setAlignment(appkit::StackAlignment::Leading);
    stack->setEdgeInsets({ 5, 5, 5, 5 });

    constexpr std::string_view symbolLabel = "Emoji or SF Symbol (e.g. 🚀, safari):";
    addLabel(*stack, symbolLabel);
    const auto symbol
        = addControl(*stack, symbolLabel, makeField(bookmark.sfSymbolName, "Leave empty to use URL or Favicon"));
    constexpr std::string_view addressLabel = "OR Icon URL (PNG/SVG):";
    addLabel(*stack, addressLabel);
    const auto address = addControl(*stack, addressLabel, makeField(bookmark.iconURL, "https://example.com/icon.svg"));
    constexpr std::string_view sizeLabel = "Icon Size:";
    addLabel(*stack, sizeLabel);
    const auto size = addControl(*stack, sizeLabel, makeSizeChooser(bookmark));

    appkit::Alert alert;
    alert.messageText = "Change Custom Icon";
    alert.informativeText = "Enter an Emoji, SF Symbol name, or an Icon URL:";
    alert.buttonTitles = { "Save", "Cancel" };
    alert.accessoryView = stack;
    if (alert.runModal() != 0)
        return std::nullopt;

    auto changed = bookmark;
    changed.menubarIconSize = iconSizePresetAt(size->indexOfSelectedItem()).points;
    changed.sfSymbolName = textOrNone(*symbol);
    changed.iconURL = textOrNone(*address);
    return changed;
}

} // namespace perchly
