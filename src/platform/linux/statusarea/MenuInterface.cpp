#include "platform/linux/statusarea/MenuInterface.h"

#include "platform/linux/desktop/Environment.h"

#include <cctype>
#include <cstdlib>

namespace desktop {
namespace {

constexpr const char* interfaceXml = R"xml(
<node>
  <interface name="com.canonical.dbusmenu">
    <property name="Version" type="u" access="read"/>
    <property name="TextDirection" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="IconThemePath" type="as" access="read"/>
    <method name="GetLayout">
      <arg type="i" name="parentId" direction="in"/>
      <arg type="i" name="recursionDepth" direction="in"/>
      <arg type="as" name="propertyNames" direction="in"/>
      <arg type="u" name="revision" direction="out"/>
      <arg type="(ia{sv}av)" name="layout" direction="out"/>
    </method>
    <method name="GetGroupProperties">
      <arg type="ai" name="ids" direction="in"/>
      <arg type="as" name="propertyNames" direction="in"/>
      <arg type="a(ia{sv})" name="properties" direction="out"/>
    </method>
    <method name="GetProperty">
      <arg type="i" name="id" direction="in"/>
      <arg type="s" name="name" direction="in"/>
      <arg type="v" name="value" direction="out"/>
    </method>
    <method name="Event">
      <arg type="i" name="id" direction="in"/>
      <arg type="s" name="eventId" direction="in"/>
      <arg type="v" name="data" direction="in"/>
      <arg type="u" name="timestamp" direction="in"/>
    </method>
    <method name="EventGroup">
      <arg type="a(isvu)" name="events" direction="in"/>
      <arg type="ai" name="idErrors" direction="out"/>
    </method>
    <method name="AboutToShow">
      <arg type="i" name="id" direction="in"/>
      <arg type="b" name="needUpdate" direction="out"/>
    </method>
    <method name="AboutToShowGroup">
      <arg type="ai" name="ids" direction="in"/>
      <arg type="ai" name="updatesNeeded" direction="out"/>
      <arg type="ai" name="idErrors" direction="out"/>
    </method>
    <signal name="ItemsPropertiesUpdated">
      <arg type="a(ia{sv})" name="updatedProps"/>
      <arg type="a(ias)" name="removedProps"/>
    </signal>
    <signal name="LayoutUpdated">
      <arg type="u" name="revision"/>
      <arg type="i" name="parent"/>
    </signal>
    <signal name="ItemActivationRequested">
      <arg type="i" name="id"/>
      <arg type="u" name="timestamp"/>
    </signal>
  </interface>
</node>)xml";

/// A single `_` would underline the next character.
std::string escaped(const std::string& label)
{
    std::string text;
    for (const auto character : label)
        text.append(character == '_' ? 2 : 1, character);
    return text;
}

std::int32_t toggleState(const MenuRow& row)
{
    constexpr auto notAToggle = -1;
    if (row.toggle == MenuRow::Toggle::None)
        return notAToggle;
    return row.isOn ? 1 : 0;
}

GVariant* shortcut(const MenuRow& row)
{
    static const auto spelling = shortcutSpellingOn(environment("XDG_CURRENT_DESKTOP"));
    return row.shortcut.empty() ? nullptr : shortcutValue(row.shortcut, spelling);
}

std::string gtkKeyName(const std::string& key)
{
    struct Name {
        const char* key;
        const char* name;
    };
    static constexpr Name names[] = { { ",", "comma" }, { ".", "period" }, { "+", "plus" }, { "-", "minus" } };
    for (const auto& [character, name] : names) {
        if (key == character)
            return name;
    }
    return key;
}

} // namespace

GDBusInterfaceInfo* menuInterface()
{
    // Kept for ever: a connection refers to it until it is gone.
    static auto* const node = g_dbus_node_info_new_for_xml(interfaceXml, nullptr);
    return node->interfaces[0];
}

const char* menuPropertyName(MenuProperty property)
{
    switch (property) {
    case MenuProperty::Label:
        return "label";
    case MenuProperty::Enabled:
        return "enabled";
    case MenuProperty::Visible:
        return "visible";
    case MenuProperty::ToggleState:
        return "toggle-state";
    case MenuProperty::Shortcut:
        return "shortcut";
    case MenuProperty::Icon:
        break;
    }
    return iconProperty;
}

GVariant* menuPropertyValue(const MenuRow& row, std::string_view name)
{
    const bool isSeparator = row.kind == MenuRow::Kind::Separator;
    if (name == "type")
        return g_variant_new_string(isSeparator ? "separator" : "standard");
    if (name == "enabled")
        return g_variant_new_boolean(row.enabled);
    if (name == "visible")
        return g_variant_new_boolean(row.visible);
    if (name == "children-display")
        return row.opensSubmenu ? g_variant_new_string("submenu") : nullptr;
    if (isSeparator)
        return nullptr;
    if (name == "label")
        return g_variant_new_string(escaped(row.label).c_str());
    if (name == "toggle-type")
        return row.toggle == MenuRow::Toggle::None ? nullptr : g_variant_new_string("checkmark");
    if (name == "toggle-state")
        return g_variant_new_int32(toggleState(row));
    if (name == "shortcut")
        return shortcut(row);
    return nullptr;
}

ShortcutSpelling shortcutSpellingOn(std::string_view desktops)
{
    if (namesDesktop(desktops, "XFCE"))
        return ShortcutSpelling::Gtk;
    return namesDesktop(desktops, "KDE") ? ShortcutSpelling::Qt : ShortcutSpelling::None;
}

GVariant* shortcutValue(const std::string& key, ShortcutSpelling spelling)
{
    if (spelling == ShortcutSpelling::None)
        return nullptr;
    const auto character = static_cast<unsigned char>(key.front());
    const auto lower = std::isupper(character) ? std::string(1, static_cast<char>(std::tolower(character))) : key;
    GVariantBuilder keys;
    g_variant_builder_init(&keys, G_VARIANT_TYPE("aas"));
    g_variant_builder_open(&keys, G_VARIANT_TYPE_STRING_ARRAY);
    g_variant_builder_add(&keys, "s", "Control");
    if (std::isupper(character))
        g_variant_builder_add(&keys, "s", "Shift");
    g_variant_builder_add(&keys, "s", spelling == ShortcutSpelling::Gtk ? gtkKeyName(lower).c_str() : lower.c_str());
    g_variant_builder_close(&keys);
    return g_variant_builder_end(&keys);
}

} // namespace desktop
