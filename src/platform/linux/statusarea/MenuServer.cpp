#include "platform/linux/statusarea/MenuServer.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/statusarea/MenuInterface.h"
#include "platform/linux/statusarea/Picture.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace desktop {
namespace {

template <class Element>
void forEach(GVariant* array, const char* format, const std::function<void(Element)>& use)
{
    GVariantIter iterator;
    g_variant_iter_init(&iterator, array);
    Element element {};
    while (g_variant_iter_next(&iterator, format, &element))
        use(element);
}

std::vector<std::int32_t> idsIn(GVariant* array)
{
    std::vector<std::int32_t> ids;
    forEach<gint32>(array, "i", [&](auto id) { ids.push_back(id); });
    return ids;
}

std::set<std::string> namesIn(GVariant* array)
{
    std::set<std::string> names;
    forEach<const char*>(array, "&s", [&](auto name) { names.insert(name); });
    return names;
}

GVariant* toVariant(const std::vector<std::int32_t>& ids)
{
    return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(std::int32_t));
}

/// The menu itself: not its rows.
GVariant* menuProperty(std::string_view name)
{
    if (name == "Version")
        return g_variant_new_uint32(3);
    if (name == "TextDirection")
        return g_variant_new_string("ltr");
    if (name == "Status")
        return g_variant_new_string("normal");
    if (name == "IconThemePath")
        return g_variant_new_strv(nullptr, 0);
    return nullptr;
}

} // namespace

std::shared_ptr<MenuServer> MenuServer::create(GDBusConnection* connection, std::string path, Source source)
{
    auto server = std::shared_ptr<MenuServer>(new MenuServer(std::move(source)));
    server->object_.emplace(
        connection, std::move(path), menuInterface(), [weak = server->weak_from_this()](const auto& call) {
            if (auto self = weak.lock())
                self->handle(call);
        });
    return server;
}

void MenuServer::rowsChanged()
{
    // Who has not asked for the rows need not hear of their change.
    if (pendingChange_ || !isPrepared_)
        return;
    pendingChange_ = callAfter(0, [this] {
        pendingChange_.reset();
        if (refresh().layout)
            announceLayout();
    });
}

void MenuServer::handle(const BusCall& call)
{
    if (call.isPropertyRead())
        return replyToPropertyRead(call, menuInterface(), menuProperty);
    prepare();
    struct Method {
        std::string_view name;
        void (MenuServer::*answer)(const BusCall&);
    };
    static constexpr Method methods[] = {
        { "GetLayout", &MenuServer::getLayout },
        { "GetGroupProperties", &MenuServer::getGroupProperties },
        { "GetProperty", &MenuServer::getProperty },
        { "Event", &MenuServer::event },
        { "EventGroup", &MenuServer::eventGroup },
        { "AboutToShow", &MenuServer::aboutToShow },
        { "AboutToShowGroup", &MenuServer::aboutToShowGroup },
    };
    for (const auto& method : methods) {
        if (method.name == call.method)
            return (this->*method.answer)(call);
    }
    call.fail("No such method");
}

void MenuServer::getLayout(const BusCall& call)
{
    gint32 id = 0;
    gint32 depth = 0;
    GVariant* names = nullptr;
    g_variant_get(call.parameters, "(ii@as)", &id, &depth, &names);
    const auto wanted = adoptVariant(names);
    const auto* node = tree_.find(id);
    if (!node)
        return call.fail("No such row");
    call.reply(g_variant_new("(u@(ia{sv}av))", tree_.revision(), layout(id, *node, depth, namesIn(names))));
}

/// A negative depth means all of it.
GVariant* MenuServer::layout(std::int32_t id, const MenuTree::Node& node, int depth, const std::set<std::string>& names)
{
    GVariantBuilder children;
    g_variant_builder_init(&children, G_VARIANT_TYPE("av"));
    const auto below = depth < 0 ? depth : depth - 1; // a host may ask for the least of all numbers
    for (const auto child : node.children) {
        if (depth == 0)
            break;
        g_variant_builder_add(&children, "v", layout(child, *tree_.find(child), below, names));
    }
    return g_variant_new("(i@a{sv}av)", id, properties(node.row, names), &children);
}

/// No names mean all of them.
GVariant* MenuServer::properties(const MenuRow& row, const std::set<std::string>& names)
{
    GVariantBuilder values;
    g_variant_builder_init(&values, G_VARIANT_TYPE_VARDICT);
    const auto add = [&](const char* name, GVariant* value) {
        if (value)
            g_variant_builder_add(&values, "{sv}", name, value);
    };
    for (const auto* name : menuPropertyNames) {
        if (names.empty() || names.contains(name))
            add(name, name == iconProperty ? icon(row.icon) : menuPropertyValue(row, name));
    }
    return g_variant_builder_end(&values);
}

/// A value that the picture keeps. Null, too, while it is being drawn: hosts are told when it is there.
GVariant* MenuServer::icon(const std::shared_ptr<Picture>& picture)
{
    if (!picture)
        return nullptr;
    if (auto* drawn = picture->drawnIcon())
        return g_variant_get_size(drawn) > 0 ? drawn : nullptr;
    if (!beingDrawn_.insert(picture.get()).second)
        return nullptr;
    picture->withIcon([weak = weak_from_this(), picture](GVariant*) {
        auto self = weak.lock();
        if (!self)
            return;
        self->beingDrawn_.erase(picture.get());
        std::vector<MenuRowChange> changes;
        for (const auto id : self->tree_.rowsShowing(*picture))
            changes.push_back({ id, { MenuProperty::Icon } });
        self->announceProperties(changes);
    });
    return nullptr;
}

void MenuServer::getGroupProperties(const BusCall& call)
{
    GVariant* idArray = nullptr;
    GVariant* names = nullptr;
    g_variant_get(call.parameters, "(@ai@as)", &idArray, &names);
    const auto ownedIds = adoptVariant(idArray);
    const auto ownedNames = adoptVariant(names);
    const auto wanted = namesIn(names);
    GVariantBuilder rows;
    g_variant_builder_init(&rows, G_VARIANT_TYPE("a(ia{sv})"));
    for (const auto id : idsIn(idArray)) {
        if (const auto* node = tree_.find(id))
            g_variant_builder_add(&rows, "(i@a{sv})", id, properties(node->row, wanted));
    }
    call.reply(g_variant_new("(a(ia{sv}))", &rows));
}

void MenuServer::getProperty(const BusCall& call)
{
    gint32 id = 0;
    const char* name = nullptr;
    g_variant_get(call.parameters, "(i&s)", &id, &name);
    const auto* node = tree_.find(id);
    if (!node)
        return call.fail("No such row");
    auto* value = name == std::string_view(iconProperty) ? icon(node->row.icon) : menuPropertyValue(node->row, name);
    if (!value)
        return call.fail("The row has no such property");
    call.reply(g_variant_new("(v)", value));
}

/// The action itself runs later: the host that sends the event may still hold the pointer.
bool MenuServer::perform(std::int32_t id, std::string_view event)
{
    const bool isClick = event == "clicked";
    // Some hosts never say that a menu opens: what a row of theirs carries may be long out of date.
    if (isClick && !std::exchange(isOpen_, false) && refresh().layout)
        announceLayout();
    auto action = tree_.actionOf(id);
    if (isClick && action)
        foundation::dispatchMainAsync(action);
    return action || tree_.find(id);
}

void MenuServer::event(const BusCall& call)
{
    gint32 id = 0;
    const char* event = nullptr;
    g_variant_get(call.parameters, "(i&svu)", &id, &event, nullptr, nullptr);
    call.reply(nullptr);
    perform(id, event);
}

void MenuServer::eventGroup(const BusCall& call)
{
    const auto events = adoptVariant(g_variant_get_child_value(call.parameters, 0));
    Ids unknown;
    GVariantIter iterator;
    g_variant_iter_init(&iterator, events.get());
    gint32 id = 0;
    const char* event = nullptr;
    while (g_variant_iter_next(&iterator, "(i&svu)", &id, &event, nullptr, nullptr)) {
        if (!perform(id, event))
            unknown.push_back(id);
    }
    call.reply(g_variant_new("(@ai)", toVariant(unknown)));
}

void MenuServer::aboutToShow(const BusCall& call)
{
    gint32 id = 0;
    g_variant_get(call.parameters, "(i)", &id);
    open(id == MenuTree::rootId, [&](bool changed) { call.reply(g_variant_new("(b)", changed)); });
}

void MenuServer::aboutToShowGroup(const BusCall& call)
{
    const auto array = adoptVariant(g_variant_get_child_value(call.parameters, 0));
    const auto ids = idsIn(array.get());
    const bool isRoot = std::ranges::find(ids, MenuTree::rootId) != ids.end();
    open(isRoot, [&](bool changed) {
        Ids unknown;
        std::ranges::copy_if(ids, std::back_inserter(unknown), [&](auto id) { return !tree_.find(id); });
        const auto updated = changed ? Ids { MenuTree::rootId } : Ids {};
        call.reply(g_variant_new("(@ai@ai)", toVariant(updated), toVariant(unknown)));
    });
}

void MenuServer::open(bool isRoot, const std::function<void(bool changed)>& reply)
{
    if (!isRoot)
        return reply(false);
    isOpen_ = true;
    const bool changed = refresh().layout;
    reply(changed);
    // Plasma takes one signal after the reply as its echo and drops it; libdbusmenu reads only the signal.
    if (changed)
        announceLayout();
    if (source_.hasOpened)
        source_.hasOpened();
}

/// Many items have menus that nobody ever opens.
void MenuServer::prepare()
{
    if (!std::exchange(isPrepared_, true))
        tree_.replace(source_.rows());
}

MenuChange MenuServer::refresh()
{
    auto change = tree_.replace(source_.rows());
    announceProperties(change.rows);
    return change;
}

void MenuServer::announceLayout() const
{
    object_->emit("LayoutUpdated", g_variant_new("(ui)", tree_.revision(), MenuTree::rootId));
}

void MenuServer::announceProperties(const std::vector<MenuRowChange>& changes)
{
    if (changes.empty())
        return;
    GVariantBuilder updated;
    GVariantBuilder removed;
    g_variant_builder_init(&updated, G_VARIANT_TYPE("a(ia{sv})"));
    g_variant_builder_init(&removed, G_VARIANT_TYPE("a(ias)"));
    for (const auto& change : changes) {
        const auto& row = tree_.find(change.id)->row;
        std::set<std::string> names;
        for (const auto property : change.properties)
            names.insert(menuPropertyName(property));
        g_variant_builder_add(&updated, "(i@a{sv})", change.id, properties(row, names));
        if (names.contains(iconProperty) && !row.icon)
            g_variant_builder_add(&removed, "(i@as)", change.id, g_variant_new_strv(&iconProperty, 1));
    }
    object_->emit("ItemsPropertiesUpdated", g_variant_new("(a(ia{sv})a(ias))", &updated, &removed));
}

} // namespace desktop
