#pragma once

#include "platform/foundation/Geometry.h"

#include <memory>

namespace appkit {

class StatusBarButton;
class ViewController;

class PopoverDelegate {
public:
    virtual ~PopoverDelegate() = default;
    virtual void popoverDidClose() = 0;
};

enum class RectEdge { MinY = 1 };
enum class PopoverBehavior { ApplicationDefined, Transient };

/// A bubble that points at a status item. Keeps its content alive; holds its delegate weakly. Main thread.
/// popoverDidClose() comes once per showing, after the bubble has left the screen, whoever closed it.
class Popover {
public:
    Popover();
    ~Popover();
    Popover(const Popover&) = delete;
    Popover& operator=(const Popover&) = delete;

    /// Transient: closes when the user turns to something outside of it.
    void setBehavior(PopoverBehavior behavior);
    void setAnimates(bool animates);
    void setDelegate(std::weak_ptr<PopoverDelegate> delegate);

    /// May be changed while shown; null takes the content out.
    void setContentViewController(std::shared_ptr<ViewController> content);
    [[nodiscard]] const std::shared_ptr<ViewController>& contentViewController() const { return content_; }

    void setContentSize(foundation::Size size);
    [[nodiscard]] foundation::Size contentSize() const;

    /// Points at the rectangle (in the button's coordinates) from that edge; moves a bubble that is shown already.
    void show(foundation::Rect rect, StatusBarButton& anchor, RectEdge preferredEdge);
    void performClose();
    [[nodiscard]] bool isShown() const;

private:
    struct Native;
    std::unique_ptr<Native> native_;
    std::shared_ptr<ViewController> content_;
};

} // namespace appkit
