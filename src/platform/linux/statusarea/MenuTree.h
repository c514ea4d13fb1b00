#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

class Picture;

/// One row of a menu as the desktop shows it.
struct MenuRow {
    enum class Kind { Standard, Separator };
    enum class Toggle { None, Checkmark };

    /// What the row is: two rows of the same key, kind and form are the same row at different times.
    std::string key;
    Kind kind = Kind::Standard;
    Toggle toggle = Toggle::None;
    bool opensSubmenu = false;

    std::string label;
    bool enabled = true;
    bool visible = true;
    bool isOn = false;
    /// The character that, with Control, chooses the row; upper case asks for Shift too. Empty: none.
    std::string shortcut;
    std::shared_ptr<Picture> icon;

    std::function<void()> activate;
    std::vector<MenuRow> children;
};

/// The properties that may change while a row stays the same row.
enum class MenuProperty { Label, Enabled, Visible, ToggleState, Shortcut, Icon };

struct MenuRowChange {
    std::int32_t id = 0;
    std::vector<MenuProperty> properties;
    bool operator==(const MenuRowChange&) const = default;
};

/// What a host has to be told after a menu was replaced.
struct MenuChange {
    bool layout = false;
    std::vector<MenuRowChange> rows;
};

/// The menu as it is exported: rows with ids. Hosts remember what they know of an id for as long as the menu lives,
/// so a row keeps its id while it is the same row, and an id never comes to mean another row.
class MenuTree {
public:
    struct Node {
        MenuRow row; // its children are `children`
        std::vector<std::int32_t> children;
    };

    static constexpr std::int32_t rootId = 0;

    MenuTree();

    /// Puts the rows in the place of the present ones.
    MenuChange replace(std::vector<MenuRow> rows);

    /// Counts the changes of layout.
    [[nodiscard]] std::uint32_t revision() const { return revision_; }

    /// The row of that id, or null.
    [[nodiscard]] const Node* find(std::int32_t id) const;

    /// The rows that show the picture.
    [[nodiscard]] std::vector<std::int32_t> rowsShowing(const Picture& picture) const;

    /// What choosing the row does. Also known for the rows that the last change of layout removed, because a host may
    /// be showing them still. Empty for a disabled row, and for one that does nothing.
    [[nodiscard]] std::function<void()> actionOf(std::int32_t id) const;

private:
    using Nodes = std::map<std::int32_t, Node>;

    std::vector<std::int32_t> place(
        std::vector<MenuRow> rows, const std::vector<std::int32_t>& formerIds, Nodes& former, MenuChange& change);
    void placeRow(std::int32_t id, MenuRow row, Nodes& former, MenuChange& change);

    Nodes nodes_;
    Nodes retired_;
    std::int32_t nextId_ = rootId + 1;
    std::uint32_t revision_ = 1;
};

} // namespace desktop
