#include "ui/BookmarkDialogTest.h"

#include "bookmarks/UserAgents.h"

namespace {

using appkit::ControlState;
using appkit::TextField;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

TEST_F(BookmarkDialogTest, SaysWhatItAsksForWhenAdding)
{
    add(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.alert.messageText, "Add New Bookmark");
        EXPECT_EQ(dialog.alert.informativeText, "Enter details below:");
        EXPECT_THAT(dialog.alert.buttonTitles, ElementsAre("Add", "Cancel"));
    });
}

TEST_F(BookmarkDialogTest, SaysWhatItAsksForWhenEditing)
{
    edit(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.alert.messageText, "Edit Bookmark");
        EXPECT_EQ(dialog.alert.informativeText, "Enter details below:");
        EXPECT_THAT(dialog.alert.buttonTitles, ElementsAre("Save", "Cancel"));
    });
}

TEST_F(BookmarkDialogTest, NamesItsFieldsAndSaysWhatTheyMayHold)
{
    add(cancel, [](const Dialog& dialog) {
        const auto label = [&](std::size_t index) {
            return std::dynamic_pointer_cast<TextField>(dialog.views[index])->stringValue();
        };
        EXPECT_EQ(label(0), "Title:");
        EXPECT_EQ(label(2), "URL:");
        EXPECT_EQ(label(4), "Custom Icon: Emoji(🚀), SF Symbol(safari), or Text (WB):");
        EXPECT_EQ(label(6), "OR Custom Icon URL (PNG/JPG):");
        EXPECT_EQ(label(8), "Icon Size in Menubar:");
        EXPECT_EQ(label(10), "Browser Agent:");
        EXPECT_EQ(dialog.title.placeholderString(), "Title (e.g. Google)");
        EXPECT_EQ(dialog.address.placeholderString(), "URL (example.com)");
        EXPECT_EQ(dialog.symbol.placeholderString(), "e.g. 🚀, 🔥, safari, terminal, YT, FB");
        EXPECT_THAT(dialog.iconAddress.placeholderString(), StartsWith("https://"));
        EXPECT_THAT(dialog.iconAddress.placeholderString(), EndsWith("/icon.png"));
        EXPECT_EQ(dialog.customAgentField.placeholderString(), "Enter custom User Agent string");
        EXPECT_EQ(dialog.openInSystemBrowser.title(), "Open in System Default Browser");
        EXPECT_FALSE(dialog.openInSystemBrowser.action());
        EXPECT_THAT(dialog.agent.itemTitles(),
            ElementsAre("System Default (Safari 18.0)", "Safari 17.5", "Chrome (macOS)", "Firefox (macOS)",
                "iPad (Safari)", "iPhone (Safari)", "Custom..."));
        EXPECT_EQ(dialog.agent.action().name(), "invoke");
        EXPECT_THAT(
            dialog.size.itemTitles(), ElementsAre("Small (13)", "Medium (15)", "Large (18)", "Extra Large (22)"));
    });
}

TEST_F(BookmarkDialogTest, HasFieldsOfOneWidthOneBelowTheOther)
{
    bookmark.userAgent = "Mine/1.0";
    edit(cancel, [](const Dialog& dialog) {
        const appkit::View* fields[]
            = { &dialog.title, &dialog.address, &dialog.symbol, &dialog.iconAddress, &dialog.customAgentField };
        for (const auto* field : fields) {
            EXPECT_TRUE(perchly::test::waitUntil([&] { return field->frame().size.width == 330; }));
            EXPECT_GE(field->frame().size.height, 24);
        }
        EXPECT_EQ(dialog.alert.accessoryView->frame().size.width, 350);
        for (std::size_t index = 0; index < dialog.views.size(); ++index)
            EXPECT_EQ(dialog.views[index]->frame().origin.x, 10) << index;
        for (std::size_t index = 1; index < dialog.views.size(); ++index) {
            const auto& above = dialog.views[index - 1]->frame();
            const auto& below = dialog.views[index]->frame();
            EXPECT_EQ(below.origin.y + below.size.height + 8, above.origin.y) << index;
        }
    });
}

TEST_F(BookmarkDialogTest, BeginsEmptyWhenAdding)
{
    add(cancel, [](const Dialog& dialog) {
        for (const auto* field :
            { &dialog.title, &dialog.address, &dialog.symbol, &dialog.iconAddress, &dialog.customAgentField })
            EXPECT_EQ(field->stringValue(), "");
        EXPECT_EQ(dialog.size.indexOfSelectedItem(), 1U);
        EXPECT_EQ(dialog.agent.indexOfSelectedItem(), systemDefaultAgent);
        EXPECT_TRUE(dialog.customAgentField.isHidden());
        EXPECT_EQ(dialog.openInSystemBrowser.state(), ControlState::Off);
    });
}

TEST_F(BookmarkDialogTest, BeginsWithWhatTheBookmarkHas)
{
    bookmark.sfSymbolName = "safari";
    bookmark.iconURL = "https://icons.example/a.png";
    bookmark.menubarIconSize = 18;
    bookmark.openInSystemBrowser = true;
    bookmark.userAgent = perchly::agents::chrome;

    edit(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.title.stringValue(), "Mail");
        EXPECT_EQ(dialog.address.stringValue(), "mail.example");
        EXPECT_EQ(dialog.symbol.stringValue(), "safari");
        EXPECT_EQ(dialog.iconAddress.stringValue(), "https://icons.example/a.png");
        EXPECT_EQ(dialog.size.indexOfSelectedItem(), 2U);
        EXPECT_EQ(dialog.agent.indexOfSelectedItem(), chromeAgent);
        EXPECT_TRUE(dialog.customAgentField.isHidden());
        EXPECT_EQ(dialog.openInSystemBrowser.state(), ControlState::On);
    });
}

TEST_F(BookmarkDialogTest, BeginsWithEmptyFieldsForWhatTheBookmarkLacks)
{
    edit(cancel, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.symbol.stringValue(), "");
        EXPECT_EQ(dialog.iconAddress.stringValue(), "");
        EXPECT_EQ(dialog.size.indexOfSelectedItem(), 1U);
        EXPECT_EQ(dialog.agent.indexOfSelectedItem(), systemDefaultAgent);
        EXPECT_EQ(dialog.openInSystemBrowser.state(), ControlState::Off);
    });
}

TEST_F(BookmarkDialogTest, PreselectsTheSizeThatTheBookmarkHasAndTheFirstForAnother)
{
    const std::pair<double, std::size_t> rows[] = { { 13, 0 }, { 13.05, 0 }, { 15, 1 }, { 14.95, 1 }, { 18, 2 },
        { 22, 3 }, { 22.05, 3 }, { 16, 0 }, { 15.2, 0 }, { 20, 0 }, { 0, 0 }, { -1, 0 }, { 1e300, 0 } };
    for (const auto& [size, row] : rows) {
        bookmark.menubarIconSize = size;
        edit(cancel, [&, wanted = row](const Dialog& dialog) {
            EXPECT_EQ(dialog.size.indexOfSelectedItem(), wanted) << *bookmark.menubarIconSize;
        });
    }
}

TEST_F(BookmarkDialogTest, SavedUnchangedASizeInBetweenBecomesTheFirst)
{
    bookmark.menubarIconSize = 16;
    store().updateBookmark(bookmark);

    edit(save, [](const Dialog& dialog) { EXPECT_EQ(dialog.size.titleOfSelectedItem(), "Small (13)"); });

    EXPECT_EQ(stored().menubarIconSize, 13);
}

TEST_F(BookmarkDialogTest, PreselectsTheAgentThatTheBookmarkHas)
{
    const std::string_view agents[] = { perchly::agents::safari17, perchly::agents::chrome, perchly::agents::firefox,
        perchly::agents::iPad, perchly::agents::iPhone };
    for (std::size_t index = 0; index < std::size(agents); ++index) {
        bookmark.userAgent = agents[index];
        edit(cancel, [&](const Dialog& dialog) {
            EXPECT_EQ(dialog.agent.indexOfSelectedItem(), index + 1);
            EXPECT_TRUE(dialog.customAgentField.isHidden());
            EXPECT_EQ(dialog.customAgentField.stringValue(), "");
        });
    }
}

TEST_F(BookmarkDialogTest, ShowsAnUnknownAgentAsACustomOneAndKeepsIt)
{
    for (const std::string agent : { "Mine/1.0", "Safari 17.5", "Custom...", "a" }) {
        bookmark.userAgent = agent;
        edit(save, [&](const Dialog& dialog) {
            EXPECT_EQ(dialog.agent.titleOfSelectedItem(), "Custom...");
            EXPECT_FALSE(dialog.customAgentField.isHidden());
            EXPECT_EQ(dialog.customAgentField.stringValue(), agent);
        });
        EXPECT_EQ(stored().userAgent, agent);
    }
}

TEST_F(BookmarkDialogTest, ShowsAnEmptyAgentAsACustomOneAndStoresNone)
{
    bookmark.userAgent = "";

    edit(save, [](const Dialog& dialog) {
        EXPECT_EQ(dialog.agent.titleOfSelectedItem(), "Custom...");
        EXPECT_FALSE(dialog.customAgentField.isHidden());
    });

    EXPECT_EQ(stored().userAgent, std::nullopt);
}

TEST_F(BookmarkDialogTest, ShowsTheFieldForACustomAgentOnlyWhileItCounts)
{
    add(cancel, [](const Dialog& dialog) {
        EXPECT_TRUE(dialog.customAgentField.isHidden());
        dialog.chooseAgent(customAgent);
        EXPECT_FALSE(dialog.customAgentField.isHidden());
        dialog.chooseAgent(chromeAgent);
        EXPECT_TRUE(dialog.customAgentField.isHidden());
        dialog.chooseAgent(customAgent);
        EXPECT_FALSE(dialog.customAgentField.isHidden());
        dialog.chooseAgent(systemDefaultAgent);
        EXPECT_TRUE(dialog.customAgentField.isHidden());
    });
}

} // namespace
