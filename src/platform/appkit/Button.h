#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/Color.h"
#include "platform/appkit/Font.h"
#include "platform/appkit/View.h"

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class Image;

enum class BezelStyle { Rounded = 1, TexturedRounded = 11, Recessed = 13 };

enum class ControlState { Off, On };

class Button : public View {
public:
    /// A push button that shows an image and takes its accessible name from the image's description.
    [[nodiscard]] static std::shared_ptr<Button> withImage(std::shared_ptr<Image> image, Action action);

    [[nodiscard]] static std::shared_ptr<Button> withTitle(std::string_view title, Action action);

    /// A box that a click checks or unchecks, with a title beside it.
    [[nodiscard]] static std::shared_ptr<Button> checkbox(std::string_view title, Action action = {});

    void setBezelStyle(BezelStyle style);
    void setBordered(bool bordered);
    void setContentTintColor(Color color);
    void setFont(const Font& font);

    [[nodiscard]] const std::string& title() const { return title_; }

    /// Of a checkbox. Setting it sends no action.
    void setState(ControlState state);
    [[nodiscard]] ControlState state() const;

    /// Null: an empty picture.
    void setImage(std::shared_ptr<Image> image);
    [[nodiscard]] const std::shared_ptr<Image>& image() const { return image_; }

    void setEnabled(bool enabled);
    [[nodiscard]] bool isEnabled() const;

    [[nodiscard]] const Action& action() const { return action_; }

    /// Does what a click does: changes the state of a checkbox, and sends the action. Nothing while disabled.
    void performClick();

    /// Whoever is pressing the button presses nothing from now on, until the next time.
    void dropPress();

private:
    Button(std::unique_ptr<Native> native, Action action);

    Action action_;
    std::string title_;
    std::shared_ptr<Image> image_;
};

} // namespace appkit
