#pragma once

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

    void selectItemAt(std::size_t index);
    [[nodiscard]] std::size_t indexOfSelectedItem() const;

private:
    std::vector<std::string> itemTitles_;
};

} // namespace appkit
