#include "ui/BookmarkListTest.h"

namespace {

using appkit::Alert;
using perchly::Bookmark;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t confirm = 0;
constexpr std::size_t cancel = 1;

class BookmarkListActionsTest : public BookmarkListTest {
protected:
    /// Clicks the button of the second row, which is beta's, and then checks what the store has of it.
    void expectInverted(RowButton button, bool Bookmark::*flag)
    {
        for (const auto isOn : { true, false }) {
            auto expected = storedLike(beta);
            expected.*flag = isOn;
            watch();

            click(1, button);

            EXPECT_EQ(storedLike(beta), expected);
            EXPECT_EQ(storedLike(alpha), alpha);
            EXPECT_EQ(storedLike(gamma), gamma);
            EXPECT_TRUE(wasReloaded());
            for (const auto& stored : storeAtEvents)
                EXPECT_EQ(stored, store().bookmarks()) << "told before it was changed";
        }
    }
};

TEST_F(BookmarkListActionsTest, PinningIsAnnouncedAfterTheMenu)
{
    expectInverted(Pin, &Bookmark::isPinned);

    EXPECT_THAT(events, ElementsAre("menu", "announced"));
}

TEST_F(BookmarkListActionsTest, AddingToTheMenuBarIsAnnouncedAfterTheMenu)
{
    expectInverted(MenuBar, &Bookmark::isAddedToMenuBar);

    EXPECT_THAT(events, ElementsAre("menu", "announced"));
}

TEST_F(BookmarkListActionsTest, ReloadOnOpenIsToldToNobody)
{
    expectInverted(Reload, &Bookmark::shouldReloadOnOpen);

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BookmarkListActionsTest, AlwaysOnTopReachesTheWindowBeforeTheReloadAndIsNotAnnounced)
{
    expectInverted(AlwaysOnTop, &Bookmark::isAlwaysOnTop);

    EXPECT_THAT(events, ElementsAre("level"));
    auto onTop = beta;
    onTop.isAlwaysOnTop = true;
    EXPECT_THAT(delegate->levelled, ElementsAre(onTop, beta));
}

TEST_F(BookmarkListActionsTest, DetachingIsToldToNobody)
{
    expectInverted(Detach, &Bookmark::prefersDetached);

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BookmarkListActionsTest, TheSystemBrowserReachesTheMenuBeforeTheReloadAndIsNotAnnounced)
{
    expectInverted(SystemBrowser, &Bookmark::openInSystemBrowser);

    EXPECT_THAT(events, ElementsAre("menu"));
}

TEST_F(BookmarkListActionsTest, FlagsDoNotTouchEachOther)
{
    click(1, Detach);
    click(1, SystemBrowser);
    EXPECT_TRUE(storedLike(beta).prefersDetached);
    EXPECT_TRUE(storedLike(beta).openInSystemBrowser);

    click(1, Detach);
    EXPECT_FALSE(storedLike(beta).prefersDetached);
    EXPECT_TRUE(storedLike(beta).openInSystemBrowser);

    click(1, Detach);
    click(1, SystemBrowser);
    EXPECT_TRUE(storedLike(beta).prefersDetached);
    EXPECT_FALSE(storedLike(beta).openInSystemBrowser);
}

TEST_F(BookmarkListActionsTest, TheRowShowsTheNewStateAtOnce)
{
    const std::pair<RowButton, const char*> toggles[] = {
        { Pin, "Unpin from main menu" },
        { MenuBar, "Remove from system menubar" },
        { Reload, "Disable reload on every open" },
        { AlwaysOnTop, "Disable always on top for detached window" },
        { Detach, "Always open in a detached window" },
        { SystemBrowser, "Always open in system browser" },
    };
    for (const auto& [button, toolTip] : toggles) {
        const auto before = buttonAt(1, button)->image();
        const auto toolTipBefore = buttonAt(1, button)->toolTip();
        click(1, button);
        EXPECT_EQ(buttonAt(1, button)->toolTip(), toolTip);
        EXPECT_NE(buttonAt(1, button)->image(), before) << toolTip;
        click(1, button);
        EXPECT_EQ(buttonAt(1, button)->toolTip(), toolTipBefore);
    }
}

TEST_F(BookmarkListActionsTest, EveryButtonActsOnItsOwnRowAlsoUnderAFilter)
{
    const std::pair<RowButton, bool Bookmark::*> toggles[] = {
        { Pin, &Bookmark::isPinned },
        { MenuBar, &Bookmark::isAddedToMenuBar },
        { Reload, &Bookmark::shouldReloadOnOpen },
        { AlwaysOnTop, &Bookmark::isAlwaysOnTop },
        { Detach, &Bookmark::prefersDetached },
        { SystemBrowser, &Bookmark::openInSystemBrowser },
    };
    auto expected = gamma;
    for (const auto& [button, flag] : toggles) {
        search("gamma");
        ASSERT_THAT(shownTitles(), ElementsAre("Gamma"));
        click(0, button);
        expected.*flag = true;
        EXPECT_EQ(storedLike(gamma), expected);
    }
    EXPECT_EQ(storedLike(alpha), alpha);
    EXPECT_EQ(storedLike(beta), beta);

    search("gamma");
    click(0, Edit);
    EXPECT_THAT(delegate->dialogs, ElementsAre(expected));

    clickAndAnswer(0, Delete, confirm);
    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, beta));
}

TEST_F(BookmarkListActionsTest, AButtonChangesTheBookmarkAsTheRowShowsIt)
{
    auto renamed = beta;
    renamed.title = "Renamed behind the list's back";
    store().updateBookmark(renamed);

    click(1, Detach);

    auto expected = beta;
    expected.prefersDetached = true;
    EXPECT_EQ(storedLike(beta), expected);
}

TEST_F(BookmarkListActionsTest, AButtonOfABookmarkThatIsGoneFromTheStoreChangesNothing)
{
    store().removeBookmark(beta.id);

    click(1, Detach);

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, gamma));
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Gamma"));
}

TEST_F(BookmarkListActionsTest, AButtonThatIsInNoRowDoesNothing)
{
    const auto formerly = buttonAt(2, Pin);
    removeAll();
    add({ alpha });
    const auto stray = appkit::Button::withTitle("Stray", {});
    watch();

    formerly->performClick();
    list->togglePin(*stray);
    list->toggleMenuBar(*stray);
    list->toggleReload(*stray);
    list->toggleAlwaysOnTop(*stray);
    list->toggleDetach(*stray);
    list->toggleSystemBrowser(*stray);
    list->editBookmark(*stray);
    list->deleteBookmark(*stray);

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha));
    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(delegate->dialogs, IsEmpty());
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkListActionsTest, WithoutAnOwnerNothingHappensAtAll)
{
    delegate.reset();
    watch();
    const auto before = store().bookmarks();

    for (const auto button : { Pin, MenuBar, Reload, AlwaysOnTop, Detach, SystemBrowser, Edit, Delete })
        click(1, button);
    list->addButton()->performClick();

    EXPECT_EQ(Alert::running(), nullptr);
    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkListActionsTest, EditingIsLeftToTheOwner)
{
    watch();

    click(1, Edit);

    EXPECT_THAT(delegate->dialogs, ElementsAre(beta));
    EXPECT_EQ(delegate->listOfDialog, list.get());
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkListActionsTest, AddingIsLeftToTheOwner)
{
    watch();

    list->addButton()->performClick();

    EXPECT_THAT(delegate->dialogs, ElementsAre(std::nullopt));
    EXPECT_EQ(delegate->listOfDialog, list.get());
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkListActionsTest, DeletingAsksFirst)
{
    store().addBookmark(bookmarkNamed("Slack", "https://app.slack.example/client"));
    announce();

    clickAndAnswer(3, Delete, cancel, [this](Alert& alert) {
        EXPECT_EQ(alert.style, appkit::AlertStyle::Warning);
        EXPECT_EQ(alert.messageText, "Delete Bookmark");
        EXPECT_EQ(alert.informativeText, "Are you sure you want to delete \"Slack\"?");
        EXPECT_THAT(alert.buttonTitles, ElementsAre("Delete", "Cancel"));
        EXPECT_EQ(sheet(), nullptr);
    });
}

TEST_F(BookmarkListActionsTest, CancellingADeletionLeavesEverything)
{
    const auto before = store().bookmarks();
    watch();

    clickAndAnswer(1, Delete, cancel);

    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(wasReloaded());
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
}

TEST_F(BookmarkListActionsTest, DeletingRemovesTheBookmarkAndIsAnnouncedAfterTheMenu)
{
    watch();

    clickAndAnswer(1, Delete, confirm);

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, gamma));
    EXPECT_THAT(events, ElementsAre("menu", "announced"));
    EXPECT_THAT(storeAtEvents, Each(ElementsAre(alpha, gamma)));
    EXPECT_TRUE(wasReloaded());
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Gamma"));
}

TEST_F(BookmarkListActionsTest, AnOwnerWhoLeavesWhileTheQuestionIsOpenLeavesTheBookmark)
{
    watch();

    clickAndAnswer(1, Delete, confirm, [this](Alert&) { delegate.reset(); });

    EXPECT_THAT(store().bookmarks(), SizeIs(3));
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkListActionsTest, AReloadWhileTheQuestionIsOpenChangesNotWhichOneGoes)
{
    clickAndAnswer(1, Delete, confirm, [this](Alert&) {
        store().removeBookmark(alpha.id);
        announce();
        search("gamma");
    });

    EXPECT_THAT(store().bookmarks(), ElementsAre(gamma));
    EXPECT_THAT(shownTitles(), ElementsAre("Gamma"));
}

TEST_F(BookmarkListActionsTest, AListThatIsLetGoWhileTheQuestionIsOpenStillDeletes)
{
    const auto button = buttonAt(1, Delete);
    const std::weak_ptr<perchly::BookmarkListViewController> held = list;
    foundation::dispatchMainAsync([&] {
        window->close();
        window->setContentViewController(nullptr);
        delegate->note = [](const std::string&) {};
        observation = {};
        list.reset();
        Alert::running()->performClick(confirm);
    });

    button->performClick();

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, gamma));
    EXPECT_TRUE(held.expired());
}

TEST_F(BookmarkListActionsTest, TwoOfOneIdAreDeletedTogether)
{
    store().addBookmark(beta);
    announce();

    clickAndAnswer(3, Delete, confirm);

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, gamma));
}

} // namespace
