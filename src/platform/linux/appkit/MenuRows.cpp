#include "platform/linux/appkit/MenuRows.h"

#include "platform/linux/appkit/ImageNative.h"
#include "platform/linux/statusarea/MenuLabel.h"

namespace appkit {
desktop::MenuRow separatorRow()
{
    desktop::MenuRow row;
    row.kind = desktop::MenuRow::Kind::Separator;
    return row;
}

namespace {

desktop::MenuRow menuRow(const std::shared_ptr<MenuItem>& item)
{
    if (item->isSeparator())
        return separatorRow();
    desktop::MenuRow row;
    row.key = item->action().name() + '\n' + (item->identifier().empty() ? item->title() : item->identifier());
    row.label = desktop::menuLabel(item->title());
    row.enabled = item->isEnabled();
    row.shortcut = item->keyEquivalent();
    row.toggle = item->isToggle() ? desktop::MenuRow::Toggle::Checkmark : desktop::MenuRow::Toggle::None;
    row.isOn = item->isOn();
    if (item->image())
        row.icon = pictureOf(*item->image());
    if (item->action())
        row.activate = [item] { item->performAction(); };
    if (!item->submenu())
        return row;
    row.opensSubmenu = true;
    row.children = menuRows(*item->submenu());
    if (!item->action())
        return row;
    auto open = openRow(row.activate);
    open.enabled = row.enabled;
    row.children.insert(row.children.begin(), std::move(open));
    return row;
}

} // namespace

std::vector<desktop::MenuRow> menuRows(const Menu& menu)
{
    std::vector<desktop::MenuRow> rows;
    for (const auto& item : menu.items())
        rows.push_back(menuRow(item));
    return rows;
}

desktop::MenuRow openRow(std::function<void()> activate)
{
    desktop::MenuRow row;
    row.key = "open";
    row.label = "Open";
    row.activate = std::move(activate);
    return row;
}

} // namespace appkit
