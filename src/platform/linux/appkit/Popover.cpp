#include "platform/appkit/Popover.h"

#include "platform/appkit/ViewController.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/popover/PopoverWindow.h"

namespace appkit {

/// The window is made when the popover is first needed, and with it the toolkit is loaded.
struct Popover::Native {
    PopoverBehavior behavior = PopoverBehavior::ApplicationDefined;
    bool animates = true;
    foundation::Size contentSize;
    std::weak_ptr<PopoverDelegate> delegate;
    std::optional<desktop::PopoverWindow> window;
    std::shared_ptr<Window> wrapper;
    /// Only compared, never followed.
    const StatusBarButton* lastAnchor = nullptr;

    desktop::PopoverWindow& makeWindow()
    {
        if (window)
            return *window;
        desktop::loadToolkit();
        window.emplace([this] { close(); });
        wrapper = wrapWindow(window->window(), "PopoverWindow");
        window->setTransient(behavior == PopoverBehavior::Transient);
        window->setAnimates(animates);
        window->setContentSize(desktop::wholePixels(contentSize.width), desktop::wholePixels(contentSize.height));
        return *window;
    }

    void close()
    {
        if (!window || !window->isShown())
            return;
        window->hide();
        if (auto owner = delegate.lock())
            owner->popoverDidClose(); // last: the delegate may let go of us
    }
};

Popover::Popover()
    : native_(std::make_unique<Native>())
{
}

Popover::~Popover() = default;

void Popover::setBehavior(PopoverBehavior behavior)
{
    native_->behavior = behavior;
    if (native_->window)
        native_->window->setTransient(behavior == PopoverBehavior::Transient);
}

void Popover::setAnimates(bool animates)
{
    native_->animates = animates;
    if (native_->window)
        native_->window->setAnimates(animates);
}

void Popover::setDelegate(std::weak_ptr<PopoverDelegate> delegate)
{
    native_->delegate = std::move(delegate);
}

void Popover::setContentViewController(std::shared_ptr<ViewController> content)
{
    // The former content must outlive its leaving the window.
    const auto before = std::exchange(content_, std::move(content));
    if (content_)
        native_->makeWindow().setContent(widgetOf(*content_->view()));
    else if (native_->window)
        native_->window->setContent(nullptr);
}

void Popover::setContentSize(foundation::Size size)
{
    native_->contentSize = size;
    if (native_->window)
        native_->window->setContentSize(desktop::wholePixels(size.width), desktop::wholePixels(size.height));
}

foundation::Size Popover::contentSize() const
{
    return native_->contentSize;
}

void Popover::show(foundation::Rect /*rect*/, StatusBarButton& anchor, RectEdge /*preferredEdge*/)
{
    // The user clicked the item to close the popover, which the loss of the keyboard may have done already.
    const auto isSameItem = std::exchange(native_->lastAnchor, &anchor) == &anchor;
    if (isSameItem && anchor.native().isBeingClicked) {
        if (isShown())
            return native_->close();
        if (native_->window && native_->window->wasClosedByClick())
            return;
    }
    // Status areas do not tell where an icon is; a click in it and the panel's edge stand for its rectangle and edge.
    std::optional<desktop::PixelPoint> point;
    if (const auto& click = anchor.native().lastClick)
        point = { click->first, click->second };
    native_->makeWindow().show(point);
}

void Popover::performClose()
{
    native_->close();
}

bool Popover::isShown() const
{
    return native_->window && native_->window->isShown();
}

} // namespace appkit
