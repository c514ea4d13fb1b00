#include "platform/appkit/TextField.h"

#include "platform/linux/appkit/ViewNative.h"

#include <array>

namespace appkit {
namespace {

struct KeyCommand {
    guint key;
    bool withShift;
    std::string_view selector;
};

constexpr auto keyCommands = std::to_array<KeyCommand>({
    { GDK_KEY_Return, false, "insertNewline:" },
    { GDK_KEY_KP_Enter, false, "insertNewline:" },
    { GDK_KEY_ISO_Enter, false, "insertNewline:" },
    { GDK_KEY_Escape, false, "cancelOperation:" },
    { GDK_KEY_Tab, false, "insertTab:" },
    { GDK_KEY_ISO_Left_Tab, true, "insertBacktab:" },
    { GDK_KEY_Up, false, "moveUp:" },
    { GDK_KEY_Down, false, "moveDown:" },
});

std::string_view commandFor(guint key, GdkModifierType state)
{
    const auto modifiers = state & gtk_accelerator_get_default_mod_mask();
    for (const auto& command : keyCommands) {
        if (command.key == key && modifiers == (command.withShift ? GDK_SHIFT_MASK : 0))
            return command.selector;
    }
    return {};
}

bool isWhollySelected(GtkEditable* editable)
{
    if (!(gtk_widget_get_state_flags(GTK_WIDGET(editable)) & GTK_STATE_FLAG_FOCUS_WITHIN))
        return false;
    const auto* text = gtk_editable_get_text(editable);
    auto start = 0;
    auto end = 0;
    gtk_editable_get_selection_bounds(editable, &start, &end);
    return start == 0 && end == g_utf8_strlen(text, -1);
}

using Connections = std::vector<desktop::SignalConnection>;

/// Whether an input method composes a character; its keys are no commands until it is done.
std::shared_ptr<const bool> watchComposing(GtkWidget* entry, Connections& connections)
{
    auto isComposing = std::make_shared<bool>(false);
    connections.push_back(desktop::connect<void(const char*)>(gtk_editable_get_delegate(GTK_EDITABLE(entry)),
        "preedit-changed", [isComposing](const char* composed) { *isComposing = *composed != '\0'; }));
    return isComposing;
}

} // namespace

TextField::TextField()
    : View(makeNative(gtk_entry_new))
{
    auto* entry = widgetOf(*this);
    gtk_widget_add_css_class(entry, "rounded-bezel");
    auto* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    gtk_widget_add_controller(entry, keys);
    auto& connections = native().connections;
    connections.push_back(desktop::connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed",
        [this, isComposing = watchComposing(entry, connections)](guint key, guint, GdkModifierType state) -> gboolean {
            // Held until the operation has returned, which may take the field away.
            const auto self = weak_from_this().lock();
            const auto selector = *isComposing ? std::string_view() : commandFor(key, state);
            return self && !selector.empty() && doCommandBySelector(selector);
        }));
    auto* focus = gtk_event_controller_focus_new();
    gtk_widget_add_controller(entry, focus);
    connections.push_back(desktop::connect<void()>(focus, "leave", [this] {
        if (const auto self = weak_from_this().lock(); self && sendsActionOnEndEditing_)
            action_.send(*this);
    }));
}

void TextField::setStringValue(std::string_view text)
{
    auto* editable = GTK_EDITABLE(widgetOf(*this));
    const auto wasSelected = isWhollySelected(editable);
    gtk_editable_set_text(editable, std::string(text).c_str());
    // Who was about to type over the old text is about to type over the new one.
    if (wasSelected)
        gtk_editable_select_region(editable, -1, 0); // its beginning stays in sight
}

std::string TextField::stringValue() const
{
    return gtk_editable_get_text(GTK_EDITABLE(widgetOf(*this)));
}

void TextField::setPlaceholderString(std::string_view text)
{
    gtk_entry_set_placeholder_text(GTK_ENTRY(widgetOf(*this)), std::string(text).c_str());
}

std::string TextField::placeholderString() const
{
    const auto* text = gtk_entry_get_placeholder_text(GTK_ENTRY(widgetOf(*this)));
    return text ? text : "";
}

void TextField::setSelectable(bool selectable)
{
    gtk_widget_set_can_focus(widgetOf(*this), selectable);
}

void TextField::setBezeled(bool bezeled)
{
    setBordered(bezeled);
}

void TextField::setBordered(bool bordered)
{
    gtk_entry_set_has_frame(GTK_ENTRY(widgetOf(*this)), bordered);
}

void TextField::setSendsActionOnEndEditing(bool sends)
{
    sendsActionOnEndEditing_ = sends;
}

bool TextField::doCommandBySelector(std::string_view selector)
{
    if (auto delegate = delegate_.lock(); delegate && delegate->controlDoCommandBySelector(*this, selector))
        return true;
    if (selector != "insertNewline:" || !action_)
        return false;
    action_.send(*this);
    return true;
}

} // namespace appkit
