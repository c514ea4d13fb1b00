#include "platform/appkit/TextField.h"

#include "platform/linux/appkit/ColorNative.h"
#include "platform/linux/appkit/FontNative.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/ShownText.h"

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

/// False for a field that is not for searching, or empty already.
bool clearSearch(GtkWidget* widget)
{
    if (!GTK_IS_SEARCH_ENTRY(widget) || *gtk_editable_get_text(GTK_EDITABLE(widget)) == '\0')
        return false;
    gtk_editable_set_text(GTK_EDITABLE(widget), "");
    return true;
}

/// More than a column of any screen has room for.
constexpr desktop::TextLimit longestLine { .characters = 1000 };

/// A text of which the widget shows something else.
struct HiddenText {
    std::string text;
    std::string shown;
};

std::string shownBy(GtkWidget* widget)
{
    return GTK_IS_LABEL(widget) ? gtk_label_get_text(GTK_LABEL(widget)) : gtk_editable_get_text(GTK_EDITABLE(widget));
}

bool isTruncating(GtkWidget* widget)
{
    return GTK_IS_LABEL(widget) && gtk_label_get_ellipsize(GTK_LABEL(widget)) != PANGO_ELLIPSIZE_NONE;
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
    : TextField(makeNative(gtk_entry_new))
{
    gtk_widget_add_css_class(widgetOf(*this), "rounded-bezel");
}

TextField::TextField(std::unique_ptr<Native> native)
    : View(std::move(native))
{
    auto* entry = widgetOf(*this);
    if (GTK_IS_LABEL(entry))
        return;
    g_object_set(entry, "activates-default", TRUE, nullptr);
    auto* keys = gtk_event_controller_key_new();
    gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
    gtk_widget_add_controller(entry, keys);
    auto& connections = this->native().connections;
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

std::shared_ptr<TextField> TextField::label(std::string_view text)
{
    auto label = std::shared_ptr<TextField>(new TextField(makeNative([] { return gtk_label_new(nullptr); })));
    gtk_label_set_xalign(GTK_LABEL(widgetOf(*label)), 0);
    label->setStringValue(text);
    return label;
}

void TextField::setFont(const Font& font)
{
    const auto attributes = attributesOf(font);
    if (auto* widget = widgetOf(*this); GTK_IS_LABEL(widget))
        gtk_label_set_attributes(GTK_LABEL(widget), attributes.get());
    else
        gtk_text_set_attributes(GTK_TEXT(gtk_editable_get_delegate(GTK_EDITABLE(widget))), attributes.get());
}

void TextField::setTextColor(Color color)
{
    appkit::setTextColor(widgetOf(*this), color);
}

void TextField::setAlignment(TextAlignment alignment)
{
    struct Alignment {
        float place;
        GtkJustification lines;
    };
    constexpr Alignment alignments[]
        = { { 0, GTK_JUSTIFY_LEFT }, { 0.5F, GTK_JUSTIFY_CENTER }, { 1, GTK_JUSTIFY_RIGHT } };
    const auto& [place, lines] = alignments[static_cast<std::size_t>(alignment)];
    gtk_label_set_xalign(GTK_LABEL(widgetOf(*this)), place);
    gtk_label_set_justify(GTK_LABEL(widgetOf(*this)), lines);
}

void TextField::setLineBreakMode(LineBreakMode mode)
{
    const auto text = stringValue();
    const auto truncates = mode == LineBreakMode::ByTruncatingTail;
    gtk_label_set_ellipsize(GTK_LABEL(widgetOf(*this)), truncates ? PANGO_ELLIPSIZE_END : PANGO_ELLIPSIZE_NONE);
    gtk_label_set_single_line_mode(GTK_LABEL(widgetOf(*this)), truncates);
    gtk_widget_set_overflow(widgetOf(*this), truncates ? GTK_OVERFLOW_VISIBLE : GTK_OVERFLOW_HIDDEN);
    setStringValue(text);
}

void TextField::setStringValue(std::string_view text)
{
    auto* widget = widgetOf(*this);
    const auto shown = desktop::shownText(text, isTruncating(widget) ? longestLine : desktop::TextLimit {});
    native().helper = shown == text ? nullptr : std::make_shared<HiddenText>(HiddenText { std::string(text), shown });
    if (GTK_IS_LABEL(widget))
        return gtk_label_set_text(GTK_LABEL(widget), shown.c_str());
    auto* editable = GTK_EDITABLE(widget);
    const desktop::SignalBlock nobodyTypes(native().typing);
    const auto wasSelected = isWhollySelected(editable);
    gtk_editable_set_text(editable, shown.c_str());
    // Who was about to type over the old text is about to type over the new one.
    if (wasSelected)
        gtk_editable_select_region(editable, -1, 0); // its beginning stays in sight
}

std::string TextField::stringValue() const
{
    auto shown = shownBy(widgetOf(*this));
    // What the user has typed stands for itself.
    const auto* hidden = static_cast<const HiddenText*>(native().helper.get());
    return hidden && hidden->shown == shown ? hidden->text : shown;
}

void TextField::selectText()
{
    // GTK's text selects all of itself when it gets the keyboard, but not when it has it.
    gtk_widget_grab_focus(widgetOf(*this));
    gtk_editable_select_region(GTK_EDITABLE(widgetOf(*this)), 0, -1);
}

void TextField::setPlaceholderString(std::string_view text)
{
    const std::string placeholder(text);
    g_object_set(widgetOf(*this), "placeholder-text", placeholder.c_str(), nullptr);
    if (!native().hasAccessibilityLabel) {
        gtk_accessible_update_property(
            GTK_ACCESSIBLE(widgetOf(*this)), GTK_ACCESSIBLE_PROPERTY_LABEL, placeholder.c_str(), -1);
    }
}

std::string TextField::placeholderString() const
{
    char* text = nullptr;
    g_object_get(widgetOf(*this), "placeholder-text", &text, nullptr);
    const desktop::GLibPointer<> owned(text);
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
    // One for searching has the frame by which it is known.
    if (auto* widget = widgetOf(*this); GTK_IS_ENTRY(widget))
        gtk_entry_set_has_frame(GTK_ENTRY(widget), bordered);
}

void TextField::setSendsActionOnEndEditing(bool sends)
{
    sendsActionOnEndEditing_ = sends;
}

bool TextField::doCommandBySelector(std::string_view selector)
{
    if (auto delegate = delegate_.lock(); delegate && delegate->controlDoCommandBySelector(*this, selector))
        return true;
    if (selector == "cancelOperation:")
        return clearSearch(widgetOf(*this));
    if (selector != "insertNewline:" || !action_)
        return false;
    action_.send(*this);
    return true;
}

} // namespace appkit
