#include "platform/appkit/View.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/appkit/WindowNative.h"

namespace appkit {

View::View(foundation::Rect frame)
    : View(makeNative([[NSView alloc] initWithFrame:nativeRect(frame)]))
{
}

View::View(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

View::~View()
{
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
    [native_->view removeFromSuperview];
}

void View::addSubview(std::shared_ptr<View> subview)
{
    [native_->view addSubview:nativeView(*subview)];
    subview->superview_ = this;
    subviews_.push_back(std::move(subview));
}

foundation::Rect View::frame() const
{
    return rectFrom(native_->view.frame);
}

void View::setFrameSize(foundation::Size size)
{
    [native_->view setFrameSize:nativeSize(size)];
}

void View::setTranslatesAutoresizingMaskIntoConstraints(bool translates)
{
    native_->view.translatesAutoresizingMaskIntoConstraints = translates;
}

void View::setHidden(bool hidden)
{
    native_->view.hidden = hidden;
}

bool View::isHidden() const
{
    return native_->view.isHidden;
}

void View::setToolTip(std::string_view text)
{
    toolTip_ = text;
    native_->view.toolTip = nativeTextOrNone(text);
}

std::shared_ptr<Window> View::window() const
{
    NSWindow* window = native_->view.window;
    if (!window)
        return nullptr;
    return std::make_shared<Window>(std::make_unique<Window::Native>(Window::Native { window }));
}

} // namespace appkit
