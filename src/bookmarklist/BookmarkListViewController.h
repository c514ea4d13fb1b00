#pragma once

#include "bookmarklist/BookmarkListViewControllerDelegate.h"
#include "bookmarklist/BookmarkSearch.h"
#include "bookmarks/Bookmark.h"
#include "platform/appkit/TableView.h"
#include "platform/appkit/ViewController.h"
#include "platform/foundation/NotificationCenter.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace appkit {
class Button;
class SearchField;
enum class AlertStyle;
} // namespace appkit

namespace perchly {

class BookmarkManager;

/// The bookmark manager: all bookmarks in a table under a search field, and in each row what can be done with one.
/// Shows the store as it was at the last reload. Main thread.
class BookmarkListViewController : public appkit::ViewController,
                                   public appkit::TableViewDataSource,
                                   public appkit::TableViewDelegate,
                                   public std::enable_shared_from_this<BookmarkListViewController> {
public:
    BookmarkListViewController() = default;

    /// Held weakly. Without one, nothing that changes something does anything.
    void setDelegate(std::weak_ptr<BookmarkListViewControllerDelegate> delegate) { delegate_ = std::move(delegate); }

    /// Shows the store as it is now, all of it: a filter is dropped, but the search field keeps its text.
    void reloadBookmarks();

    void searchFieldChanged(appkit::SearchField& sender);
    void tableViewDoubleClick(appkit::TableView& sender);
    void addButtonClicked();
    /// Nothing while a panel for choosing a file is open, and so is exporting.
    void importButtonClicked();
    void exportButtonClicked();

    // The buttons of a row act on the bookmark that the row shows.
    void togglePin(appkit::Button& sender);
    void toggleMenuBar(appkit::Button& sender);
    void toggleReload(appkit::Button& sender);
    void toggleAlwaysOnTop(appkit::Button& sender);
    void toggleDetach(appkit::Button& sender);
    void toggleSystemBrowser(appkit::Button& sender);
    void editBookmark(appkit::Button& sender);
    void deleteBookmark(appkit::Button& sender);

    /// Adds the file's bookmarks to the store, and says in a sheet how it went.
    void importBookmarks(const std::filesystem::path& file);
    /// Writes all bookmarks of the store to the file, and says in a sheet how it went.
    void exportBookmarks(const std::filesystem::path& file);

    [[nodiscard]] std::size_t numberOfRows(const appkit::TableView& table) override;
    [[nodiscard]] double heightOfRow(const appkit::TableView& table, std::size_t row) override;
    [[nodiscard]] std::shared_ptr<appkit::View> viewForRow(
        appkit::TableView& table, const appkit::TableColumn& column, std::size_t row) override;

    // Null until the view is loaded.
    [[nodiscard]] const std::shared_ptr<appkit::TableView>& tableView() const { return tableView_; }
    [[nodiscard]] const std::shared_ptr<appkit::Button>& addButton() const { return addButton_; }
    [[nodiscard]] const std::shared_ptr<appkit::Button>& importButton() const { return importButton_; }
    [[nodiscard]] const std::shared_ptr<appkit::Button>& exportButton() const { return exportButton_; }
    [[nodiscard]] const std::shared_ptr<appkit::SearchField>& searchField() const { return searchField_; }

protected:
    void loadView() override;

private:
    void makeControls();
    void layOut(appkit::View& root);
    void viewDidLoad();
    [[nodiscard]] std::shared_ptr<appkit::View> textCell(const appkit::TableColumn& column, const Bookmark& bookmark);
    [[nodiscard]] std::shared_ptr<appkit::View> actionsCell(
        const appkit::TableColumn& column, const Bookmark& bookmark);
    /// Null beyond the last row.
    [[nodiscard]] const Bookmark* bookmarkOfRow(std::optional<std::size_t> row) const;
    /// A copy of what the button's row shows: whatever follows may reload the list.
    [[nodiscard]] std::optional<Bookmark> bookmarkOf(const appkit::Button& sender) const;
    void toggleInStore(void (BookmarkManager::*toggle)(std::string_view id), const appkit::Button& sender);
    /// What was saved; none where there is no delegate or no bookmark.
    std::optional<Bookmark> saveInverted(bool Bookmark::*flag, const appkit::Button& sender);
    /// One file panel at a time.
    template <class Panel>
    void begin(const Panel& panel, void (BookmarkListViewController::*carryOut)(const std::filesystem::path& file));
    void tell(appkit::AlertStyle style, std::string message, std::string details);

    std::shared_ptr<appkit::TableView> tableView_;
    std::shared_ptr<appkit::Button> addButton_;
    std::shared_ptr<appkit::Button> importButton_;
    std::shared_ptr<appkit::Button> exportButton_;
    std::shared_ptr<appkit::SearchField> searchField_;
    std::weak_ptr<BookmarkListViewControllerDelegate> delegate_;
    std::vector<Bookmark> bookmarks_;
    /// Which of them the rows show.
    std::vector<std::size_t> filteredBookmarks_;
    BookmarkSearch search_;
    foundation::ObservationToken bookmarksObservation_;
    bool hasFilePanel_ = false;
};

} // namespace perchly
