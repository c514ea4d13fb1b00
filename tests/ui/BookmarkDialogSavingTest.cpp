#include "ui/BookmarkDialogTest.h"

#include "bookmarks/UserAgents.h"
#include "platform/appkit/TableView.h"

namespace {

using perchly::Bookmark;
using perchly::BookmarkListViewController;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using BookmarkDialogSavingTest = BookmarkDialogTest;

TEST_F(BookmarkDialogSavingTest, StoresTheAgentThatIsChosen)
{
    for (std::size_t row = 1; row < customAgent; ++row) {
        const auto added = addedWith([&](const Dialog& dialog) {
            dialog.chooseAgent(customAgent);
            dialog.customAgentField.setStringValue("Typed in vain");
            dialog.chooseAgent(row);
        });
        const std::string_view agents[] = { perchly::agents::safari17, perchly::agents::chrome,
            perchly::agents::firefox, perchly::agents::iPad, perchly::agents::iPhone };
        ASSERT_TRUE(added);
        EXPECT_EQ(added->userAgent, agents[row - 1]);
    }
    const auto added = addedWith([](const Dialog& dialog) { dialog.chooseAgent(systemDefaultAgent); });
    ASSERT_TRUE(added);
    EXPECT_EQ(added->userAgent, std::nullopt);
}

TEST_F(BookmarkDialogSavingTest, StoresACustomAgentWithoutBlanksAtItsEnds)
{
    const auto withAgent = [this](std::string_view agent) {
        const auto added = addedWith([&](const Dialog& dialog) {
            dialog.chooseAgent(customAgent);
            dialog.customAgentField.setStringValue(agent);
        });
        return added ? added->userAgent : "nothing was added";
    };

    EXPECT_EQ(withAgent("  Mine/1.0 (like others) \t"), "Mine/1.0 (like others)");
    EXPECT_EQ(withAgent("custom"), "custom");
    EXPECT_EQ(withAgent(""), std::nullopt);
    EXPECT_EQ(withAgent(" \u3000"), std::nullopt);
}

TEST_F(BookmarkDialogSavingTest, AddsWhatWasEntered)
{
    foundation::Date answered;

    add(save, [&](const Dialog& dialog) {
        dialog.title.setStringValue("News");
        dialog.address.setStringValue("https://news.example/today");
        dialog.symbol.setStringValue("newspaper");
        dialog.iconAddress.setStringValue("https://icons.example/n.png");
        dialog.size.selectItemAt(3);
        dialog.chooseAgent(chromeAgent);
        dialog.openInSystemBrowser.performClick();
        answered = foundation::Date::now();
    });

    ASSERT_THAT(store().bookmarks(), SizeIs(2));
    const auto& added = store().bookmarks().back();
    const Bookmark expected { .id = added.id,
        .title = "News",
        .url = "https://news.example/today",
        .iconURL = "https://icons.example/n.png",
        .createdAt = added.createdAt,
        .openInSystemBrowser = true,
        .userAgent = std::string(perchly::agents::chrome),
        .sfSymbolName = "newspaper",
        .menubarIconSize = 22 };
    EXPECT_EQ(added, expected);
    EXPECT_THAT(added.id, testing::MatchesRegex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"));
    EXPECT_GE(added.createdAt.timeIntervalSinceReferenceDate, answered.timeIntervalSinceReferenceDate);
    EXPECT_LE(added.createdAt.timeIntervalSinceReferenceDate, foundation::Date::now().timeIntervalSinceReferenceDate);
    EXPECT_EQ(announcements, 1);
}

TEST_F(BookmarkDialogSavingTest, EachNewBookmarkHasAnIdOfItsOwn)
{
    const auto first = addedWith([](const Dialog&) {});
    const auto second = addedWith([](const Dialog&) {});

    ASSERT_TRUE(first && second);
    EXPECT_NE(first->id, second->id);
    EXPECT_EQ(first->url, second->url);
}

TEST_F(BookmarkDialogSavingTest, LeavesOutBlanksAtBothEndsAndWhatIsEmpty)
{
    const auto added = addedWith([](const Dialog& dialog) {
        dialog.title.setStringValue("\t A title\u00A0");
        dialog.address.setStringValue("  an address \u2003");
        dialog.symbol.setStringValue(" \t");
        dialog.iconAddress.setStringValue("");
    });

    ASSERT_TRUE(added);
    EXPECT_EQ(added->title, "A title");
    EXPECT_EQ(added->url, "an address");
    EXPECT_EQ(added->sfSymbolName, std::nullopt);
    EXPECT_EQ(added->iconURL, std::nullopt);
    EXPECT_EQ(added->menubarIconSize, 15);
}

TEST_F(BookmarkDialogSavingTest, ABlankTitleBecomesTheAddressWhichGetsNoScheme)
{
    const auto added = addedWith([](const Dialog& dialog) {
        dialog.title.setStringValue("  \t ");
        dialog.address.setStringValue("  site.example/path  ");
    });

    ASSERT_TRUE(added);
    EXPECT_EQ(added->title, "site.example/path");
    EXPECT_EQ(added->url, "site.example/path");
}

TEST_F(BookmarkDialogSavingTest, WithoutAnAddressNothingIsAdded)
{
    for (const auto* address : { "", "  ", "\t\u3000" }) {
        add(save, [&](const Dialog& dialog) {
            dialog.title.setStringValue("A title");
            dialog.address.setStringValue(address);
        });
    }

    EXPECT_THAT(store().bookmarks(), ElementsAre(bookmark));
    EXPECT_EQ(announcements, 0);
}

TEST_F(BookmarkDialogSavingTest, WithoutAnAddressNothingIsChanged)
{
    edit(save, [](const Dialog& dialog) {
        dialog.title.setStringValue("Renamed");
        dialog.address.setStringValue(" ");
    });

    EXPECT_THAT(store().bookmarks(), ElementsAre(bookmark));
    EXPECT_EQ(announcements, 0);
}

TEST_F(BookmarkDialogSavingTest, EditingChangesWhatTheDialogShowsAndLeavesTheRest)
{
    bookmark = { .title = "Mail",
        .url = "mail.example",
        .isPinned = true,
        .isAddedToMenuBar = true,
        .iconURL = "https://icons.example/a.png",
        .createdAt = { 1000.5 },
        .preferredWidth = 640.5,
        .preferredHeight = 480,
        .shouldReloadOnOpen = true,
        .isAlwaysOnTop = false,
        .prefersDetached = true,
        .openInSystemBrowser = true,
        .userAgent = "Mine/1.0",
        .customEmoji = "🐢",
        .sfSymbolName = "safari",
        .menubarIconSize = 18 };
    store().addBookmark(bookmark);

    edit(save, [](const Dialog& dialog) {
        dialog.title.setStringValue("Post");
        dialog.address.setStringValue("post.example");
        dialog.symbol.setStringValue("");
        dialog.iconAddress.setStringValue(" ");
        dialog.size.selectItemAt(0);
        dialog.chooseAgent(systemDefaultAgent);
        dialog.openInSystemBrowser.performClick();
    });

    auto expected = bookmark;
    expected.title = "Post";
    expected.url = "post.example";
    expected.sfSymbolName = std::nullopt;
    expected.iconURL = std::nullopt;
    expected.menubarIconSize = 13;
    expected.userAgent = std::nullopt;
    expected.openInSystemBrowser = false;
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(announcements, 1);
}

TEST_F(BookmarkDialogSavingTest, SavedUnchangedItStoresTheSizeThatWasShown)
{
    edit(save);

    auto expected = bookmark;
    expected.menubarIconSize = 15;
    EXPECT_EQ(stored(), expected);
}

TEST_F(BookmarkDialogSavingTest, CancelledItChangesNothing)
{
    std::filesystem::remove(storeFile());
    const auto menu = controller->statusItem()->menu();
    const auto list = std::make_shared<BookmarkListViewController>();
    const auto typeEverywhere = [](const Dialog& dialog) {
        for (auto* field : { &dialog.title, &dialog.address, &dialog.symbol, &dialog.iconAddress })
            field->setStringValue("typed");
        dialog.size.selectItemAt(3);
        dialog.openInSystemBrowser.performClick();
    };

    answer(std::nullopt, cancel, typeEverywhere, list);
    answer(bookmark, cancel, typeEverywhere, list);

    EXPECT_THAT(store().bookmarks(), ElementsAre(bookmark));
    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(controller->statusItem()->menu(), menu);
    EXPECT_FALSE(std::filesystem::exists(storeFile()));
    appkit::TableView table;
    EXPECT_EQ(list->numberOfRows(table), 0U) << "the list was reloaded";
}

TEST_F(BookmarkDialogSavingTest, TheMenuComesFirstThenTheAnnouncementThenTheList)
{
    // One without a view, which does not follow the announcements by itself.
    const auto list = std::make_shared<BookmarkListViewController>();
    const appkit::TableView table;
    whenAnnounced = [&] {
        EXPECT_EQ(stored().title, "Renamed");
        EXPECT_THAT(menuRows(), testing::Contains("Renamed"));
        EXPECT_EQ(list->numberOfRows(table), 0U);
    };

    answer(
        bookmark, save, [](const Dialog& dialog) { dialog.title.setStringValue("Renamed"); }, list);

    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(list->numberOfRows(table), 1U);
    whenAnnounced = [] {};
    answer(
        std::nullopt, save, [](const Dialog& dialog) { dialog.address.setStringValue("new.example"); }, list);
    EXPECT_EQ(announcements, 2);
    EXPECT_EQ(list->numberOfRows(table), 2U);
}

TEST_F(BookmarkDialogSavingTest, SavesOverWhatChangedWhileItWasOpen)
{
    edit(save, [this](const Dialog&) {
        auto changed = bookmark;
        changed.title = "Renamed";
        changed.prefersDetached = true;
        store().updateBookmark(changed);
    });

    EXPECT_EQ(stored().title, "Mail");
    EXPECT_FALSE(stored().prefersDetached);
}

TEST_F(BookmarkDialogSavingTest, SavingABookmarkDeletedMeanwhileOnlyAnnounces)
{
    edit(save, [this](const Dialog&) { store().removeBookmark(bookmark.id); });

    EXPECT_THAT(store().bookmarks(), IsEmpty());
    EXPECT_EQ(announcements, 1);
}

} // namespace
