#pragma once

#include <memory>
#include <optional>

namespace perchly {

struct Bookmark;
class BookmarkListViewController;

/// What the list of bookmarks leaves to its owner. Main thread.
class BookmarkListViewControllerDelegate {
public:
    virtual ~BookmarkListViewControllerDelegate() = default;

    /// Lets the user edit the bookmark, or add one where none is given; the list is told to reload afterwards.
    virtual void showAddBookmarkDialog(
        const std::optional<Bookmark>& bookmark, const std::shared_ptr<BookmarkListViewController>& list)
        = 0;
    virtual void showBookmarkInPopover(const Bookmark& bookmark) = 0;
    virtual void updateMenu() = 0;
    virtual void updateWindowLevel(const Bookmark& bookmark) = 0;
};

} // namespace perchly
