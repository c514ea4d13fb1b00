#include "platform/appkit/TextField.h"

#include "platform/macos/appkit/ControlNative.h"
#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/TextFieldNative.h"

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

NSTextAlignment nativeAlignment(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Natural:
        return NSTextAlignmentNatural;
    case TextAlignment::Center:
        return NSTextAlignmentCenter;
    case TextAlignment::Right:
        return NSTextAlignmentRight;
    }
}

} // namespace

std::unique_ptr<View::Native> makeNativeField(NSTextField* field)
{
    PerchlyTextFieldHelper* helper = [[PerchlyTextFieldHelper alloc] init];
    field.delegate = helper;
    return makeNativeControl(field, helper);
}

TextField::TextField()
    : TextField(makeNativeField([[NSTextField alloc] init]))
{
}

TextField::TextField(std::unique_ptr<Native> native)
    : View(std::move(native))
{
    // Nil for a label, which the user can do nothing with.
    auto* helper = helperOf<PerchlyTextFieldHelper>(*this);
    // Both are silent for a field that is going: AppKit ends its editing then.
    helper.handler = actionHandler(*this, action_);
    helper.commandHandler = ^BOOL(NSString* selector) {
        // Held until the operation has returned, which may take the field away.
        const auto self = weak_from_this().lock();
        const auto delegate = self ? delegate_.lock() : nullptr;
        return delegate && delegate->controlDoCommandBySelector(*this, textFrom(selector));
    };
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

void TextField::setTextColor(Color color)
{
    nativeView<NSTextField>(*this).textColor = nativeColor(color);
}

void TextField::setAlignment(TextAlignment alignment)
{
    nativeView<NSTextField>(*this).alignment = nativeAlignment(alignment);
}

void TextField::setLineBreakMode(LineBreakMode mode)
{
    // What is cut short is one line, whatever is in it.
    nativeView<NSTextField>(*this).usesSingleLineMode = mode == LineBreakMode::ByTruncatingTail;
    nativeView<NSTextField>(*this).lineBreakMode
        = mode == LineBreakMode::ByTruncatingTail ? NSLineBreakByTruncatingTail : NSLineBreakByClipping;
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
