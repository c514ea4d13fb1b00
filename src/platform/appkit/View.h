#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/LayoutAnchor.h"
#include "platform/foundation/Geometry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace appkit {

class Cursor;
class Window;
struct Event;
struct KeyEquivalent;

enum class LayoutDirection { LeftToRight, RightToLeft };
enum class AccessibilityRole { Group, Splitter };

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
    void removeFromSuperview();

    /// Tells views of the same make apart from others.
    void setIdentifier(std::string_view identifier) { identifier_ = identifier; }
    [[nodiscard]] const std::string& identifier() const { return identifier_; }

    /// In the superview's coordinates.
    [[nodiscard]] foundation::Rect frame() const;
    /// The frame in the view's own coordinates.
    [[nodiscard]] foundation::Rect bounds() const { return { {}, frame().size }; }
    /// Holds until the layout next places the view.
    void setFrameSize(foundation::Size size);

    /// Off: constraints alone place the view.
    void setTranslatesAutoresizingMaskIntoConstraints(bool translates);

    void setHidden(bool hidden);
    [[nodiscard]] bool isHidden() const;

    void setToolTip(std::string_view text);
    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }

    /// What a screen reader says of the view.
    void setAccessibilityLabel(std::string_view label);
    void setAccessibilityRole(AccessibilityRole role);

    /// The key sends the action from anywhere in the view's window, unless what has the keyboard takes it first.
    void addKeyEquivalent(const KeyEquivalent& key, Action action);

    /// The mouse's and the cursor's operations come to views that were made to handle the mouse, and do nothing
    /// unless overridden. A mouse-down that comes here goes no further.
    virtual void mouseDown(const Event& event);
    virtual void mouseDragged(const Event& event);
    /// The moment to add the view's cursor rectangles.
    virtual void resetCursorRects();
    /// The cursor shown over the rectangle, in the view's own coordinates. Only while resetting.
    void addCursorRect(foundation::Rect rect, const Cursor& cursor);

    [[nodiscard]] LayoutDirection userInterfaceLayoutDirection() const;

    /// The window that shows the view, or null.
    [[nodiscard]] std::shared_ptr<Window> window() const;

    [[nodiscard]] XAxisAnchor leadingAnchor() { return { *this, LayoutAttribute::Leading }; }
    [[nodiscard]] XAxisAnchor trailingAnchor() { return { *this, LayoutAttribute::Trailing }; }
    [[nodiscard]] XAxisAnchor centerXAnchor() { return { *this, LayoutAttribute::CenterX }; }
    [[nodiscard]] YAxisAnchor topAnchor() { return { *this, LayoutAttribute::Top }; }
    [[nodiscard]] YAxisAnchor bottomAnchor() { return { *this, LayoutAttribute::Bottom }; }
    [[nodiscard]] YAxisAnchor centerYAnchor() { return { *this, LayoutAttribute::CenterY }; }
    [[nodiscard]] DimensionAnchor widthAnchor() { return { *this, LayoutAttribute::Width }; }
    [[nodiscard]] DimensionAnchor heightAnchor() { return { *this, LayoutAttribute::Height }; }

    struct Native;
    [[nodiscard]] Native& native() const { return *native_; }

protected:
    explicit View(std::unique_ptr<Native> native);

    /// A view of zero size whose mouse operations are called.
    struct HandlesMouse { };
    explicit View(HandlesMouse);

private:
    std::unique_ptr<Native> native_;
    std::vector<std::shared_ptr<View>> subviews_;
    View* superview_ = nullptr;
    std::string identifier_;
    std::string toolTip_;
};

} // namespace appkit
