#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/View.h"

#include <memory>

namespace appkit {

class Image;

enum class BezelStyle { Rounded = 1, TexturedRounded = 11 };

class Button : public View {
public:
    /// A push button that shows an image and takes its accessible name from the image's description.
    [[nodiscard]] static std::shared_ptr<Button> withImage(std::shared_ptr<Image> image, Action action);

    void setBezelStyle(BezelStyle style);

    void setImage(std::shared_ptr<Image> image);
    [[nodiscard]] const std::shared_ptr<Image>& image() const { return image_; }

    void setEnabled(bool enabled);
    [[nodiscard]] bool isEnabled() const;

    [[nodiscard]] const Action& action() const { return action_; }

    /// Sends the action, as a click does; nothing while disabled.
    void performClick();

private:
    explicit Button(Action action);

    Action action_;
    std::shared_ptr<Image> image_;
};

} // namespace appkit
