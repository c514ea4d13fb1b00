#include "pinned/PinnedBookmarkMenu.h"
#include "platform/appkit/PopUpButton.h"
#include "platform/appkit/TextField.h"
#include "platform/appkit/View.h"
#include "ui/AnsweredAlert.h"
#include "ui/PinnedTest.h"

namespace {

using appkit::Alert;
using appkit::PopUpButton;
using appkit::TextField;
using perchly::Bookmark;
using testing::ElementsAre;
using testing::EndsWith;
using testing::SizeIs;
using testing::StartsWith;

constexpr std::size_t save = 0;
constexpr std::size_t cancel = 1;

/// The dialog, which runs only while it is looked at.
struct Dialog {
    Alert& alert;
    const std::vector<std::shared_ptr<appkit::View>>& views;
    TextField& symbol;
    TextField& address;
    PopUpButton& size;
};

/// "Change Custom Icon..." of a status item's menu.
class CustomIconDialogTest : public PinnedTest {
protected:
    CustomIconDialogTest()
    {
        bookmark.sfSymbolName = std::nullopt;
        bookmark.customEmoji = "🐢";
        added(bookmark);
        announcements = 0;
    }

    /// Opens the dialog, lets the user work with it and answers it.
    void answer(
        std::size_t button, const std::function<void(Dialog)>& work = [](Dialog) {})
    {
        auto row = rowCarrying(bookmark);
        openAndAnswer([&] { manager->editCustomIcon(row); }, button,
            [&](Alert& alert) {
                const auto& views = alert.accessoryView->subviews();
                ASSERT_THAT(views, SizeIs(6));
                const auto symbol = std::dynamic_pointer_cast<TextField>(views[1]);
                const auto address = std::dynamic_pointer_cast<TextField>(views[3]);
                const auto size = std::dynamic_pointer_cast<PopUpButton>(views[5]);
                ASSERT_TRUE(symbol && address && size);
                work({ alert, views, *symbol, *address, *size });
            });
    }

    [[nodiscard]] std::size_t preselectedFor(std::optional<double> size)
    {
        std::size_t index = 99;
        bookmark.menubarIconSize = size;
        answer(cancel, [&](const Dialog& dialog) { index = dialog.size.indexOfSelectedItem(); });
        return index;
    }

    Bookmark bookmark = bookmarkNamed("This");
};

TEST_F(CustomIconDialogTest, SaysWhatItAsksFor)
{
    answer(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.alert.messageText, "Change Custom Icon");
        EXPECT_EQ(dialog.alert.informativeText, "Enter an Emoji, SF Symbol name, or an Icon URL:");
        EXPECT_THAT(dialog.alert.buttonTitles, ElementsAre("Save", "Cancel"));
        const auto label = [&](std::size_t index) {
            return std::dynamic_pointer_cast<TextField>(dialog.views[index])->stringValue();
        };
        EXPECT_EQ(label(0), "Emoji or SF Symbol (e.g. 🚀, safari):");
        EXPECT_EQ(label(2), "OR Icon URL (PNG/SVG):");
        EXPECT_EQ(label(4), "Icon Size:");
        EXPECT_EQ(dialog.symbol.placeholderString(), "Leave empty to use URL or Favicon");
        EXPECT_THAT(dialog.address.placeholderString(), StartsWith("https://"));
        EXPECT_THAT(dialog.address.placeholderString(), EndsWith("/icon.svg"));
        EXPECT_THAT(dialog.address.placeholderString(), SizeIs(28));
        EXPECT_THAT(
            dialog.size.itemTitles(), ElementsAre("Small (13)", "Medium (15)", "Large (18)", "Extra Large (22)"));
    });
}

TEST_F(CustomIconDialogTest, HasFieldsOfThatSizeOneBelowTheOther)
{
    answer(cancel, [](const Dialog& dialog) {
        const foundation::Size fieldSize { 290, 24 };
        const appkit::View* controls[] = { &dialog.symbol, &dialog.address, &dialog.size };
        const auto isLaidOut = [&] {
            return std::ranges::all_of(
                controls, [&](auto* view) { return view->frame().size.width == fieldSize.width; });
        };
        EXPECT_TRUE(perchly::test::waitUntil(isLaidOut));
        EXPECT_EQ(dialog.alert.accessoryView->frame().size.width, 300);
        // The captions may need a little more, with the theme's font.
        const auto height = dialog.alert.accessoryView->frame().size.height;
        EXPECT_GE(height, 160);
        EXPECT_LE(height, 180);
        for (const auto* control : controls)
            EXPECT_EQ(control->frame().size.height, fieldSize.height);
        for (std::size_t index = 1; index < dialog.views.size(); ++index)
            EXPECT_LT(dialog.views[index]->frame().origin.y, dialog.views[index - 1]->frame().origin.y) << index;
    });
}

TEST_F(CustomIconDialogTest, BeginsWithEmptyFieldsForABookmarkWithoutAnIcon)
{
    answer(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.symbol.stringValue(), "");
        EXPECT_EQ(dialog.address.stringValue(), "");
    });
}

TEST_F(CustomIconDialogTest, BeginsWithWhatTheBookmarkHas)
{
    bookmark.sfSymbolName = "safari";
    bookmark.iconURL = "https://icons.example/a.png";

    answer(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.symbol.stringValue(), "safari");
        EXPECT_EQ(dialog.address.stringValue(), "https://icons.example/a.png");
    });
}

TEST_F(CustomIconDialogTest, PreselectsTheSizeThatTheBookmarkHas)
{
    EXPECT_EQ(preselectedFor(std::nullopt), 1U);
    EXPECT_EQ(preselectedFor(13), 0U);
    EXPECT_EQ(preselectedFor(15.05), 1U);
    EXPECT_EQ(preselectedFor(18), 2U);
    EXPECT_EQ(preselectedFor(21.95), 3U);
}

TEST_F(CustomIconDialogTest, PreselectsTheFirstSizeForOneInBetweenAndStoresThat)
{
    EXPECT_EQ(preselectedFor(20), 0U);

    answer(save);

    EXPECT_EQ(storedLike(bookmark).menubarIconSize, 13);
}

TEST_F(CustomIconDialogTest, StoresWhatWasEnteredAndAnnouncesItOnce)
{
    answer(save, [](const Dialog& dialog) {
        dialog.symbol.setStringValue("YT");
        dialog.address.setStringValue("icons/example");
        dialog.size.selectItemAt(3);
    });

    auto expected = bookmark;
    expected.sfSymbolName = "YT";
    expected.iconURL = "icons/example";
    expected.menubarIconSize = 22;
    EXPECT_EQ(storedLike(bookmark), expected);
    EXPECT_EQ(announcements, 1);
    EXPECT_EQ(buttonOf(bookmark)->title(), "YT");
    EXPECT_EQ(buttonOf(bookmark)->font().pointSize, 22);
}

TEST_F(CustomIconDialogTest, ClassifiesNothing)
{
    answer(save, [](const Dialog& dialog) {
        dialog.symbol.setStringValue("🚀");
        dialog.address.setStringValue("no address");
    });

    EXPECT_EQ(storedLike(bookmark).sfSymbolName, "🚀");
    EXPECT_EQ(storedLike(bookmark).iconURL, "no address");
    EXPECT_EQ(storedLike(bookmark).customEmoji, "🐢");
}

TEST_F(CustomIconDialogTest, LeavesOutBlanksAtBothEnds)
{
    answer(save, [](const Dialog& dialog) {
        dialog.symbol.setStringValue(" \t a b \u3000\u00A0");
        dialog.address.setStringValue("\u2003icons/example ");
    });

    EXPECT_EQ(storedLike(bookmark).sfSymbolName, "a b");
    EXPECT_EQ(storedLike(bookmark).iconURL, "icons/example");
}

TEST_F(CustomIconDialogTest, BlankFieldsClearAndTheEmojiStays)
{
    bookmark.sfSymbolName = "safari";
    bookmark.iconURL = "icons/example";
    change(bookmark);

    answer(save, [](const Dialog& dialog) {
        dialog.symbol.setStringValue(" \t");
        dialog.address.setStringValue("");
        dialog.size.selectItemAt(2);
    });

    auto expected = bookmark;
    expected.sfSymbolName = std::nullopt;
    expected.iconURL = std::nullopt;
    expected.menubarIconSize = 18;
    EXPECT_EQ(storedLike(bookmark), expected);
    EXPECT_EQ(buttonOf(bookmark)->title(), "🐢");
}

TEST_F(CustomIconDialogTest, SavedUnchangedItStoresTheSizeThatWasShown)
{
    answer(save);

    auto expected = bookmark;
    expected.menubarIconSize = 15;
    EXPECT_EQ(storedLike(bookmark), expected);
}

TEST_F(CustomIconDialogTest, CancelledItChangesNothing)
{
    answer(cancel, [](const Dialog& dialog) {
        dialog.symbol.setStringValue("YT");
        dialog.address.setStringValue("icons/example");
        dialog.size.selectItemAt(3);
    });

    EXPECT_EQ(storedLike(bookmark), bookmark);
    EXPECT_EQ(announcements, 0);
}

TEST_F(CustomIconDialogTest, SavesOverWhatChangedWhileItWasOpen)
{
    answer(save, [this](const Dialog&) {
        auto changed = bookmark;
        changed.title = "Renamed";
        change(changed);
    });

    EXPECT_EQ(storedLike(bookmark).title, "This");
}

TEST_F(CustomIconDialogTest, NothingElseOfTheItemsStartsWhileItRuns)
{
    const auto other = added(bookmarkNamed("Another"));
    announcements = 0;
    answer(cancel, [&](const Dialog& dialog) {
        for (const auto& clicked : { bookmark, other })
            manager->statusItemClicked(*buttonOf(clicked));
        using Manager = perchly::PinnedBookmarkManager;
        for (const auto operation : { &Manager::detachWindow, &Manager::toggleReloadOnOpen, &Manager::toggleAlwaysOnTop,
                 &Manager::togglePrefersDetached, &Manager::toggleOpenInSystemBrowser, &Manager::editCustomIcon,
                 &Manager::togglePinnedStatus, &Manager::removeFromMenubar }) {
            auto row = rowCarrying(other);
            (*manager.*operation)(row);
            EXPECT_EQ(Alert::running(), &dialog.alert);
        }
        auto agentRow = rowCarrying(perchly::UserAgentChoice { other, "Mine" });
        manager->changeUserAgent(agentRow);
        auto sizeRow = rowCarrying(perchly::IconSizeChoice { other, 22 });
        manager->changeIconSize(sizeRow);
    });

    EXPECT_EQ(announcements, 0);
    EXPECT_EQ(storedLike(other), other);
    EXPECT_TRUE(delegate->opened.empty());
    EXPECT_TRUE(delegate->detached.empty());
    EXPECT_TRUE(delegate->levelled.empty());

    auto row = rowCarrying(other);
    manager->togglePinnedStatus(row);
    manager->statusItemClicked(*buttonOf(other));
    EXPECT_TRUE(storedLike(other).isPinned);
    EXPECT_THAT(delegate->opened, SizeIs(1));
}

TEST_F(CustomIconDialogTest, SavingABookmarkDeletedMeanwhileOnlyAnnounces)
{
    answer(save, [this](const Dialog&) { store().removeBookmark(bookmark.id); });

    EXPECT_TRUE(store().bookmarks().empty());
    EXPECT_EQ(announcements, 1);
}

} // namespace
