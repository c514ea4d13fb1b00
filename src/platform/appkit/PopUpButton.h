#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/View.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace appkit {

/// Shows one of several titles and lets the user choose another. The first one is chosen until another is.
class PopUpButton : public View {
public:
    PopUpButton();

    void addItem(std::string_view title);
    [[nodiscard]] const std::vector<std::string>& itemTitles() const { return itemTitles_; }

    /// Choosing by these sends no action.
    void selectItemAt(std::size_t index);
    /// Nothing happens where there is no such title.
    void selectItemWithTitle(std::string_view title);
    [[nodiscard]] std::string titleOfSelectedItem() const;
    [[nodiscard]] std::size_t indexOfSelectedItem() const;

    /// Sent when the user has chosen.
    void setAction(Action action) { action_ = std::move(action); }
    [[nodiscard]] const Action& action() const { return action_; }

private:
    std::vector<std::string> itemTitles_;
    Action action_;
};

} // namespace appkit
