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

/// The size of which stands for the theme's own.
constexpr Font usualFont {};

struct UnrefAttributes {
    void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
};

PangoWeight nativeWeight(FontWeight weight)
{
    switch (weight) {
    case FontWeight::Regular:
        return PANGO_WEIGHT_NORMAL;
    case FontWeight::Medium:
        return PANGO_WEIGHT_MEDIUM;
    case FontWeight::Bold:
        break;
    }
    return PANGO_WEIGHT_BOLD;
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
    gtk_entry_set_activates_default(GTK_ENTRY(entry), TRUE);
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

TextField::TextField(std::unique_ptr<Native> native)
    : View(std::move(native))
{
}

std::shared_ptr<TextField> TextField::label(std::string_view text)
{
    auto label = std::shared_ptr<TextField>(new TextField(makeNative([] { return gtk_label_new(nullptr); })));
    gtk_label_set_xalign(GTK_LABEL(widgetOf(*label)), 0);
    label->setStringValue(text);
    return label;
}

void TextField::setFont(const Font& font)
{
    const std::unique_ptr<PangoAttrList, UnrefAttributes> attributes(pango_attr_list_new());
    pango_attr_list_insert(attributes.get(), pango_attr_scale_new(font.pointSize / usualFont.pointSize));
    pango_attr_list_insert(attributes.get(), pango_attr_weight_new(nativeWeight(font.weight)));
    if (auto* widget = widgetOf(*this); GTK_IS_LABEL(widget))
        gtk_label_set_attributes(GTK_LABEL(widget), attributes.get());
    else
        gtk_entry_set_attributes(GTK_ENTRY(widget), attributes.get());
}

void TextField::setStringValue(std::string_view text)
{
    if (auto* widget = widgetOf(*this); GTK_IS_LABEL(widget))
        return gtk_label_set_text(GTK_LABEL(widget), std::string(text).c_str());
    auto* editable = GTK_EDITABLE(widgetOf(*this));
    const auto wasSelected = isWhollySelected(editable);
    gtk_editable_set_text(editable, std::string(text).c_str());
    // Who was about to type over the old text is about to type over the new one.
    if (wasSelected)
        gtk_editable_select_region(editable, -1, 0); // its beginning stays in sight
}

std::string TextField::stringValue() const
{
    if (auto* widget = widgetOf(*this); GTK_IS_LABEL(widget))
        return gtk_label_get_text(GTK_LABEL(widget));
    return gtk_editable_get_text(GTK_EDITABLE(widgetOf(*this)));
}

void TextField::selectText()
{
    // GTK's text selects all of itself when it gets the keyboard, but not when it has it.
    gtk_widget_grab_focus(widgetOf(*this));
    gtk_editable_select_region(GTK_EDITABLE(widgetOf(*this)), 0, -1);
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
