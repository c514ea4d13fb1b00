#include "platform/appkit/View.h"

#include "platform/appkit/KeyEquivalent.h"
#include "platform/foundation/FatalError.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/CursorNative.h"
#import "platform/macos/appkit/PlainView.h"
#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/appkit/WindowNative.h"

namespace appkit {
namespace {

/// Null for a control.
PerchlyPlainView* plainView(const View& view)
{
    NSView* native = nativeView(view);
    return [native isKindOfClass:PerchlyPlainView.class] ? static_cast<PerchlyPlainView*>(native) : nil;
}

} // namespace

View::View(foundation::Rect frame)
    : View(makeNative([[PerchlyPlainView alloc] initWithFrame:nativeRect(frame)]))
{
    plainView(*this).owner = this;
}

View::View(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

View::View(HandlesMouse)
    : View(foundation::Rect {})
{
    plainView(*this).handlesMouse = YES;
}

View::~View()
{
    // Others may keep them for longer.
    for (const auto& subview : subviews_)
        subview->superview_ = nullptr;
    plainView(*this).owner = nullptr;
    [native_->view removeFromSuperview];
}

void View::addSubview(std::shared_ptr<View> subview)
{
    subview->removeFromSuperview();
    [native_->view addSubview:nativeView(*subview)];
    subview->superview_ = this;
    subviews_.push_back(std::move(subview));
}

void View::removeFromSuperview()
{
    if (!superview_)
        return;
    // Held until the end: the superview may be the last owner.
    const auto self = shared_from_this();
    std::erase(std::exchange(superview_, nullptr)->subviews_, self);
    [native_->view removeFromSuperview];
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

void View::setAccessibilityLabel(std::string_view label)
{
    native_->view.accessibilityLabel = nativeText(label);
}

void View::setAccessibilityRole(AccessibilityRole role)
{
    native_->view.accessibilityRole
        = role == AccessibilityRole::Splitter ? NSAccessibilitySplitterRole : NSAccessibilityGroupRole;
    // Screen readers pass over a view that is no control, unless it says that it is something.
    native_->view.accessibilityElement = YES;
}

void View::addKeyEquivalent(const KeyEquivalent& key, Action action)
{
    auto* view = plainView(*this);
    if (!view)
        foundation::fatalError("a control has no key equivalents added to it");
    [view addKeyEquivalent:key action:std::move(action)];
}

void View::mouseDown(const Event& /*event*/) { }

void View::mouseDragged(const Event& /*event*/) { }

void View::resetCursorRects() { }

void View::addCursorRect(foundation::Rect rect, const Cursor& cursor)
{
    [native_->view addCursorRect:nativeRect(rect) cursor:cursor.native().cursor];
}

LayoutDirection View::userInterfaceLayoutDirection() const
{
    const bool isMirrored = native_->view.userInterfaceLayoutDirection == NSUserInterfaceLayoutDirectionRightToLeft;
    return isMirrored ? LayoutDirection::RightToLeft : LayoutDirection::LeftToRight;
}

std::shared_ptr<Window> View::window() const
{
    return windowOf(native_->view);
}

} // namespace appkit
