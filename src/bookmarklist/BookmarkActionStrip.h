#pragma once

#include "platform/appkit/Action.h"
#include "platform/appkit/View.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>

namespace appkit {
class Button;
}

namespace perchly {

struct Bookmark;

/// The row of small buttons that belongs to one bookmark of the list.
class BookmarkActionStrip : public appkit::View {
public:
    static constexpr std::size_t buttonCount = 8;

    /// In the order of the buttons.
    using Actions = std::array<appkit::Action, buttonCount>;

    [[nodiscard]] static std::shared_ptr<BookmarkActionStrip> create(foundation::Rect frame, const Actions& actions);

    /// Gives the buttons the symbols and tool tips that fit the bookmark's present state. A press that began at
    /// another bookmark comes to nothing.
    void show(const Bookmark& bookmark);

    [[nodiscard]] const std::array<std::shared_ptr<appkit::Button>, buttonCount>& buttons() const { return buttons_; }

private:
    using View::View;
    void addButtons(const Actions& actions);

    std::array<std::shared_ptr<appkit::Button>, buttonCount> buttons_;
    std::string bookmarkId_;
    /// What each button shows, so that it is changed only where it differs.
    std::array<const char*, buttonCount> symbols_ {};
};

} // namespace perchly
