#include "platform/appkit/TextField.h"

#import "platform/macos/appkit/ActionTarget.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"

/// A field's target and delegate.
@interface PerchlyTextFieldHelper : PerchlyActionTarget <NSTextFieldDelegate>
@property (nonatomic, copy) BOOL (^commandHandler)(NSString* selector);
@end

@implementation PerchlyTextFieldHelper

- (BOOL)control:(NSControl*)control textView:(NSTextView*)textView doCommandBySelector:(SEL)selector
{
    BOOL (^handler)(NSString*) = self.commandHandler;
    return handler(NSStringFromSelector(selector));
}

@end

namespace appkit {
namespace {

std::unique_ptr<View::Native> makeField()
{
    NSTextField* field = [[NSTextField alloc] init];
    PerchlyTextFieldHelper* helper = [[PerchlyTextFieldHelper alloc] init];
    field.target = helper;
    field.action = @selector(invoke:);
    field.delegate = helper;
    return makeNative(field, helper);
}

} // namespace

TextField::TextField()
    : View(makeField())
{
    auto* helper = helperOf<PerchlyTextFieldHelper>(*this);
    // Both hold the field until the operation has returned, which may take it away, and are silent for one that is
    // going: AppKit ends its editing then.
    helper.handler = ^{
        if (const auto self = weak_from_this().lock())
            action_.send(*this);
    };
    helper.commandHandler = ^BOOL(NSString* selector) {
        const auto self = weak_from_this().lock();
        const auto delegate = self ? delegate_.lock() : nullptr;
        return delegate && delegate->controlDoCommandBySelector(*this, textFrom(selector));
    };
}

TextField::TextField(std::unique_ptr<Native> native)
    : View(std::move(native))
{
}

std::shared_ptr<TextField> TextField::label(std::string_view text)
{
    NSTextField* label = [NSTextField labelWithString:nativeText(text)];
    return std::shared_ptr<TextField>(new TextField(makeNative(label)));
}

void TextField::setFont(const Font& font)
{
    nativeView<NSTextField>(*this).font = nativeFont(font);
}

void TextField::setStringValue(std::string_view text)
{
    nativeView<NSTextField>(*this).stringValue = nativeText(text);
}

std::string TextField::stringValue() const
{
    return textFrom(nativeView<NSTextField>(*this).stringValue);
}

void TextField::selectText()
{
    [nativeView<NSTextField>(*this) selectText:nil];
}

void TextField::setPlaceholderString(std::string_view text)
{
    nativeView<NSTextField>(*this).placeholderString = nativeText(text);
}

std::string TextField::placeholderString() const
{
    return textFrom(nativeView<NSTextField>(*this).placeholderString);
}

void TextField::setSelectable(bool selectable)
{
    nativeView<NSTextField>(*this).selectable = selectable;
}

void TextField::setBezeled(bool bezeled)
{
    nativeView<NSTextField>(*this).bezeled = bezeled;
}

void TextField::setBordered(bool bordered)
{
    nativeView<NSTextField>(*this).bordered = bordered;
}

void TextField::setSendsActionOnEndEditing(bool sends)
{
    sendsActionOnEndEditing_ = sends;
    nativeView<NSTextField>(*this).cell.sendsActionOnEndEditing = sends;
}

bool TextField::doCommandBySelector(std::string_view selector)
{
    NSTextField* field = nativeView<NSTextField>(*this);
    NSString* name = nativeText(selector);
    if (helperOf<PerchlyTextFieldHelper>(*this).commandHandler(name))
        return true;
    // Keys come to the field's editor, which is there once the field has the keyboard.
    if (!field.currentEditor)
        [field selectText:nil];
    return [field.currentEditor tryToPerform:NSSelectorFromString(name) with:field];
}

} // namespace appkit
