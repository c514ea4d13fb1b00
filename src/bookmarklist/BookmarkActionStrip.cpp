#include "bookmarklist/BookmarkActionStrip.h"

#include "bookmarks/Bookmark.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/Image.h"
#include "platform/appkit/LayoutConstraint.h"

namespace perchly {
namespace {

struct Look {
    const char* symbol;
    const char* toolTip;
};

struct ButtonLook {
    bool Bookmark::*flag; // null: always the same
    Look whenOn;
    Look whenOff;
};

constexpr std::array<ButtonLook, BookmarkActionStrip::buttonCount> looks { {
    { &Bookmark::isPinned, { "pin.fill", "Unpin from main menu" }, { "pin", "Pin to main menu quick access" } },
    { &Bookmark::isAddedToMenuBar, { "minus.circle", "Remove from system menubar" },
        { "plus.circle", "Add as a separate icon to system menubar" } },
    { &Bookmark::shouldReloadOnOpen, { "arrow.clockwise.circle.fill", "Disable reload on every open" },
        { "arrow.clockwise.circle", "Enable reload on every open" } },
    { &Bookmark::isAlwaysOnTop, { "lock.shield.fill", "Disable always on top for detached window" },
        { "lock.shield", "Enable always on top for detached window" } },
    { &Bookmark::prefersDetached, { "macwindow.on.rectangle.fill", "Always open in a detached window" },
        { "macwindow.on.rectangle", "Open in popover by default" } },
    { &Bookmark::openInSystemBrowser, { "safari.fill", "Always open in system browser" },
        { "safari", "Open inside app" } },
    { nullptr, {}, { "square.and.pencil", "Edit bookmark name or URL" } },
    { nullptr, {}, { "trash", "Permanently delete this bookmark" } },
} };

const Look& currentLook(const ButtonLook& look, const Bookmark& bookmark)
{
    return look.flag && bookmark.*look.flag ? look.whenOn : look.whenOff;
}

} // namespace

std::shared_ptr<BookmarkActionStrip> BookmarkActionStrip::create(foundation::Rect frame, const Actions& actions)
{
    auto strip = std::shared_ptr<BookmarkActionStrip>(new BookmarkActionStrip(frame));
    strip->addButtons(actions);
    return strip;
}

void BookmarkActionStrip::addButtons(const Actions& actions)
{
    constexpr auto leading = 2.0;
    constexpr auto spacing = 4.0;
    constexpr auto width = 32.0;
    appkit::View* before = nullptr;
    for (std::size_t index = 0; index < buttonCount; ++index) {
        auto button = appkit::Button::withImage(nullptr, actions[index]);
        button->setBezelStyle(appkit::BezelStyle::Recessed);
        button->setTranslatesAutoresizingMaskIntoConstraints(false);
        addSubview(button);
        const auto start = before ? before->trailingAnchor() : leadingAnchor();
        appkit::activateConstraints({
            button->leadingAnchor().equalTo(start, before ? spacing : leading),
            button->centerYAnchor().equalTo(centerYAnchor()),
            button->widthAnchor().equalToConstant(width),
        });
        before = button.get();
        buttons_[index] = std::move(button);
    }
}

void BookmarkActionStrip::show(const Bookmark& bookmark)
{
    if (bookmarkId_ != bookmark.id) {
        bookmarkId_ = bookmark.id;
        for (const auto& button : buttons_)
            button->dropPress();
    }
    for (std::size_t index = 0; index < buttonCount; ++index) {
        const auto& look = currentLook(looks[index], bookmark);
        if (std::exchange(symbols_[index], look.symbol) == look.symbol)
            continue;
        buttons_[index]->setImage(appkit::Image::systemSymbol(look.symbol));
        buttons_[index]->setToolTip(look.toolTip);
        buttons_[index]->setAccessibilityLabel(look.toolTip);
    }
}

} // namespace perchly
