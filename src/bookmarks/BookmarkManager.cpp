#include "bookmarks/BookmarkManager.h"

#include "Product.h"
#include "bookmarks/BookmarkCollection.h"
#include "bookmarks/BookmarkMerge.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"

#include <algorithm>
#include <utility>

namespace perchly {

namespace {

struct DefaultBookmark {
    std::string_view title;
    std::string_view url;
    bool isAddedToMenuBar;
};

constexpr DefaultBookmark defaultBookmarks[] = {
    { "Google Translate", "https://translate.google.com", false },
    { "Youtube", "https://www.youtube.com", true },
    { "ChatGPT", "https://chatgpt.com", true },
    { "Slack", "https://app.slack.com/client", true },
    { product::name, product::website, false },
};

/// Null where there is none of that id.
auto findIn(auto& bookmarks, std::string_view id) -> decltype(&*bookmarks.begin())
{
    const auto found = std::ranges::find(bookmarks, id, &Bookmark::id);
    return found == bookmarks.end() ? nullptr : &*found;
}

void logFailure(std::string_view what, const foundation::Error& error)
{
    foundation::log("DEBUG: BookmarkManager - " + std::string(what) + " error: " + error.localizedDescription);
}

} // namespace

BookmarkManager& BookmarkManager::shared()
{
    static BookmarkManager manager(foundation::FileManager::defaultManager());
    return manager;
}

// No test of the thread here: first uses of shared() may race, and one of them gets to create it.
BookmarkManager::BookmarkManager(foundation::FileManager& fileManager)
    : fileManager_(fileManager)
{
    load();
}

const std::vector<Bookmark>& BookmarkManager::bookmarks() const
{
    foundation::assertMainThread();
    return bookmarks_;
}

std::vector<Bookmark> BookmarkManager::menuBarBookmarks() const
{
    foundation::assertMainThread();
    std::vector<Bookmark> chosen;
    std::copy_if(bookmarks_.begin(), bookmarks_.end(), std::back_inserter(chosen),
        [](const Bookmark& bookmark) { return bookmark.isAddedToMenuBar; });
    return chosen;
}

void BookmarkManager::addBookmark(Bookmark bookmark)
{
    foundation::assertMainThread();
    bookmarks_.push_back(std::move(bookmark));
    saveBookmarks();
}

void BookmarkManager::updateBookmark(Bookmark bookmark)
{
    foundation::assertMainThread();
    auto* stored = find(bookmark.id);
    if (!stored)
        return;
    *stored = std::move(bookmark);
    saveBookmarks();
}

void BookmarkManager::removeBookmark(std::string_view id)
{
    foundation::assertMainThread();
    const std::string removed(id); // a copy, because the text may be that of a bookmark that goes
    std::erase_if(bookmarks_, [&](const Bookmark& bookmark) { return bookmark.id == removed; });
    saveBookmarks();
}

void BookmarkManager::togglePin(std::string_view id)
{
    toggle(&Bookmark::isPinned, id);
}

void BookmarkManager::toggleMenuBar(std::string_view id)
{
    toggle(&Bookmark::isAddedToMenuBar, id);
}

void BookmarkManager::toggle(bool Bookmark::*flag, std::string_view id)
{
    foundation::assertMainThread();
    auto* bookmark = find(id);
    if (!bookmark)
        return;
    bookmark->*flag = !(bookmark->*flag);
    saveBookmarks();
}

foundation::Status BookmarkManager::importBookmarks(const std::filesystem::path& file)
{
    foundation::assertMainThread();
    const auto contents = fileManager_.contentsOfFile(file, BookmarkCollection::decodePadding, largestImport);
    if (!contents)
        return contents.error();
    auto imported = BookmarkCollection::decode(contents.value());
    if (!imported)
        return imported.error();
    mergeBookmarks(bookmarks_, std::move(imported.value().bookmarks));
    saveBookmarks();
    return foundation::success();
}

void BookmarkManager::loadDefaultBookmarks()
{
    foundation::assertMainThread();
    replaceByDefaultBookmarks();
}

void BookmarkManager::load()
{
    const auto contents = fileManager_.contentsOfFile(bookmarksFileURL(), BookmarkCollection::decodePadding);
    if (!contents)
        return replaceByDefaultBookmarks(); // most often the first start: nothing to report
    auto decoded = BookmarkCollection::decode(contents.value());
    if (!decoded) {
        logFailure("Decode", decoded.error());
        return replaceByDefaultBookmarks();
    }
    bookmarks_ = std::move(decoded.value().bookmarks);
}

void BookmarkManager::replaceByDefaultBookmarks()
{
    bookmarks_.clear();
    for (const auto& [title, url, isAddedToMenuBar] : defaultBookmarks) {
        bookmarks_.push_back({
            .title = std::string(title),
            .url = std::string(url),
            .isPinned = true,
            .isAddedToMenuBar = isAddedToMenuBar,
        });
    }
    saveBookmarks();
}

void BookmarkManager::saveBookmarks() const
{
    const auto document = BookmarkCollection::encode(bookmarks_, BookmarkCollection::Style::Compact);
    if (!document)
        return;
    if (const auto written = fileManager_.write(document.value(), bookmarksFileURL()); !written)
        return logFailure("Save", written.error());
    foundation::log("DEBUG: BookmarkManager - Saved " + std::to_string(bookmarks_.size()) + " bookmarks");
}

Bookmark* BookmarkManager::find(std::string_view id)
{
    return findIn(bookmarks_, id);
}

const Bookmark* BookmarkManager::bookmark(std::string_view id) const
{
    foundation::assertMainThread();
    return findIn(bookmarks_, id);
}

std::filesystem::path BookmarkManager::bookmarksFileURL() const
{
    const auto support = fileManager_.applicationSupportDirectory();
    if (!support)
        foundation::fatalError("there is no folder for the application's data");
    const auto folder = *support / "Perchly";
    if (!fileManager_.fileExists(folder))
        (void)fileManager_.createDirectory(folder); // a failure shows in the read or write that follows
    return folder / fileName_;
}

} // namespace perchly
