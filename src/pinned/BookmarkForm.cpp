#include "pinned/BookmarkForm.h"

#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkPresets.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/TextField.h"
#include "platform/foundation/Text.h"

#include <algorithm>

namespace perchly {

BookmarkForm::BookmarkForm(foundation::Size size, double insets, double controlWidth, appkit::Color captionColor)
    : stack_(std::make_shared<appkit::StackView>(appkit::LayoutOrientation::Vertical, foundation::Rect { {}, size }))
    , controlWidth_(controlWidth)
    , captionColor_(captionColor)
{
    stack_->setSpacing(8);
    stack_->setAlignment(appkit::StackAlignment::Leading);
    stack_->setEdgeInsets({ insets, insets, insets, insets });
}

void BookmarkForm::addCaptioned(std::string_view caption, const std::shared_ptr<appkit::View>& control)
{
    auto label = appkit::TextField::label(caption);
    label->setFont(appkit::Font::systemFont(11, appkit::FontWeight::Medium));
    label->setTextColor(captionColor_);
    stack_->addArrangedSubview(std::move(label));
    addNamed(caption, control);
}

void BookmarkForm::addNamed(std::string_view name, const std::shared_ptr<appkit::View>& control)
{
    constexpr auto controlHeight = 24.0;
    control->setAccessibilityLabel(name);
    stack_->addArrangedSubview(control);
    appkit::activateConstraints({
        control->widthAnchor().equalToConstant(controlWidth_),
        control->heightAnchor().equalToConstant(controlHeight),
    });
}

std::shared_ptr<appkit::TextField> makeFormField(const std::optional<std::string>& text, std::string_view placeholder)
{
    auto field = std::make_shared<appkit::TextField>();
    field->setStringValue(text.value_or(""));
    field->setPlaceholderString(placeholder);
    return field;
}

std::shared_ptr<appkit::PopUpButton> makeIconSizeChooser(const Bookmark* bookmark)
{
    static const Bookmark withoutSize {};
    auto chooser = std::make_shared<appkit::PopUpButton>();
    for (const auto& preset : iconSizePresets)
        chooser->addItem(preset.dialogTitle);
    const auto isCurrent
        = [&](const auto& preset) { return isCurrentIconSize(preset.points, bookmark ? *bookmark : withoutSize); };
    const auto current = std::ranges::find_if(iconSizePresets, isCurrent);
    if (current != iconSizePresets.end())
        chooser->selectItemAt(static_cast<std::size_t>(current - iconSizePresets.begin()));
    return chooser;
}

std::string trimmedText(const appkit::TextField& field)
{
    const auto text = field.stringValue();
    return std::string(foundation::trimmed(text));
}

std::optional<std::string> textOrNone(const appkit::TextField& field)
{
    auto text = trimmedText(field);
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

} // namespace perchly
