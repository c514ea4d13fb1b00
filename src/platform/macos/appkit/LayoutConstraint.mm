#include "platform/appkit/LayoutConstraint.h"

#include "platform/macos/appkit/ViewNative.h"

namespace appkit {
namespace {

NSLayoutAttribute nativeAttribute(LayoutAttribute attribute)
{
    switch (attribute) {
    case LayoutAttribute::Leading:
        return NSLayoutAttributeLeading;
    case LayoutAttribute::Trailing:
        return NSLayoutAttributeTrailing;
    case LayoutAttribute::Top:
        return NSLayoutAttributeTop;
    case LayoutAttribute::Bottom:
        return NSLayoutAttributeBottom;
    case LayoutAttribute::CenterX:
        return NSLayoutAttributeCenterX;
    case LayoutAttribute::CenterY:
        return NSLayoutAttributeCenterY;
    case LayoutAttribute::Width:
        return NSLayoutAttributeWidth;
    case LayoutAttribute::Height:
        return NSLayoutAttributeHeight;
    }
}

NSLayoutConstraint* nativeConstraint(const LayoutConstraint& constraint)
{
    const View* second = constraint.secondView;
    return [NSLayoutConstraint
        constraintWithItem:nativeView(constraint.first.view)
                 attribute:nativeAttribute(constraint.first.attribute)
                 relatedBy:NSLayoutRelationEqual
                    toItem:second ? nativeView(*second) : nil
                 attribute:second ? nativeAttribute(constraint.secondAttribute) : NSLayoutAttributeNotAnAttribute
                multiplier:1
                  constant:constraint.constant];
}

} // namespace

void activateConstraints(std::initializer_list<LayoutConstraint> constraints)
{
    NSMutableArray<NSLayoutConstraint*>* natives = [NSMutableArray array];
    for (const auto& constraint : constraints)
        [natives addObject:nativeConstraint(constraint)];
    [NSLayoutConstraint activateConstraints:natives];
}

} // namespace appkit
