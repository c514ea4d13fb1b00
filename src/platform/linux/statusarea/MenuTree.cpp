#include "platform/linux/statusarea/MenuTree.h"

#include <algorithm>
#include <utility>

namespace desktop {
namespace {

bool isSameRow(const MenuRow& one, const MenuRow& other)
{
    return one.key == other.key && one.kind == other.kind && one.toggle == other.toggle
        && one.opensSubmenu == other.opensSubmenu;
}

std::vector<MenuProperty> changedProperties(const MenuRow& before, const MenuRow& after)
{
    std::vector<MenuProperty> changed;
    const auto compare = [&](MenuProperty property, auto MenuRow::*field) {
        if (before.*field != after.*field)
            changed.push_back(property);
    };
    compare(MenuProperty::Label, &MenuRow::label);
    compare(MenuProperty::Enabled, &MenuRow::enabled);
    compare(MenuProperty::Visible, &MenuRow::visible);
    compare(MenuProperty::ToggleState, &MenuRow::isOn);
    compare(MenuProperty::Shortcut, &MenuRow::shortcut);
    compare(MenuProperty::Icon, &MenuRow::icon);
    return changed;
}

} // namespace

MenuTree::MenuTree()
{
    nodes_[rootId].row.opensSubmenu = true;
}

MenuChange MenuTree::replace(std::vector<MenuRow> rows)
{
    MenuChange change;
    Nodes former = std::exchange(nodes_, {});
    nodes_[rootId].row.opensSubmenu = true;
    nodes_[rootId].children = place(std::move(rows), former.at(rootId).children, former, change);
    if (!change.layout)
        return change;
    ++revision_;
    std::erase_if(former, [this](const auto& entry) { return nodes_.contains(entry.first); });
    retired_ = std::move(former);
    return change;
}

std::vector<std::int32_t> MenuTree::place(
    std::vector<MenuRow> rows, const std::vector<std::int32_t>& formerIds, Nodes& former, MenuChange& change)
{
    std::vector<std::int32_t> ids;
    auto unused = formerIds;
    for (auto& row : rows) {
        const auto match
            = std::find_if(unused.begin(), unused.end(), [&](auto id) { return isSameRow(former.at(id).row, row); });
        const auto id = match == unused.end() ? nextId_++ : *match;
        if (match != unused.end())
            unused.erase(match);
        placeRow(id, std::move(row), former, change);
        ids.push_back(id);
    }
    change.layout = change.layout || ids != formerIds;
    return ids;
}

void MenuTree::placeRow(std::int32_t id, MenuRow row, Nodes& former, MenuChange& change)
{
    const auto before = former.find(id);
    if (before != former.end()) {
        auto properties = changedProperties(before->second.row, row);
        if (!properties.empty())
            change.rows.push_back({ id, std::move(properties) });
    }
    auto rows = std::exchange(row.children, {});
    auto children = place(std::move(rows),
        before == former.end() ? std::vector<std::int32_t> {} : before->second.children, former, change);
    nodes_[id] = { std::move(row), std::move(children) };
}

const MenuTree::Node* MenuTree::find(std::int32_t id) const
{
    const auto found = nodes_.find(id);
    return found == nodes_.end() ? nullptr : &found->second;
}

std::vector<std::int32_t> MenuTree::rowsShowing(const Picture& picture) const
{
    std::vector<std::int32_t> ids;
    for (const auto& [id, node] : nodes_) {
        if (node.row.icon.get() == &picture)
            ids.push_back(id);
    }
    return ids;
}

std::function<void()> MenuTree::actionOf(std::int32_t id) const
{
    for (const auto* nodes : { &nodes_, &retired_ }) {
        const auto found = nodes->find(id);
        if (found != nodes->end())
            return found->second.row.enabled ? found->second.row.activate : nullptr;
    }
    return nullptr;
}

} // namespace desktop
