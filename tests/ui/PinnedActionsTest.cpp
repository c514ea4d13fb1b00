#include "bookmarks/UserAgents.h"
#include "pinned/PinnedBookmarkMenu.h"
#include "ui/PinnedTest.h"

namespace {

using appkit::MenuItem;
using perchly::Bookmark;
using perchly::IconSizeChoice;
using perchly::PinnedBookmarkManager;
using perchly::UserAgentChoice;
using testing::ElementsAre;
using testing::IsEmpty;

using Operation = void (PinnedBookmarkManager::*)(MenuItem&);

struct Toggle {
    Operation operation;
    bool Bookmark::*flag;
};

constexpr Toggle toggles[] = {
    { &PinnedBookmarkManager::toggleReloadOnOpen, &Bookmark::shouldReloadOnOpen },
    { &PinnedBookmarkManager::toggleAlwaysOnTop, &Bookmark::isAlwaysOnTop },
    { &PinnedBookmarkManager::togglePrefersDetached, &Bookmark::prefersDetached },
    { &PinnedBookmarkManager::toggleOpenInSystemBrowser, &Bookmark::openInSystemBrowser },
    { &PinnedBookmarkManager::togglePinnedStatus, &Bookmark::isPinned },
};

/// What the rows of a status item's menu do.
class PinnedActionsTest : public PinnedTest {
protected:
    PinnedActionsTest() { announcements = 0; }

    void perform(Operation operation, std::any carried) const
    {
        auto row = rowCarrying(std::move(carried));
        (*manager.*operation)(row);
    }

    Bookmark bookmark = added(bookmarkNamed("This"));
};

TEST_F(PinnedActionsTest, ATogglingRowSavesTheFlagInverted)
{
    for (const auto& [operation, flag] : toggles) {
        auto expected = storedLike(bookmark);
        expected.*flag = !(expected.*flag);

        perform(operation, storedLike(bookmark));
        EXPECT_EQ(storedLike(bookmark), expected);

        perform(operation, storedLike(bookmark));
        EXPECT_EQ(storedLike(bookmark).*flag, !(expected.*flag));
    }
}

TEST_F(PinnedActionsTest, EachChangeIsAnnouncedOnce)
{
    for (const auto& toggle : toggles)
        perform(toggle.operation, bookmark);
    EXPECT_EQ(announcements, 5);
    perform(&PinnedBookmarkManager::changeUserAgent, UserAgentChoice { bookmark, "Mine" });
    EXPECT_EQ(announcements, 6);
    perform(&PinnedBookmarkManager::changeIconSize, IconSizeChoice { bookmark, 18 });
    EXPECT_EQ(announcements, 7);
    perform(&PinnedBookmarkManager::removeFromMenubar, bookmark);
    EXPECT_EQ(announcements, 8);
}

TEST_F(PinnedActionsTest, TheCopyIsSavedWholeOverWhatChangedMeanwhile)
{
    auto changed = bookmark;
    changed.title = "Renamed";
    changed.isPinned = true;
    const auto overwrite = [&](Operation operation, const std::any& carried) {
        change(changed);
        perform(operation, carried);
        auto saved = storedLike(bookmark);
        EXPECT_EQ(saved.title, "This");
        return saved;
    };

    for (const auto& [operation, flag] : toggles) {
        auto expected = bookmark;
        expected.*flag = !(bookmark.*flag);
        EXPECT_EQ(overwrite(operation, bookmark), expected);
    }
    auto expected = bookmark;
    expected.userAgent = "Mine";
    EXPECT_EQ(overwrite(&PinnedBookmarkManager::changeUserAgent, UserAgentChoice { bookmark, "Mine" }), expected);
    expected = bookmark;
    expected.menubarIconSize = 22;
    EXPECT_EQ(overwrite(&PinnedBookmarkManager::changeIconSize, IconSizeChoice { bookmark, 22 }), expected);
}

TEST_F(PinnedActionsTest, AlwaysOnTopIsSavedThenTheWindowToldThenAnnounced)
{
    auto wasSaved = false;
    auto announcedBefore = -1;
    delegate->whenLevelled = [&] {
        wasSaved = storedLike(bookmark).isAlwaysOnTop == !bookmark.isAlwaysOnTop;
        announcedBefore = announcements;
    };

    perform(&PinnedBookmarkManager::toggleAlwaysOnTop, bookmark);

    EXPECT_TRUE(wasSaved);
    EXPECT_EQ(announcedBefore, 0);
    EXPECT_EQ(announcements, 1);
    EXPECT_THAT(delegate->levelled, ElementsAre(storedLike(bookmark)));
}

TEST_F(PinnedActionsTest, AlwaysOnTopIsSavedAndAnnouncedWithoutADelegateToo)
{
    delegate.reset();

    perform(&PinnedBookmarkManager::toggleAlwaysOnTop, bookmark);

    EXPECT_EQ(storedLike(bookmark).isAlwaysOnTop, !bookmark.isAlwaysOnTop);
    EXPECT_EQ(announcements, 1);
}

TEST_F(PinnedActionsTest, TheOtherTogglesLeaveTheWindowAlone)
{
    for (const auto& toggle : toggles) {
        if (toggle.flag != &Bookmark::isAlwaysOnTop)
            perform(toggle.operation, bookmark);
    }

    EXPECT_THAT(delegate->levelled, IsEmpty());
    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedActionsTest, AUserAgentIsStoredAndTheDefaultClearsIt)
{
    const std::string chrome(perchly::agents::chrome);
    perform(&PinnedBookmarkManager::changeUserAgent, UserAgentChoice { bookmark, chrome });
    EXPECT_EQ(storedLike(bookmark).userAgent, chrome);

    perform(&PinnedBookmarkManager::changeUserAgent, UserAgentChoice { storedLike(bookmark), std::nullopt });
    EXPECT_EQ(storedLike(bookmark), bookmark);
}

TEST_F(PinnedActionsTest, ChoosingTheSizeThatWasShownStoresIt)
{
    ASSERT_EQ(bookmark.menubarIconSize, std::nullopt);

    perform(&PinnedBookmarkManager::changeIconSize, IconSizeChoice { bookmark, 15 });

    EXPECT_EQ(storedLike(bookmark).menubarIconSize, 15);
    EXPECT_EQ(buttonOf(bookmark)->font().pointSize, 15);
}

TEST_F(PinnedActionsTest, ANewIconSizeIsSeenAtOnce)
{
    perform(&PinnedBookmarkManager::changeIconSize, IconSizeChoice { bookmark, 22 });

    EXPECT_EQ(buttonOf(bookmark)->font().pointSize, 22);
}

TEST_F(PinnedActionsTest, DetachingAsksTheDelegateAndSavesNothing)
{
    auto changed = bookmark;
    changed.title = "Renamed";
    store().updateBookmark(changed);

    perform(&PinnedBookmarkManager::detachWindow, bookmark);

    EXPECT_THAT(delegate->detached, ElementsAre(bookmark));
    EXPECT_EQ(storedLike(bookmark), changed);
    EXPECT_EQ(announcements, 0);
}

TEST_F(PinnedActionsTest, DetachingWithoutADelegateDoesNothing)
{
    manager->setDelegate({});

    perform(&PinnedBookmarkManager::detachWindow, bookmark);

    EXPECT_THAT(delegate->detached, IsEmpty());
    EXPECT_EQ(storedLike(bookmark), bookmark);
    EXPECT_EQ(announcements, 0);
}

TEST_F(PinnedActionsTest, ARemovedBookmarkLosesItsItemAndStaysInTheList)
{
    auto changed = bookmark;
    changed.title = "Renamed";
    change(changed);

    perform(&PinnedBookmarkManager::removeFromMenubar, bookmark);

    changed.isAddedToMenuBar = false;
    EXPECT_EQ(storedLike(bookmark), changed);
    EXPECT_EQ(buttonOf(bookmark), nullptr);
}

TEST_F(PinnedActionsTest, RemovingTwiceFromOldMenusBringsTheItemBack)
{
    perform(&PinnedBookmarkManager::removeFromMenubar, bookmark);
    perform(&PinnedBookmarkManager::removeFromMenubar, bookmark);

    EXPECT_TRUE(storedLike(bookmark).isAddedToMenuBar);
    EXPECT_NE(buttonOf(bookmark), nullptr);
}

TEST_F(PinnedActionsTest, ABookmarkThatTheStoreForgotIsAnnouncedAllTheSame)
{
    store().removeBookmark(bookmark.id);

    for (const auto& toggle : toggles)
        perform(toggle.operation, bookmark);
    perform(&PinnedBookmarkManager::changeUserAgent, UserAgentChoice { bookmark, "Mine" });
    perform(&PinnedBookmarkManager::changeIconSize, IconSizeChoice { bookmark, 18 });
    perform(&PinnedBookmarkManager::removeFromMenubar, bookmark);

    EXPECT_THAT(store().bookmarks(), IsEmpty());
    EXPECT_EQ(announcements, 8);
}

TEST_F(PinnedActionsTest, ARowThatCarriesAnotherThingDoesNothing)
{
    const std::any strangers[] = { {}, std::string("a text"), bookmark.id, &bookmark };
    const auto tryAll = [&](const std::vector<Operation>& operations, const std::any& carried) {
        for (const auto operation : operations)
            perform(operation, carried);
    };
    std::vector<Operation> ofBookmarks { &PinnedBookmarkManager::editCustomIcon, &PinnedBookmarkManager::detachWindow,
        &PinnedBookmarkManager::removeFromMenubar };
    for (const auto& toggle : toggles)
        ofBookmarks.push_back(toggle.operation);
    const std::vector<Operation> ofChoices { &PinnedBookmarkManager::changeUserAgent,
        &PinnedBookmarkManager::changeIconSize };

    for (const auto& stranger : strangers) {
        tryAll(ofBookmarks, stranger);
        tryAll(ofChoices, stranger);
    }
    tryAll(ofChoices, bookmark);
    tryAll(ofBookmarks, UserAgentChoice { bookmark, "Mine" });
    tryAll(ofBookmarks, IconSizeChoice { bookmark, 18 });
    perform(&PinnedBookmarkManager::changeUserAgent, IconSizeChoice { bookmark, 18 });
    perform(&PinnedBookmarkManager::changeIconSize, UserAgentChoice { bookmark, "Mine" });

    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(storedLike(bookmark), bookmark);
    EXPECT_THAT(delegate->detached, IsEmpty());
    EXPECT_THAT(delegate->levelled, IsEmpty());
}

} // namespace
