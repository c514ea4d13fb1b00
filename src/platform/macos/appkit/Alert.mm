#include "platform/appkit/Alert.h"

#include "platform/macos/appkit/Conversions.h"
#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/appkit/WindowNative.h"

#include <algorithm>

namespace appkit {

struct Alert::Native {
    NSAlert* alert;
    /// Whose answer an outer runModal is waiting for.
    Alert* before = nullptr;
};

namespace {

Alert* runningAlert = nullptr;
/// Each kept by its sheet's completion handler.
std::vector<Alert*> sheets;

NSAlertStyle nativeStyle(AlertStyle style)
{
    switch (style) {
    case AlertStyle::Warning:
        return NSAlertStyleWarning;
    case AlertStyle::Informational:
        return NSAlertStyleInformational;
    case AlertStyle::Critical:
        return NSAlertStyleCritical;
    }
}

/// In the order in which they were added; nil where there is none. A label is a text field, too, but not editable.
NSTextField* firstTextField(NSView* view)
{
    if ([view isKindOfClass:NSTextField.class] && static_cast<NSTextField*>(view).isEditable)
        return static_cast<NSTextField*>(view);
    for (NSView* subview in view.subviews) {
        if (NSTextField* field = firstTextField(subview))
            return field;
    }
    return nil;
}

void setAccessory(NSAlert* alert, NSView* accessory)
{
    alert.accessoryView = accessory;
    NSTextField* field = firstTextField(accessory);
    if (!field)
        return;
    // Only an alert that is laid out has the accessory in its window.
    [alert layout];
    alert.window.initialFirstResponder = field;
}

NSAlert* makeAlert(const Alert& alert)
{
    NSAlert* native = [[NSAlert alloc] init];
    native.messageText = nativeText(alert.messageText);
    native.informativeText = nativeText(alert.informativeText);
    native.alertStyle = nativeStyle(alert.style);
    const auto titles = alert.buttonTitles.empty() ? std::vector<std::string> { "OK" } : alert.buttonTitles;
    for (const auto& title : titles)
        [native addButtonWithTitle:nativeText(title)];
    if (alert.accessoryView)
        setAccessory(native, nativeView(*alert.accessoryView));
    return native;
}

} // namespace

std::size_t Alert::runModal()
{
    Native native { makeAlert(*this), runningAlert };
    native_ = &native;
    runningAlert = this;
    const NSModalResponse response = [native.alert runModal];
    runningAlert = native.before;
    native_ = nullptr;
    // Another response says that the session was ended without an answer.
    return response < NSAlertFirstButtonReturn ? native.alert.buttons.count - 1
                                               : static_cast<std::size_t>(response - NSAlertFirstButtonReturn);
}

void Alert::beginSheetModal(const std::shared_ptr<Window>& window) const
{
    struct Sheet {
        Alert alert;
        Native native;
    };
    const auto sheet = std::make_shared<Sheet>(Sheet { *this, { makeAlert(*this) } });
    sheet->alert.native_ = &sheet->native;
    sheets.push_back(&sheet->alert);
    [sheet->native.alert beginSheetModalForWindow:window->native().window
                                completionHandler:^(NSModalResponse response) { std::erase(sheets, &sheet->alert); }];
}

Alert* Alert::sheetOf(const Window& window)
{
    NSWindow* attached = window.native().window.attachedSheet;
    const auto found
        = std::ranges::find_if(sheets, [attached](Alert* each) { return each->native_->alert.window == attached; });
    return found == sheets.end() ? nullptr : *found;
}

Alert* Alert::running()
{
    return runningAlert;
}

void Alert::performClick(std::size_t buttonIndex)
{
    if (native_)
        [native_->alert.buttons[buttonIndex] performClick:nil];
}

} // namespace appkit
