#include "ui/BookmarkListTest.h"

#include <array>

namespace {

using perchly::Bookmark;
using perchly::BookmarkListViewController;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using BookmarkListSearchTest = BookmarkListTest;

TEST_F(BookmarkListTest, ShowsEachBookmarksTitleAndAddress)
{
    EXPECT_EQ(table().numberOfRows(), 3U);
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
    EXPECT_EQ(textAt(urlColumn, 0), "https://one.example/");
    EXPECT_EQ(textAt(urlColumn, 1), "https://two.example/path");
    EXPECT_EQ(textAt(urlColumn, 2), "three.example");
}

TEST_F(BookmarkListTest, ShowsTheStoreAsItWasAtTheLastReload)
{
    store().addBookmark(bookmarkNamed("Delta", "four.example"));
    EXPECT_THAT(shownTitles(), SizeIs(3));

    list->reloadBookmarks();

    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma", "Delta"));
}

TEST_F(BookmarkListTest, FollowsEachAnnouncedChange)
{
    store().removeBookmark(beta.id);
    announce();
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Gamma"));

    auto renamed = gamma;
    renamed.title = "Renamed";
    store().updateBookmark(renamed);
    announce();
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Renamed"));
}

TEST_F(BookmarkListTest, FollowsWhileItsWindowIsClosed)
{
    search("alpha");
    window->close();
    store().removeBookmark(beta.id);
    announce();

    window->makeKeyAndOrderFront();

    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Gamma"));
    EXPECT_EQ(list->searchField()->stringValue(), "alpha");
}

TEST_F(BookmarkListTest, AnEmptyStoreIsAnEmptyTable)
{
    removeAll();

    EXPECT_EQ(table().numberOfRows(), 0U);
    EXPECT_EQ(table().viewAt(titleColumn, 0, /*makeIfNecessary=*/true), nullptr);
    search("a");
    EXPECT_EQ(table().numberOfRows(), 0U);
    table().doubleAction().send(table());
    EXPECT_THAT(delegate->shown, IsEmpty());
}

TEST_F(BookmarkListTest, ARowBeyondTheLastHasNoView)
{
    for (const auto& column : table().tableColumns()) {
        EXPECT_NE(list->viewForRow(table(), column, 2), nullptr);
        EXPECT_EQ(list->viewForRow(table(), column, 3), nullptr);
        EXPECT_EQ(list->viewForRow(table(), column, static_cast<std::size_t>(-1)), nullptr);
    }
}

TEST_F(BookmarkListTest, ADoubleClickShowsTheSelectedBookmark)
{
    table().selectRow(1);

    table().doubleAction().send(table());

    EXPECT_THAT(delegate->shown, ElementsAre(beta));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BookmarkListTest, ADoubleClickUnderAFilterShowsWhatTheRowShows)
{
    search("gamma");
    table().selectRow(0);

    table().doubleAction().send(table());

    EXPECT_THAT(delegate->shown, ElementsAre(gamma));
}

TEST_F(BookmarkListTest, ADoubleClickOnNoRowDoesNothing)
{
    table().selectRow(std::nullopt);

    table().doubleAction().send(table());

    EXPECT_THAT(delegate->shown, IsEmpty());
}

TEST_F(BookmarkListTest, ADoubleClickWithoutAnOwnerDoesNothing)
{
    table().selectRow(1);
    const std::weak_ptr<RecordingListDelegate> held = delegate;
    delegate.reset();
    ASSERT_TRUE(held.expired());

    table().doubleAction().send(table());

    EXPECT_EQ(table().selectedRow(), 1U);
}

TEST_F(BookmarkListTest, CellsAreUsedAgainAndShowTheirNewRow)
{
    std::vector<Bookmark> many;
    for (auto index = 0; index < 300; ++index) {
        many.push_back(bookmarkNamed("Title " + std::to_string(index), "address " + std::to_string(index)));
        many.back().isPinned = index % 2 == 1;
    }
    removeAll();
    add(many);
    perchly::test::handlePendingEvents();
    const auto first = table().viewAt(actionsColumn, 0, false);
    ASSERT_NE(first, nullptr);

    for (const std::size_t row : { 299U, 0U, 150U, 3U, 298U }) {
        table().scrollRowToVisible(row);
        ASSERT_TRUE(perchly::test::waitUntil([&] { return table().viewAt(actionsColumn, row, false) != nullptr; }));
        for (std::size_t near = row > 4 ? row - 4 : 0; near <= row; ++near) {
            EXPECT_EQ(textAt(titleColumn, near), "Title " + std::to_string(near));
            EXPECT_EQ(textAt(urlColumn, near), "address " + std::to_string(near));
            const auto buttons = buttonsAt(near);
            ASSERT_THAT(buttons, SizeIs(8));
            EXPECT_THAT(table().viewAt(actionsColumn, near, true)->subviews(), SizeIs(8));
            EXPECT_EQ(
                buttons[Pin]->toolTip(), near % 2 == 1 ? "Unpin from main menu" : "Pin to main menu quick access");
        }
    }
    EXPECT_EQ(table().viewAt(actionsColumn, 299, false), nullptr) << "far away rows need no views";
}

TEST_F(BookmarkListTest, GoesWithItsOwners)
{
    const std::weak_ptr<BookmarkListViewController> held = list;
    window->close();
    perchly::test::handlePendingEvents();
    window.reset();
    list.reset();

    EXPECT_TRUE(perchly::test::waitUntil([&] { return held.expired(); }));
    delegate->note = {};
    observation = {};
    announce();
}

/// Every flag by itself.
struct FlagLook {
    bool Bookmark::*flag;
    RowButton button;
    const char* action;
    const char* symbolWhenOn;
    const char* symbolWhenOff;
    const char* toolTipWhenOn;
    const char* toolTipWhenOff;
};

constexpr std::array<FlagLook, 6> flagLooks { {
    { &Bookmark::isPinned, Pin, "togglePin:", "pin.fill", "pin", "Unpin from main menu",
        "Pin to main menu quick access" },
    { &Bookmark::isAddedToMenuBar, MenuBar, "toggleMenuBar:", "minus.circle", "plus.circle",
        "Remove from system menubar", "Add as a separate icon to system menubar" },
    { &Bookmark::shouldReloadOnOpen, Reload, "toggleReload:", "arrow.clockwise.circle.fill", "arrow.clockwise.circle",
        "Disable reload on every open", "Enable reload on every open" },
    { &Bookmark::isAlwaysOnTop, AlwaysOnTop, "toggleAlwaysOnTop:", "lock.shield.fill", "lock.shield",
        "Disable always on top for detached window", "Enable always on top for detached window" },
    { &Bookmark::prefersDetached, Detach, "toggleDetach:", "macwindow.on.rectangle.fill", "macwindow.on.rectangle",
        "Always open in a detached window", "Open in popover by default" },
    { &Bookmark::openInSystemBrowser, SystemBrowser, "toggleSystemBrowser:", "safari.fill", "safari",
        "Always open in system browser", "Open inside app" },
} };

/// A symbol that the system lacks is an empty picture.
std::string symbolOn(const appkit::Button& button)
{
    return button.image() ? button.image()->name() : "";
}

std::string ifThereIs(const char* symbol)
{
    return appkit::Image::systemSymbol(symbol) ? symbol : "";
}

TEST_F(BookmarkListTest, EachButtonShowsItsFlagAlone)
{
    for (const auto& shown : flagLooks) {
        auto changed = alpha;
        changed.*shown.flag = true;
        store().updateBookmark(changed);
        announce();
        const auto buttons = buttonsAt(0);
        ASSERT_THAT(buttons, SizeIs(8));
        for (const auto& look : flagLooks) {
            const auto isOn = look.flag == shown.flag;
            const auto& button = *buttons[look.button];
            EXPECT_EQ(button.action().name(), look.action);
            EXPECT_EQ(symbolOn(button), ifThereIs(isOn ? look.symbolWhenOn : look.symbolWhenOff));
            EXPECT_EQ(button.toolTip(), isOn ? look.toolTipWhenOn : look.toolTipWhenOff);
        }
    }
}

TEST_F(BookmarkListTest, EditAndDeleteLookAlikeInEveryState)
{
    auto changed = alpha;
    for (const auto& look : flagLooks)
        changed.*look.flag = true;
    store().updateBookmark(changed);
    announce();

    for (const std::size_t row : { 0U, 1U }) {
        const auto edit = buttonAt(row, Edit);
        EXPECT_EQ(edit->action().name(), "editBookmark:");
        EXPECT_EQ(symbolOn(*edit), ifThereIs("square.and.pencil"));
        EXPECT_EQ(edit->toolTip(), "Edit bookmark name or URL");
        const auto deletion = buttonAt(row, Delete);
        EXPECT_EQ(deletion->action().name(), "deleteBookmark:");
        EXPECT_EQ(symbolOn(*deletion), ifThereIs("trash"));
        EXPECT_EQ(deletion->toolTip(), "Permanently delete this bookmark");
    }
}

TEST_F(BookmarkListSearchTest, ShowsWhatHasTheTextInTitleOrAddress)
{
    search("BET");
    EXPECT_THAT(shownTitles(), ElementsAre("Beta"));

    search("two.example");
    EXPECT_THAT(shownTitles(), ElementsAre("Beta"));

    search("a");
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));

    search("https");
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta"));

    search("nowhere");
    EXPECT_THAT(shownTitles(), IsEmpty());

    search("");
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
}

TEST_F(BookmarkListSearchTest, CapitalsFindTheSmallLettersOfATitle)
{
    add({ bookmarkNamed("Youtube", "https://www.youtube.example") });

    search("YOU");

    EXPECT_THAT(shownTitles(), ElementsAre("Youtube"));
}

TEST_F(BookmarkListSearchTest, ABlankIsATextToo)
{
    add({ bookmarkNamed("Two words", "x") });

    search(" ");
    EXPECT_THAT(shownTitles(), ElementsAre("Two words"));

    search("beta ");
    EXPECT_THAT(shownTitles(), IsEmpty());
}

TEST_F(BookmarkListSearchTest, EmptyingTheFieldShowsAll)
{
    search("beta");
    ASSERT_THAT(shownTitles(), SizeIs(1));

    list->searchField()->doCommandBySelector("cancelOperation:");

    EXPECT_EQ(list->searchField()->stringValue(), "");
    EXPECT_TRUE(perchly::test::waitUntil([&] { return table().numberOfRows() == 3; }));
}

TEST_F(BookmarkListSearchTest, SearchesTheListAsItIsSinceTheLastReload)
{
    search("delta");
    add({ bookmarkNamed("Delta", "four.example") });

    search("delta");

    EXPECT_THAT(shownTitles(), ElementsAre("Delta"));
}

TEST_F(BookmarkListSearchTest, AReloadShowsAllAndTheFieldKeepsItsText)
{
    search("beta");
    ASSERT_THAT(shownTitles(), SizeIs(1));

    list->reloadBookmarks();

    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
    EXPECT_EQ(list->searchField()->stringValue(), "beta");
}

TEST_F(BookmarkListSearchTest, APinClickShowsAllAndTheFieldKeepsItsText)
{
    search("beta");

    click(0, Pin);

    EXPECT_TRUE(storedLike(beta).isPinned);
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
    EXPECT_EQ(list->searchField()->stringValue(), "beta");
}

} // namespace
