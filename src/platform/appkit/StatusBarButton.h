#pragma once

#include "platform/appkit/Action.h"
#include "platform/foundation/Geometry.h"

#include <memory>
#include <string>
#include <string_view>

namespace appkit {

class Image;

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
    Action action_;
    std::unique_ptr<Native> native_;
};

} // namespace appkit
