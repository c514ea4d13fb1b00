#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/Event.h"
#include "platform/appkit/Font.h"
#include "platform/foundation/Geometry.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class Image;

enum class ImagePosition { NoImage = 0, ImageOnly = 1 };

/// What a status item shows in the status bar: an image or a title.
class StatusBarButton : public Sender {
public:
    ~StatusBarButton() override;
    StatusBarButton(const StatusBarButton&) = delete;
    StatusBarButton& operator=(const StatusBarButton&) = delete;

    void setImage(std::shared_ptr<Image> image);
    [[nodiscard]] const std::shared_ptr<Image>& image() const { return image_; }

    void setTitle(std::string_view title);
    [[nodiscard]] const std::string& title() const { return title_; }

    void setImagePosition(ImagePosition position);
    [[nodiscard]] ImagePosition imagePosition() const { return imagePosition_; }

    /// Of the title.
    void setFont(const Font& font);
    [[nodiscard]] const Font& font() const { return font_; }

    void setToolTip(std::string_view text);
    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }

    /// A number of the owner's, for finding again what the button stands for.
    void setTag(std::size_t tag);
    [[nodiscard]] std::size_t tag() const { return tag_; }

    /// Which mouse events send the action; by default the left button's.
    void sendActionOn(EventMask mask);
    [[nodiscard]] EventMask actionMask() const { return actionMask_; }

    void setAction(Action action) { action_ = std::move(action); }
    [[nodiscard]] const Action& action() const { return action_; }

    /// Sends the action, as a click on an item without a menu does.
    void performClick() { action_.send(*this); }

    /// In the button's own coordinates, points.
    [[nodiscard]] foundation::Rect bounds() const;

    struct Native;
    [[nodiscard]] Native& native() const { return *native_; }

private:
    friend class StatusItem;
    explicit StatusBarButton(std::unique_ptr<Native> native);

    std::shared_ptr<Image> image_;
    std::string title_;
    ImagePosition imagePosition_ = ImagePosition::ImageOnly;
    Font font_;
    std::string toolTip_;
    std::size_t tag_ = 0;
    EventMask actionMask_ = EventMask::LeftMouseUp;
    Action action_;
    std::unique_ptr<Native> native_;
};

} // namespace appkit
