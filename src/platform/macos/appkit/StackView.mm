#include "platform/appkit/StackView.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"

namespace appkit {
namespace {

NSStackView* makeStack(LayoutOrientation orientation, foundation::Rect frame)
{
    NSStackView* stack = [[NSStackView alloc] initWithFrame:nativeRect(frame)];
    stack.orientation = orientation == LayoutOrientation::Horizontal ? NSUserInterfaceLayoutOrientationHorizontal
                                                                     : NSUserInterfaceLayoutOrientationVertical;
    return stack;
}

/// Across the stack's own direction: AppKit takes no other.
NSLayoutAttribute nativeAlignment(StackAlignment alignment, NSUserInterfaceLayoutOrientation orientation)
{
    const bool isRow = orientation == NSUserInterfaceLayoutOrientationHorizontal;
    switch (alignment) {
    case StackAlignment::Leading:
        return isRow ? NSLayoutAttributeTop : NSLayoutAttributeLeading;
    case StackAlignment::CenterX:
    case StackAlignment::CenterY:
        return isRow ? NSLayoutAttributeCenterY : NSLayoutAttributeCenterX;
    }
}

} // namespace

StackView::StackView(LayoutOrientation orientation, foundation::Rect frame)
    : View(makeNative(makeStack(orientation, frame)))
{
    setAlignment(alignment_);
}

void StackView::setSpacing(double spacing)
{
    nativeView<NSStackView>(*this).spacing = spacing;
}

void StackView::setCustomSpacing(double spacing, const View& after)
{
    [nativeView<NSStackView>(*this) setCustomSpacing:spacing afterView:nativeView(after)];
}

void StackView::setAlignment(StackAlignment alignment)
{
    alignment_ = alignment;
    NSStackView* stack = nativeView<NSStackView>(*this);
    stack.alignment = nativeAlignment(alignment, stack.orientation);
}

void StackView::setEdgeInsets(const EdgeInsets& insets)
{
    nativeView<NSStackView>(*this).edgeInsets = NSEdgeInsetsMake(insets.top, insets.left, insets.bottom, insets.right);
}

void StackView::addArrangedSubview(std::shared_ptr<View> view)
{
    // First a subview like any other: to add it as such later would take it out of the stack's order.
    NSView* native = nativeView(*view);
    addSubview(std::move(view));
    [nativeView<NSStackView>(*this) addArrangedSubview:native];
}

} // namespace appkit
