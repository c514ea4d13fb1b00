// The whole application, which also takes orders, a line each, on its standard input:
//   click ID       what a click on the bookmark's own status item does, with the main item for an anchor
//   detach ID      what "Detach Window" in that item's menu does
//   level ID 0|1   what "Always on Top" in that item's menu does
//   delete ID      what the bookmark list does
// Each is answered by a line "done" once it has been carried out. It ends with its input.
#include "app/AppDelegate.h"
#include "bookmarks/Bookmark.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "platform/appkit/StatusItem.h"
#include "statusbar/StatusBarController.h"

#include <glib-unix.h>

#include <cstdio>
#include <iostream>
#include <sstream>

namespace {

using perchly::BookmarkManager;

void setAlwaysOnTop(perchly::StatusBarController& controller, perchly::Bookmark bookmark, bool isAlwaysOnTop)
{
    bookmark.isAlwaysOnTop = isAlwaysOnTop;
    BookmarkManager::shared().updateBookmark(bookmark);
    controller.updateWindowLevel(bookmark);
}

void deleteBookmark(const std::string& id)
{
    BookmarkManager::shared().removeBookmark(id);
    perchly::notifications::postBookmarksDidChange();
}

void carryOut(perchly::StatusBarController& controller, const std::string& line)
{
    std::istringstream words(line);
    std::string order;
    std::string id;
    int value = 0;
    words >> order >> id >> value;
    const auto* found = BookmarkManager::shared().bookmark(id);
    if (!found)
        return;
    const auto bookmark = *found; // NOLINT(performance-unnecessary-copy-initialization): deleting it ends the original
    if (order == "click")
        controller.openPinnedBookmark(bookmark, *controller.statusItem()->button());
    else if (order == "detach")
        controller.openDetachedWindow(bookmark);
    else if (order == "level")
        setAlwaysOnTop(controller, bookmark, value != 0);
    else if (order == "delete")
        deleteBookmark(id);
}

} // namespace

int main(int argc, char** argv)
{
    auto& application = appkit::Application::sharedApplication();
    const auto delegate = std::make_shared<perchly::AppDelegate>();
    application.setDelegate(delegate);
    const auto read = +[](int, GIOCondition, gpointer data) -> gboolean {
        std::string line;
        if (!std::getline(std::cin, line)) {
            appkit::Application::sharedApplication().terminate();
            return G_SOURCE_REMOVE;
        }
        carryOut(*static_cast<perchly::AppDelegate*>(data)->statusBarController(), line);
        std::puts("done");
        std::fflush(stdout);
        return G_SOURCE_CONTINUE;
    };
    // One line is read a turn, so none may wait unseen in a buffer.
    std::setvbuf(stdin, nullptr, _IONBF, 0);
    g_unix_fd_add(0, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), read, delegate.get());
    return application.run(argc, argv);
}
