#include "pinned/PinnedBookmarkManager.h"

#include "bookmarks/Address.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "pinned/CustomIconDialog.h"
#include "pinned/PinnedBookmarkMenu.h"
#include "pinned/RunningDialog.h"
#include "pinned/StatusItemIcon.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/ContextMenu.h"
#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusBarButton.h"
#include "platform/appkit/StatusItem.h"
#include "platform/appkit/Workspace.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/URL.h"

#include <set>

namespace perchly {
namespace {

using appkit::EventMask;
using appkit::EventType;
using appkit::MenuItem;
using appkit::StatusBarButton;

/// What the row carries; null where it carries another thing, or where no action may start.
template <class Value>
const Value* startAction(const MenuItem& sender)
{
    foundation::assertMainThread();
    return isHeldUpByDialog() ? nullptr : std::any_cast<Value>(&sender.representedObject());
}

void saveAndAnnounce(const Bookmark& bookmark)
{
    BookmarkManager::shared().updateBookmark(bookmark);
    notifications::postBookmarksDidChange();
}

std::size_t tagOf(const Bookmark& bookmark)
{
    return std::hash<std::string>()(bookmark.id);
}

} // namespace

const std::shared_ptr<PinnedBookmarkManager>& PinnedBookmarkManager::shared()
{
    // Never destroyed: at exit its items would leave a status bar that may be gone before them.
    static const auto& manager = *new std::shared_ptr<PinnedBookmarkManager>(create());
    return manager;
}

std::shared_ptr<PinnedBookmarkManager> PinnedBookmarkManager::create()
{
    foundation::assertMainThread();
    auto manager = std::shared_ptr<PinnedBookmarkManager>(new PinnedBookmarkManager);
    manager->start();
    return manager;
}

PinnedBookmarkManager::PinnedBookmarkManager()
    : statusBar_(appkit::StatusBar::systemStatusBar())
{
}

void PinnedBookmarkManager::start()
{
    bookmarksObservation_ = foundation::NotificationCenter::defaultCenter().addObserver(
        notifications::bookmarksDidChange, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->bookmarksDidChange();
        });
    syncStatusItems();
}

void PinnedBookmarkManager::setDelegate(std::weak_ptr<PinnedBookmarkManagerDelegate> delegate)
{
    foundation::assertMainThread();
    delegate_ = std::move(delegate);
}

void PinnedBookmarkManager::bookmarksDidChange()
{
    foundation::assertMainThread();
    syncStatusItems();
}

void PinnedBookmarkManager::syncStatusItems()
{
    foundation::assertMainThread();
    const auto bookmarks = BookmarkManager::shared().menuBarBookmarks();
    removeItemsExceptFor(bookmarks);
    for (const auto& bookmark : bookmarks) {
        if (const auto item = statusItems_.find(bookmark.id); item != statusItems_.end())
            refreshItem(*item->second, bookmark);
        else
            createItem(bookmark);
    }
}

void PinnedBookmarkManager::removeItemsExceptFor(const std::vector<Bookmark>& bookmarks)
{
    std::set<std::string_view> ids;
    for (const auto& bookmark : bookmarks)
        ids.insert(bookmark.id);
    for (auto entry = statusItems_.begin(); entry != statusItems_.end();) {
        const auto button = entry->second->button();
        if (ids.contains(entry->first) || !button) {
            ++entry;
            continue;
        }
        bookmarkIdMap_.erase(button->tag());
        statusBar_.removeStatusItem(*entry->second);
        entry = statusItems_.erase(entry);
    }
}

void PinnedBookmarkManager::createItem(const Bookmark& bookmark)
{
    const auto item = statusBar_.statusItem();
    // Where it stands and whether it is hidden is remembered by the bookmark.
    item->setAutosaveName(bookmark.id);
    statusItems_.insert_or_assign(bookmark.id, item);
    const auto button = item->button();
    if (!button)
        return;
    applyIcon(*button, bookmark);
    button->setAction({ "statusItemClicked:", weak_from_this(), &PinnedBookmarkManager::statusItemClicked });
    button->sendActionOn(EventMask::LeftMouseUp | EventMask::RightMouseUp);
    identify(*button, bookmark);
}

void PinnedBookmarkManager::refreshItem(appkit::StatusItem& item, const Bookmark& bookmark)
{
    const auto button = item.button();
    if (!button)
        return;
    identify(*button, bookmark);
    applyIcon(*button, bookmark);
}

void PinnedBookmarkManager::identify(StatusBarButton& button, const Bookmark& bookmark)
{
    button.setTag(tagOf(bookmark));
    button.setToolTip(bookmark.title);
    bookmarkIdMap_.insert_or_assign(tagOf(bookmark), bookmark.id);
}

void PinnedBookmarkManager::applyIcon(StatusBarButton& button, const Bookmark& bookmark)
{
    perchly::applyIcon(button, bookmark, [weak = weak_from_this(), id = bookmark.id] {
        const auto self = weak.lock();
        return self ? self->buttonFor(id) : nullptr;
    });
}

std::shared_ptr<StatusBarButton> PinnedBookmarkManager::buttonFor(std::string_view bookmarkId) const
{
    foundation::assertMainThread();
    const auto item = statusItems_.find(bookmarkId);
    return item == statusItems_.end() ? nullptr : item->second->button();
}

void PinnedBookmarkManager::statusItemClicked(StatusBarButton& sender)
{
    foundation::assertMainThread();
    const auto id = bookmarkIdMap_.find(sender.tag());
    if (id == bookmarkIdMap_.end())
        return;
    const auto* found = BookmarkManager::shared().bookmark(id->second);
    if (!found)
        return;
    const Bookmark bookmark
        = *found; // NOLINT(performance-unnecessary-copy-initialization): opening it may change the list
    const auto event = appkit::Application::sharedApplication().currentEvent();
    if (event && event->type == EventType::RightMouseUp)
        return showContextMenu(bookmark, sender);
    if (isHeldUpByDialog())
        return;
    if (!bookmark.openInSystemBrowser) {
        if (const auto delegate = delegate_.lock())
            delegate->openPinnedBookmark(bookmark, sender);
        return;
    }
    if (const auto url = foundation::URL::parse(addressWithScheme(bookmark.url)))
        appkit::Workspace::sharedWorkspace().openURL(*url);
}

void PinnedBookmarkManager::showContextMenu(const Bookmark& bookmark, StatusBarButton& button)
{
    const auto event = appkit::Application::sharedApplication().currentEvent();
    if (!event)
        return;
    using Self = PinnedBookmarkManager;
    const auto self = weak_from_this();
    auto menu = makePinnedBookmarkMenu(bookmark,
        {
            .detachWindow = { "detachWindow:", self, &Self::detachWindow },
            .toggleReloadOnOpen = { "toggleReloadOnOpen:", self, &Self::toggleReloadOnOpen },
            .toggleAlwaysOnTop = { "toggleAlwaysOnTop:", self, &Self::toggleAlwaysOnTop },
            .togglePrefersDetached = { "togglePrefersDetached:", self, &Self::togglePrefersDetached },
            .toggleOpenInSystemBrowser = { "toggleOpenInSystemBrowser:", self, &Self::toggleOpenInSystemBrowser },
            .changeUserAgent = { "changeUserAgent:", self, &Self::changeUserAgent },
            .changeIconSize = { "changeIconSize:", self, &Self::changeIconSize },
            .editCustomIcon = { "editCustomIcon:", self, &Self::editCustomIcon },
            .togglePinnedStatus = { "togglePinnedStatus:", self, &Self::togglePinnedStatus },
            .removeFromMenubar = { "removeFromMenubar:", self, &Self::removeFromMenubar },
        });
    appkit::popUpContextMenu(std::move(menu), *event, button);
}

void PinnedBookmarkManager::detachWindow(MenuItem& sender)
{
    const auto* bookmark = startAction<Bookmark>(sender);
    const auto delegate = delegate_.lock();
    if (bookmark && delegate)
        delegate->openDetachedWindow(*bookmark);
}

void PinnedBookmarkManager::toggle(bool Bookmark::*flag, const MenuItem& sender)
{
    const auto* carried = startAction<Bookmark>(sender);
    if (!carried)
        return;
    auto bookmark = *carried;
    bookmark.*flag = !(bookmark.*flag);
    saveAndAnnounce(bookmark);
}

void PinnedBookmarkManager::toggleReloadOnOpen(MenuItem& sender)
{
    toggle(&Bookmark::shouldReloadOnOpen, sender);
}

void PinnedBookmarkManager::toggleAlwaysOnTop(MenuItem& sender)
{
    const auto* carried = startAction<Bookmark>(sender);
    if (!carried)
        return;
    auto bookmark = *carried;
    bookmark.isAlwaysOnTop = !bookmark.isAlwaysOnTop;
    BookmarkManager::shared().updateBookmark(bookmark);
    if (const auto delegate = delegate_.lock())
        delegate->updateWindowLevel(bookmark);
    notifications::postBookmarksDidChange();
}

void PinnedBookmarkManager::togglePrefersDetached(MenuItem& sender)
{
    toggle(&Bookmark::prefersDetached, sender);
}

void PinnedBookmarkManager::toggleOpenInSystemBrowser(MenuItem& sender)
{
    toggle(&Bookmark::openInSystemBrowser, sender);
}

void PinnedBookmarkManager::togglePinnedStatus(MenuItem& sender)
{
    toggle(&Bookmark::isPinned, sender);
}

void PinnedBookmarkManager::changeUserAgent(MenuItem& sender)
{
    const auto* choice = startAction<UserAgentChoice>(sender);
    if (!choice)
        return;
    auto bookmark = choice->bookmark;
    bookmark.userAgent = choice->userAgent;
    saveAndAnnounce(bookmark);
}

void PinnedBookmarkManager::changeIconSize(MenuItem& sender)
{
    const auto* choice = startAction<IconSizeChoice>(sender);
    if (!choice)
        return;
    auto bookmark = choice->bookmark;
    bookmark.menubarIconSize = choice->points;
    saveAndAnnounce(bookmark);
}

void PinnedBookmarkManager::editCustomIcon(MenuItem& sender)
{
    const auto* bookmark = startAction<Bookmark>(sender);
    if (!bookmark)
        return;
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    if (const auto changed = askForCustomIcon(*bookmark))
        saveAndAnnounce(*changed);
}

void PinnedBookmarkManager::removeFromMenubar(MenuItem& sender)
{
    const auto* bookmark = startAction<Bookmark>(sender);
    if (!bookmark)
        return;
    BookmarkManager::shared().toggleMenuBar(bookmark->id);
    notifications::postBookmarksDidChange();
}

} // namespace perchly
