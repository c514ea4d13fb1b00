#pragma once

#include "bookmarks/Bookmark.h"
#include "platform/foundation/Result.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace foundation {
class FileManager;
}

namespace perchly {

/// The one owner of the user's bookmarks and the only code that touches the bookmark file. Every change rewrites the
/// whole file at once; a failed write is logged and the change stays in memory. Announces nothing: whoever changes
/// bookmarks posts notifications::bookmarksDidChange afterwards. Main thread.
class BookmarkManager {
public:
    /// The application's store, loaded on first use.
    static BookmarkManager& shared();

    /// Four times what a hundred thousand bookmarks take: still read within seconds.
    static constexpr std::size_t largestImport = std::size_t { 128 } << 20U;

    /// Loads the file; one that is missing, unreadable or undecodable is replaced by the default list.
    explicit BookmarkManager(foundation::FileManager& fileManager);

    BookmarkManager(const BookmarkManager&) = delete;
    BookmarkManager& operator=(const BookmarkManager&) = delete;

    /// In the order that the user sees everywhere.
    [[nodiscard]] const std::vector<Bookmark>& bookmarks() const;
    [[nodiscard]] std::vector<Bookmark> menuBarBookmarks() const;
    /// The first of that id, or null; valid until the list changes.
    [[nodiscard]] const Bookmark* bookmark(std::string_view id) const;

    void addBookmark(Bookmark bookmark);

    /// Replaces the first bookmark of the same id; does nothing at all where there is none.
    void updateBookmark(Bookmark bookmark);

    /// Removes every bookmark of that id. Saves even if there was none.
    void removeBookmark(std::string_view id);

    void togglePin(std::string_view id);
    void toggleMenuBar(std::string_view id);

    /// Merges a document into the list: a known id is replaced in place, an address that the list holds already is
    /// skipped, the rest is appended. An error means that the file could not be read, or is larger than the largest
    /// import, and nothing changed.
    foundation::Status importBookmarks(const std::filesystem::path& file);

    /// Replaces the whole list by the five bookmarks of a first start.
    void loadDefaultBookmarks();

private:
    void load();
    void replaceByDefaultBookmarks();
    void saveBookmarks() const;
    void toggle(bool Bookmark::*flag, std::string_view id);
    [[nodiscard]] Bookmark* find(std::string_view id);
    [[nodiscard]] std::filesystem::path bookmarksFileURL() const;

    const std::string fileName_ = "bookmarks.json";
    std::vector<Bookmark> bookmarks_;
    foundation::FileManager& fileManager_;
};

} // namespace perchly
