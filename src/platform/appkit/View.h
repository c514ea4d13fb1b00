#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/LayoutAnchor.h"
#include "platform/foundation/Geometry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace appkit {

class Window;

/// A rectangle on the screen with views inside. Keeps its subviews alive. Main thread.
class View : public Sender, public std::enable_shared_from_this<View> {
public:
    explicit View(foundation::Rect frame = {});
    ~View() override;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    /// Puts the view above those added before it.
    void addSubview(std::shared_ptr<View> subview);
    [[nodiscard]] const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }

    /// In the superview's coordinates.
    [[nodiscard]] foundation::Rect frame() const;
    void setFrameSize(foundation::Size size);

    /// Off: constraints alone place the view.
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);

    void setHidden(bool hidden);
    [[nodiscard]] bool isHidden() const;

    void setToolTip(std::string_view text);
    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }

    /// The window that shows the view, or null.
    [[nodiscard]] std::shared_ptr<Window> window() const;

    [[nodiscard]] XAxisAnchor leadingAnchor() { return { *this, LayoutAttribute::Leading }; }
    [[nodiscard]] XAxisAnchor trailingAnchor() { return { *this, LayoutAttribute::Trailing }; }
    [[nodiscard]] YAxisAnchor topAnchor() { return { *this, LayoutAttribute::Top }; }
    [[nodiscard]] YAxisAnchor bottomAnchor() { return { *this, LayoutAttribute::Bottom }; }
    [[nodiscard]] YAxisAnchor centerYAnchor() { return { *this, LayoutAttribute::CenterY }; }
    [[nodiscard]] DimensionAnchor widthAnchor() { return { *this, LayoutAttribute::Width }; }
    [[nodiscard]] DimensionAnchor heightAnchor() { return { *this, LayoutAttribute::Height }; }

    struct Native;
    [[nodiscard]] Native& native() const { return *native_; }

protected:
    explicit View(std::unique_ptr<Native> native);

private:
    std::unique_ptr<Native> native_;
    std::vector<std::shared_ptr<View>> subviews_;
    View* superview_ = nullptr;
    std::string toolTip_;
};

} // namespace appkit
