#include "bookmarklist/BookmarkListViewController.h"

#include "bookmarklist/BookmarkActionStrip.h"
#include "bookmarks/BookmarkCollection.h"
#include "bookmarks/BookmarkManager.h"
#include "bookmarks/Notifications.h"
#include "platform/appkit/Alert.h"
#include "platform/appkit/Application.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/OpenPanel.h"
#include "platform/appkit/SavePanel.h"
#include "platform/appkit/ScrollView.h"
#include "platform/appkit/SearchField.h"
#include "platform/appkit/Window.h"
#include "platform/foundation/FatalError.h"
#include "platform/foundation/FileManager.h"

#include <utility>

namespace perchly {
namespace {

constexpr foundation::Size viewSize { 950, 500 };
constexpr auto margin = 16.0;
constexpr auto spacing = 8.0;
constexpr auto rowHeight = 32.0;
constexpr auto cellHeight = 30.0;

constexpr std::string_view titleColumn = "title";
constexpr std::string_view urlColumn = "url";
constexpr std::string_view actionsColumn = "actions";

std::shared_ptr<appkit::TextField> addLabel(appkit::View& cell)
{
    constexpr auto inset = 5.0;
    auto label = appkit::TextField::label("");
    label->setLineBreakMode(appkit::LineBreakMode::ByTruncatingTail);
    label->setTranslatesAutoresizingMaskIntoConstraints(false);
    cell.addSubview(label);
    appkit::activateConstraints({
        label->leadingAnchor().equalTo(cell.leadingAnchor(), inset),
        label->trailingAnchor().equalTo(cell.trailingAnchor(), -inset),
        label->centerYAnchor().equalTo(cell.centerYAnchor()),
    });
    return label;
}

std::shared_ptr<appkit::Button> makePushButton(std::string_view title, appkit::Action action, std::string_view toolTip)
{
    auto button = appkit::Button::withTitle(title, std::move(action));
    button->setBezelStyle(appkit::BezelStyle::Rounded);
    button->setToolTip(toolTip);
    return button;
}

} // namespace

void BookmarkListViewController::loadView()
{
    auto root = std::make_shared<appkit::View>(foundation::Rect { {}, viewSize });
    makeControls();
    layOut(*root);
    setView(std::move(root));
    viewDidLoad();
}

void BookmarkListViewController::makeControls()
{
    using Self = BookmarkListViewController;
    const auto self = weak_from_this();
    searchField_ = std::make_shared<appkit::SearchField>();
    searchField_->setPlaceholderString("Search bookmarks...");
    searchField_->setAction({ "searchFieldChanged:", self, &Self::searchFieldChanged });
    addButton_ = makePushButton("+ New Bookmark", { "addButtonClicked:", self, &Self::addButtonClicked }, {});
    importButton_ = makePushButton(
        "Import", { "importButtonClicked:", self, &Self::importButtonClicked }, "Import bookmarks from a JSON file");
    exportButton_ = makePushButton(
        "Export", { "exportButtonClicked:", self, &Self::exportButtonClicked }, "Export all bookmarks to a JSON file");
    tableView_ = std::make_shared<appkit::TableView>();
}

void BookmarkListViewController::layOut(appkit::View& root)
{
    const auto scrollView = std::make_shared<appkit::ScrollView>();
    scrollView->setHasVerticalScroller(true);
    scrollView->setHasHorizontalScroller(false);
    scrollView->setAutohidesScrollers(true);
    scrollView->setBorderType(appkit::BorderType::Bezel);
    scrollView->setDocumentView(tableView_);

    const std::initializer_list<std::shared_ptr<appkit::View>> views { searchField_, importButton_, exportButton_,
        addButton_, scrollView };
    for (const auto& view : views) {
        view->setTranslatesAutoresizingMaskIntoConstraints(false);
        root.addSubview(view);
    }
    appkit::activateConstraints({
        searchField_->topAnchor().equalTo(root.topAnchor(), margin),
        searchField_->leadingAnchor().equalTo(root.leadingAnchor(), margin),
        searchField_->trailingAnchor().equalTo(importButton_->leadingAnchor(), -spacing),
        importButton_->topAnchor().equalTo(root.topAnchor(), margin),
        importButton_->trailingAnchor().equalTo(exportButton_->leadingAnchor(), -spacing),
        importButton_->widthAnchor().equalToConstant(80),
        exportButton_->topAnchor().equalTo(root.topAnchor(), margin),
        exportButton_->trailingAnchor().equalTo(addButton_->leadingAnchor(), -spacing),
        exportButton_->widthAnchor().equalToConstant(80),
        addButton_->topAnchor().equalTo(root.topAnchor(), margin),
        addButton_->trailingAnchor().equalTo(root.trailingAnchor(), -margin),
        addButton_->widthAnchor().equalToConstant(120),
        scrollView->topAnchor().equalTo(searchField_->bottomAnchor(), margin),
        scrollView->leadingAnchor().equalTo(root.leadingAnchor(), margin),
        scrollView->trailingAnchor().equalTo(root.trailingAnchor(), -margin),
        scrollView->bottomAnchor().equalTo(root.bottomAnchor(), -margin),
    });
}

void BookmarkListViewController::viewDidLoad()
{
    const auto self = weak_from_this();
    tableView_->setDelegate(self);
    tableView_->setDataSource(self);
    tableView_->setDoubleAction({ "tableViewDoubleClick:", self, &BookmarkListViewController::tableViewDoubleClick });
    tableView_->addTableColumn({ std::string(titleColumn), "Title", 180 });
    tableView_->addTableColumn({ std::string(urlColumn), "URL", 280 });
    tableView_->addTableColumn({ std::string(actionsColumn), "Actions", 280 });
    reloadBookmarks();
    bookmarksObservation_
        = foundation::NotificationCenter::defaultCenter().addObserver(notifications::bookmarksDidChange, [self] {
              if (const auto list = self.lock())
                  list->reloadBookmarks();
          });
}

void BookmarkListViewController::reloadBookmarks()
{
    foundation::assertMainThread();
    bookmarks_ = BookmarkManager::shared().bookmarks();
    search_.setBookmarks(bookmarks_);
    filteredBookmarks_ = search_.indicesMatching("");
    if (tableView_)
        tableView_->reloadData();
}

void BookmarkListViewController::searchFieldChanged(appkit::SearchField& sender)
{
    foundation::assertMainThread();
    filteredBookmarks_ = search_.indicesMatching(sender.stringValue());
    tableView_->reloadData();
}

std::size_t BookmarkListViewController::numberOfRows(const appkit::TableView& /*table*/)
{
    return filteredBookmarks_.size();
}

double BookmarkListViewController::heightOfRow(const appkit::TableView& /*table*/, std::size_t /*row*/)
{
    return rowHeight;
}

std::shared_ptr<appkit::View> BookmarkListViewController::viewForRow(
    appkit::TableView& /*table*/, const appkit::TableColumn& column, std::size_t row)
{
    const auto* bookmark = bookmarkOfRow(row);
    if (!bookmark)
        return nullptr;
    return column.identifier == actionsColumn ? actionsCell(column, *bookmark) : textCell(column, *bookmark);
}

std::shared_ptr<appkit::View> BookmarkListViewController::textCell(
    const appkit::TableColumn& column, const Bookmark& bookmark)
{
    auto cell = std::dynamic_pointer_cast<appkit::TableCellView>(tableView_->makeView(column.identifier));
    if (!cell) {
        cell = std::make_shared<appkit::TableCellView>(foundation::Rect { {}, { column.width, cellHeight } });
        cell->setIdentifier(column.identifier);
    }
    const auto isTitle = column.identifier == titleColumn;
    if (!cell->textField()) {
        cell->setTextField(addLabel(*cell));
        cell->textField()->setTextColor(isTitle ? appkit::Color::Label : appkit::Color::SecondaryLabel);
    }
    cell->textField()->setStringValue(isTitle ? bookmark.title : bookmark.url);
    return cell;
}

std::shared_ptr<appkit::View> BookmarkListViewController::actionsCell(
    const appkit::TableColumn& column, const Bookmark& bookmark)
{
    auto strip = std::dynamic_pointer_cast<BookmarkActionStrip>(tableView_->makeView(column.identifier));
    if (!strip) {
        using Self = BookmarkListViewController;
        const auto self = weak_from_this();
        strip = BookmarkActionStrip::create({ {}, { column.width, cellHeight } },
            { {
                { "togglePin:", self, &Self::togglePin },
                { "toggleMenuBar:", self, &Self::toggleMenuBar },
                { "toggleReload:", self, &Self::toggleReload },
                { "toggleAlwaysOnTop:", self, &Self::toggleAlwaysOnTop },
                { "toggleDetach:", self, &Self::toggleDetach },
                { "toggleSystemBrowser:", self, &Self::toggleSystemBrowser },
                { "editBookmark:", self, &Self::editBookmark },
                { "deleteBookmark:", self, &Self::deleteBookmark },
            } });
        strip->setIdentifier(column.identifier);
    }
    strip->show(bookmark);
    return strip;
}

const Bookmark* BookmarkListViewController::bookmarkOfRow(std::optional<std::size_t> row) const
{
    return row && *row < filteredBookmarks_.size() ? &bookmarks_[filteredBookmarks_[*row]] : nullptr;
}

std::optional<Bookmark> BookmarkListViewController::bookmarkOf(const appkit::Button& sender) const
{
    foundation::assertMainThread();
    const auto* bookmark = bookmarkOfRow(tableView_->rowForView(sender));
    return bookmark ? std::optional(*bookmark) : std::nullopt;
}

void BookmarkListViewController::tableViewDoubleClick(appkit::TableView& sender)
{
    foundation::assertMainThread();
    const auto* bookmark = bookmarkOfRow(sender.selectedRow());
    const auto delegate = delegate_.lock();
    if (bookmark && delegate)
        delegate->showBookmarkInPopover(Bookmark(*bookmark)); // a copy, because the list may be reloaded meanwhile
}

void BookmarkListViewController::addButtonClicked()
{
    foundation::assertMainThread();
    if (const auto delegate = delegate_.lock())
        delegate->showAddBookmarkDialog(std::nullopt, shared_from_this());
}

void BookmarkListViewController::togglePin(appkit::Button& sender)
{
    toggleInStore(&BookmarkManager::togglePin, sender);
}

void BookmarkListViewController::toggleMenuBar(appkit::Button& sender)
{
    toggleInStore(&BookmarkManager::toggleMenuBar, sender);
}

void BookmarkListViewController::toggleReload(appkit::Button& sender)
{
    if (saveInverted(&Bookmark::shouldReloadOnOpen, sender))
        reloadBookmarks();
}

void BookmarkListViewController::toggleAlwaysOnTop(appkit::Button& sender)
{
    const auto changed = saveInverted(&Bookmark::isAlwaysOnTop, sender);
    if (!changed)
        return;
    if (const auto delegate = delegate_.lock())
        delegate->updateWindowLevel(*changed);
    reloadBookmarks();
}

void BookmarkListViewController::toggleDetach(appkit::Button& sender)
{
    if (saveInverted(&Bookmark::prefersDetached, sender))
        reloadBookmarks();
}

void BookmarkListViewController::toggleSystemBrowser(appkit::Button& sender)
{
    if (!saveInverted(&Bookmark::openInSystemBrowser, sender))
        return;
    if (const auto delegate = delegate_.lock())
        delegate->updateMenu();
    reloadBookmarks();
}

void BookmarkListViewController::editBookmark(appkit::Button& sender)
{
    const auto bookmark = bookmarkOf(sender);
    const auto delegate = delegate_.lock();
    if (bookmark && delegate)
        delegate->showAddBookmarkDialog(bookmark, shared_from_this());
}

void BookmarkListViewController::deleteBookmark(appkit::Button& sender)
{
    const auto bookmark = bookmarkOf(sender);
    if (!bookmark || delegate_.expired())
        return;
    appkit::Alert alert;
    alert.style = appkit::AlertStyle::Warning;
    alert.messageText = "Delete Bookmark";
    alert.informativeText = "Are you sure you want to delete \"" + bookmark->title + "\"?";
    alert.buttonTitles = { "Delete", "Cancel" };
    if (alert.runModal() != 0)
        return;
    const auto delegate = delegate_.lock();
    if (!delegate)
        return;
    BookmarkManager::shared().removeBookmark(bookmark->id);
    delegate->updateMenu();
    notifications::postBookmarksDidChange();
    reloadBookmarks();
}

/// Announced, so the list reloads as all others do.
void BookmarkListViewController::toggleInStore(
    void (BookmarkManager::*toggle)(std::string_view id), const appkit::Button& sender)
{
    const auto bookmark = bookmarkOf(sender);
    const auto delegate = delegate_.lock();
    if (!bookmark || !delegate)
        return;
    (BookmarkManager::shared().*toggle)(bookmark->id);
    delegate->updateMenu();
    notifications::postBookmarksDidChange();
}

std::optional<Bookmark> BookmarkListViewController::saveInverted(bool Bookmark::*flag, const appkit::Button& sender)
{
    auto bookmark = bookmarkOf(sender);
    if (!bookmark || delegate_.expired())
        return std::nullopt;
    (*bookmark).*flag = !((*bookmark).*flag);
    BookmarkManager::shared().updateBookmark(*bookmark);
    return bookmark;
}

template <class Panel>
void BookmarkListViewController::begin(
    const Panel& panel, void (BookmarkListViewController::*carryOut)(const std::filesystem::path& file))
{
    if (std::exchange(hasFilePanel_, true))
        return;
    appkit::Application::sharedApplication().activateIgnoringOtherApps();
    panel.begin([weak = weak_from_this(), carryOut](const std::optional<std::filesystem::path>& file) {
        const auto self = weak.lock();
        if (!self)
            return;
        self->hasFilePanel_ = false;
        if (file)
            (self.get()->*carryOut)(*file);
    });
}

void BookmarkListViewController::importButtonClicked()
{
    foundation::assertMainThread();
    appkit::OpenPanel panel;
    panel.title = "Import Bookmarks";
    panel.allowedContentType = appkit::ContentType::Json;
    begin(panel, &BookmarkListViewController::importBookmarks);
}

void BookmarkListViewController::importBookmarks(const std::filesystem::path& file)
{
    foundation::assertMainThread();
    if (!BookmarkManager::shared().importBookmarks(file))
        return tell(
            appkit::AlertStyle::Critical, "Import Failed", "The file could not be read. Please check the format.");
    reloadBookmarks();
    notifications::postBookmarksDidChange();
    tell(appkit::AlertStyle::Warning, "Import Successful", "Bookmarks have been imported successfully.");
}

void BookmarkListViewController::exportButtonClicked()
{
    foundation::assertMainThread();
    appkit::SavePanel panel;
    panel.title = "Export Bookmarks";
    panel.allowedContentType = appkit::ContentType::Json;
    panel.nameFieldStringValue = "bookmarks_backup.json";
    begin(panel, &BookmarkListViewController::exportBookmarks);
}

void BookmarkListViewController::exportBookmarks(const std::filesystem::path& file)
{
    foundation::assertMainThread();
    const auto document
        = BookmarkCollection::encode(BookmarkManager::shared().bookmarks(), BookmarkCollection::Style::Indented);
    if (!document || !foundation::FileManager::defaultManager().write(document.value(), file))
        return tell(appkit::AlertStyle::Critical, "Export Failed", "The file could not be saved.");
    tell(appkit::AlertStyle::Warning, "Export Successful", "Your bookmarks have been saved as a JSON file.");
}

void BookmarkListViewController::tell(appkit::AlertStyle style, std::string message, std::string details)
{
    const auto window = view()->window();
    if (!window)
        foundation::fatalError("The list of bookmarks is in no window");
    appkit::Alert alert;
    alert.style = style;
    alert.messageText = std::move(message);
    alert.informativeText = std::move(details);
    alert.beginSheetModal(window);
}

} // namespace perchly
