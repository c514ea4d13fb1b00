#pragma once

#include "platform/appkit/Action.h"

#include <any>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace appkit {

class Image;
class Menu;

/// One row of a menu. A description: a side turns it into a native row when the menu is shown.
class MenuItem : public Sender {
public:
    MenuItem(std::string title, Action action, std::string keyEquivalent = {})
        : title_(std::move(title))
        , action_(std::move(action))
        , keyEquivalent_(std::move(keyEquivalent))
    {
    }

    [[nodiscard]] static std::shared_ptr<MenuItem> separatorItem()
    {
        auto item = std::make_shared<MenuItem>(std::string {}, Action {});
        item->isSeparator_ = true;
        return item;
    }

    [[nodiscard]] bool isSeparator() const { return isSeparator_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const Action& action() const { return action_; }

    /// A character to press with Command; an upper-case one asks for Shift too. Empty: none.
    [[nodiscard]] const std::string& keyEquivalent() const { return keyEquivalent_; }

    void setEnabled(bool enabled) { isEnabled_ = enabled; }

    /// A row that neither acts nor opens a submenu is disabled, whatever was set.
    [[nodiscard]] bool isEnabled() const { return isEnabled_ && (action_ || submenu_); }

    void setSubmenu(std::shared_ptr<Menu> submenu) { submenu_ = std::move(submenu); }
    [[nodiscard]] const std::shared_ptr<Menu>& submenu() const { return submenu_; }

    void setImage(std::shared_ptr<Image> image) { image_ = std::move(image); }
    [[nodiscard]] const std::shared_ptr<Image>& image() const { return image_; }

    /// Makes the row one that has a checkmark or could have one.
    void setOn(bool isOn) { isOn_ = isOn; }
    [[nodiscard]] bool isOn() const { return isOn_.value_or(false); }
    [[nodiscard]] bool isToggle() const { return isOn_.has_value(); }

    /// Tells the row from others of the same title, also when the menu is built anew. Never shown.
    void setIdentifier(std::string identifier) { identifier_ = std::move(identifier); }
    [[nodiscard]] const std::string& identifier() const { return identifier_; }

    void setRepresentedObject(std::any object) { representedObject_ = std::move(object); }
    [[nodiscard]] const std::any& representedObject() const { return representedObject_; }

    /// Sends the action, as choosing the row does; nothing for a disabled row.
    void performAction()
    {
        if (isEnabled())
            action_.send(*this);
    }

private:
    std::string title_;
    Action action_;
    std::string keyEquivalent_;
    bool isSeparator_ = false;
    bool isEnabled_ = true;
    std::optional<bool> isOn_;
    std::shared_ptr<Menu> submenu_;
    std::shared_ptr<Image> image_;
    std::any representedObject_;
    std::string identifier_;
};

class Menu {
public:
    explicit Menu(std::string title = {})
        : title_(std::move(title))
    {
    }

    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }

    MenuItem& addItem(std::string title, Action action, std::string keyEquivalent = {})
    {
        return addItem(std::make_shared<MenuItem>(std::move(title), std::move(action), std::move(keyEquivalent)));
    }

    MenuItem& addItem(std::shared_ptr<MenuItem> item) { return *items_.emplace_back(std::move(item)); }

    void addSeparator() { addItem(MenuItem::separatorItem()); }

private:
    std::string title_;
    std::vector<std::shared_ptr<MenuItem>> items_;
};

} // namespace appkit
