#include "platform/linux/statusarea/StatusNotifierItem.h"

#include "platform/linux/statusarea/Picture.h"
#include "platform/linux/statusarea/RegistrationQueue.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr const char* interfaceHead = R"xml(
<node>
  <interface name="org.kde.StatusNotifierItem">)xml";

constexpr const char* activateMethod = R"xml(
    <method name="Activate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>)xml";

constexpr const char* interfaceBody = R"xml(
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconThemePath" type="s" access="read"/>
    <property name="Menu" type="o" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="OverlayIconName" type="s" access="read"/>
    <property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionIconName" type="s" access="read"/>
    <property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionMovieName" type="s" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="XAyatanaLabel" type="s" access="read"/>
    <property name="XAyatanaLabelGuide" type="s" access="read"/>
    <method name="SecondaryActivate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="ContextMenu">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="Scroll">
      <arg name="delta" type="i" direction="in"/>
      <arg name="orientation" type="s" direction="in"/>
    </method>
    <method name="ProvideXdgActivationToken">
      <arg name="token" type="s" direction="in"/>
    </method>
    <signal name="NewTitle"/>
    <signal name="NewIcon"/>
    <signal name="NewAttentionIcon"/>
    <signal name="NewOverlayIcon"/>
    <signal name="NewToolTip"/>
    <signal name="NewMenu"/>
    <signal name="NewStatus">
      <arg name="status" type="s"/>
    </signal>
    <signal name="NewIconThemePath">
      <arg name="path" type="s"/>
    </signal>
    <signal name="XAyatanaNewLabel">
      <arg name="label" type="s"/>
      <arg name="guide" type="s"/>
    </signal>
  </interface>
</node>)xml";

GDBusNodeInfo* parse(const std::string& xml)
{
    return g_dbus_node_info_new_for_xml(xml.c_str(), nullptr);
}

/// Kept for ever: a connection refers to it until it is gone.
GDBusInterfaceInfo* itemInterface(bool hasActivate)
{
    if (hasActivate) {
        static auto* const complete = parse(std::string(interfaceHead) + activateMethod + interfaceBody);
        return complete->interfaces[0];
    }
    static auto* const withoutActivate = parse(std::string(interfaceHead) + interfaceBody);
    return withoutActivate->interfaces[0];
}

/// Some hosts take a tool tip for markup and others do not, so it has nothing that markup gives a meaning.
std::string plain(const std::string& text)
{
    std::string result;
    for (const auto character : text) {
        if (character == '&')
            result += "\uFF06";
        else if (character == '<')
            result += "\u2039";
        else if (character == '>')
            result += "\u203A";
        else
            result += character;
    }
    return result;
}

GVariant* noPixmaps()
{
    return g_variant_new("a(iiay)", nullptr);
}

} // namespace

std::shared_ptr<StatusNotifierItem> StatusNotifierItem::create(
    GDBusConnection* connection, Configuration configuration, Appearance appearance, ClickHandler clicked)
{
    auto item = std::shared_ptr<StatusNotifierItem>(
        new StatusNotifierItem(std::move(configuration), std::move(appearance), std::move(clicked)));
    const auto receive = [weak = item->weak_from_this()](const BusCall& call) {
        if (auto self = weak.lock())
            self->handle(call);
    };
    item->object_.emplace(connection, item->configuration_.path, item->interface_, receive);
    return item;
}

StatusNotifierItem::StatusNotifierItem(Configuration configuration, Appearance appearance, ClickHandler clicked)
    : configuration_(std::move(configuration))
    , appearance_(std::move(appearance))
    , clicked_(std::move(clicked))
    , interface_(itemInterface(configuration_.hasActivate))
{
}

void StatusNotifierItem::setAppearance(Appearance appearance)
{
    if (appearance == appearance_)
        return;
    const auto former = std::exchange(appearance_, std::move(appearance));
    if (former.iconThemePath != appearance_.iconThemePath)
        object_->emit("NewIconThemePath", g_variant_new("(s)", appearance_.iconThemePath.c_str()));
    if (former.iconName != appearance_.iconName || former.picture != appearance_.picture)
        object_->emit("NewIcon", nullptr);
    if (former.title != appearance_.title) {
        object_->emit("NewTitle", nullptr);
        object_->emit("NewToolTip", nullptr);
    }
    if (former.label != appearance_.label)
        object_->emit("XAyatanaNewLabel", g_variant_new("(ss)", appearance_.label.c_str(), appearance_.label.c_str()));
}

void StatusNotifierItem::handle(const BusCall& call)
{
    if (!call.isPropertyRead())
        return click(call);
    if (!appearance_.picture)
        return answerPropertyRead(call, nullptr);
    // The answer waits for the picture: hosts show a placeholder for an item that comes without one.
    // Held weakly, because an item that is taken back must take no click any more.
    auto later = [weak = weak_from_this(), invocation = call.invocation](GVariant* pixmaps) {
        const BusCall asked { g_dbus_method_invocation_get_interface_name(invocation),
            g_dbus_method_invocation_get_method_name(invocation), g_dbus_method_invocation_get_parameters(invocation),
            invocation };
        if (const auto self = weak.lock())
            self->answerPropertyRead(asked, pixmaps);
        else
            asked.fail("The item is gone");
    };
    const char* name = "";
    if (call.method == "Get")
        g_variant_get(call.parameters, "(&s&s)", nullptr, &name);
    if (call.method == "GetAll" || name == std::string_view("IconPixmap"))
        appearance_.picture->withPixmaps(later);
    else
        answerPropertyRead(call, nullptr);
}

void StatusNotifierItem::answerPropertyRead(const BusCall& call, GVariant* pixmaps) const
{
    // The reply is the end of the invocation and its texts.
    auto* item = call.method == "GetAll" ? g_dbus_method_invocation_get_connection(call.invocation) : nullptr;
    replyToPropertyRead(call, interface_, [&](auto name) { return propertyValue(name, pixmaps); });
    if (item)
        RegistrationQueue::shared().itemWasRead(item);
}

GVariant* StatusNotifierItem::propertyValue(std::string_view name, GVariant* pixmaps) const
{
    if (name == "IconPixmap")
        return pixmaps ? pixmaps : noPixmaps();
    if (name == "OverlayIconPixmap" || name == "AttentionIconPixmap")
        return noPixmaps();
    if (name == "WindowId")
        return g_variant_new_int32(0);
    if (name == "ItemIsMenu")
        return g_variant_new_boolean(configuration_.isMenu);
    if (name == "Menu")
        return g_variant_new_object_path(configuration_.menuPath.c_str());
    if (name == "ToolTip")
        return g_variant_new("(s@a(iiay)ss)", "", noPixmaps(), plain(appearance_.title).c_str(), "");
    return textProperty(name);
}

GVariant* StatusNotifierItem::textProperty(std::string_view name) const
{
    const std::pair<std::string_view, const char*> values[] = {
        { "Category", "ApplicationStatus" },
        { "Id", configuration_.id.c_str() },
        { "Title", appearance_.title.c_str() },
        { "Status", "Active" },
        { "IconName", appearance_.iconName.c_str() },
        { "IconThemePath", appearance_.iconThemePath.c_str() },
        { "OverlayIconName", "" },
        { "AttentionIconName", "" },
        { "AttentionMovieName", "" },
        { "XAyatanaLabel", appearance_.label.c_str() },
        { "XAyatanaLabelGuide", appearance_.label.c_str() },
    };
    for (const auto& [known, value] : values) {
        if (known == name)
            return g_variant_new_string(value);
    }
    return nullptr;
}

void StatusNotifierItem::click(const BusCall& call)
{
    static constexpr std::pair<std::string_view, Click> clicks[] = {
        { "Activate", Click::Activate },
        { "SecondaryActivate", Click::SecondaryActivate },
        { "ContextMenu", Click::ContextMenu },
    };
    const auto* click = std::ranges::find(clicks, call.method, &std::pair<std::string_view, Click>::first);
    int x = 0;
    int y = 0;
    if (click != std::end(clicks))
        g_variant_get(call.parameters, "(ii)", &x, &y);
    call.reply(nullptr);
    if (click != std::end(clicks))
        clicked_(click->second, { x, y });
}

} // namespace desktop
