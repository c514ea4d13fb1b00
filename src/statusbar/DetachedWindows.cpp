#include "statusbar/DetachedWindows.h"

#include "bookmarks/Bookmark.h"
#include "browser/BrowserViewController.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/Log.h"

#include <algorithm>

namespace perchly {
namespace {

using appkit::WindowStyleMask;

constexpr foundation::Rect initialContent { { 100, 100 }, { 600, 700 } };
constexpr auto style = WindowStyleMask::Titled | WindowStyleMask::Closable | WindowStyleMask::Miniaturizable
    | WindowStyleMask::Resizable;

appkit::WindowLevel levelOf(const Bookmark& bookmark)
{
    return bookmark.isAlwaysOnTop ? appkit::WindowLevel::Floating : appkit::WindowLevel::Normal;
}

} // namespace

DetachedWindows::DetachedWindows() = default;
DetachedWindows::~DetachedWindows() = default;

std::shared_ptr<appkit::Window> DetachedWindows::windowFor(const Bookmark& bookmark) const
{
    const auto found = windows_.find(bookmark.id);
    return found == windows_.end() ? nullptr : found->second.window;
}

void DetachedWindows::open(const Bookmark& bookmark, const std::shared_ptr<BrowserViewController>& browser)
{
    const auto window = appkit::Window::create(initialContent, style);
    window->setTitle(bookmark.title);
    window->setLevel(levelOf(bookmark));
    window->setHidesOnDeactivate(false);
    window->setContentViewController(browser);
    auto willClose = window->observeWillClose([this, browser, bookmark] {
        browser->silence();
        windows_.erase(bookmark.id);
        foundation::log("DEBUG: Detached window closed and silenced for " + bookmark.title);
    });
    windows_.insert_or_assign(bookmark.id, OpenWindow { window, std::move(willClose) });
    window->makeKeyAndOrderFront();
}

void DetachedWindows::updateLevel(const Bookmark& bookmark)
{
    if (const auto window = windowFor(bookmark))
        window->setLevel(levelOf(bookmark));
}

void DetachedWindows::takeBack(const std::shared_ptr<BrowserViewController>& browser)
{
    const auto isItsWindow = [&](const auto& entry) { return entry.second.window->contentViewController() == browser; };
    const auto found = std::ranges::find_if(windows_, isItsWindow);
    if (found != windows_.end())
        found->second.window->setContentViewController(browser);
}

} // namespace perchly
