#pragma once

#include "platform/appkit/Color.h"
#include "platform/appkit/StackView.h"
#include "platform/foundation/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace appkit {
class PopUpButton;
class TextField;
} // namespace appkit

namespace perchly {

struct Bookmark;

/// A column of captions and controls, as the dialogs on bookmarks have it.
class BookmarkForm {
public:
    /// `insets` on all four sides; a control gets that width.
    BookmarkForm(foundation::Size size, double insets, double controlWidth, appkit::Color captionColor);

    /// With a small caption above, which is the control's accessible name, too.
    template <class Control>
    std::shared_ptr<Control> add(std::string_view caption, std::shared_ptr<Control> control)
    {
        addCaptioned(caption, control);
        return control;
    }

    /// Without a caption; the name is for screen readers only.
    void addNamed(std::string_view name, const std::shared_ptr<appkit::View>& control);

    [[nodiscard]] const std::shared_ptr<appkit::StackView>& stack() const { return stack_; }

private:
    void addCaptioned(std::string_view caption, const std::shared_ptr<appkit::View>& control);

    std::shared_ptr<appkit::StackView> stack_;
    double controlWidth_;
    appkit::Color captionColor_;
};

[[nodiscard]] std::shared_ptr<appkit::TextField> makeFormField(
    const std::optional<std::string>& text, std::string_view placeholder);

/// Lists the icon sizes. The bookmark's own is chosen, or the usual one where there is no bookmark or no size; the
/// first one if the size is none of them.
[[nodiscard]] std::shared_ptr<appkit::PopUpButton> makeIconSizeChooser(const Bookmark* bookmark);

/// What was typed, without white space around it.
[[nodiscard]] std::string trimmedText(const appkit::TextField& field);
/// None where that is empty.
[[nodiscard]] std::optional<std::string> textOrNone(const appkit::TextField& field);

} // namespace perchly
