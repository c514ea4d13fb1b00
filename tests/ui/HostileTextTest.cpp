#include "platform/appkit/Menu.h"
#include "platform/appkit/StatusItem.h"
#include "statusbar/BookmarkDialog.h"
#include "statusbar/StatusBarController.h"
#include "ui/BookmarkListTest.h"

namespace {

using appkit::Alert;
using appkit::TextField;
using perchly::Bookmark;
using testing::ElementsAre;
using testing::SizeIs;

std::string repeated(std::string_view text, int count)
{
    std::string whole;
    for (auto index = 0; index < count; ++index)
        whole += text;
    return whole;
}

/// What a file or a page may give a bookmark for a title or an address.
std::vector<std::string> hostileTexts()
{
    return {
        "",
        " ",
        "one\ntwo\r\nthree",
        repeated("line\n", 200),
        "<b>&amp;</b> &lt;<a href='x'>link</a> <unfinished",
        "_mnemonic __two &Windows",
        "%s%n%d",
        "\u05D0\u05D1\u05D2 and \u0645\u0631\u062D\u0628\u0627",
        "\u202Egnp.exe\u202C\u2066\u2069",
        "e" + repeated("\u0301\u0323", 200),
        "👩‍👩‍👧‍👦🏴󠁧󠁢󠁳󠁣󠁴󠁿🇩🇪",
        "\uFEFF\u200B\u00AD",
        "tab\tbell\x07 escape\x1B[31m",
        repeated("wide ", 60),
    };
}

/// Bookmarks whose titles and addresses are not what a user types.
class HostileTextTest : public BookmarkListTest {
protected:
    [[nodiscard]] static std::vector<Bookmark> bookmarksOf(const std::vector<std::string>& texts)
    {
        std::vector<Bookmark> bookmarks;
        bookmarks.reserve(texts.size());
        for (const auto& text : texts)
            bookmarks.push_back(bookmarkNamed(text, text));
        return bookmarks;
    }

    /// In full; a failure shows only where it was.
    void expectShown(const std::vector<std::string>& texts) const
    {
        ASSERT_EQ(table().numberOfRows(), texts.size());
        for (std::size_t row = 0; row < texts.size(); ++row) {
            EXPECT_TRUE(textAt(titleColumn, row) == texts[row]) << row;
            EXPECT_TRUE(textAt(urlColumn, row) == texts[row]) << row;
        }
    }
};

TEST_F(HostileTextTest, CellsShowItAsItIs)
{
    removeAll();
    add(bookmarksOf(hostileTexts()));
    perchly::test::handlePendingEvents();

    expectShown(hostileTexts());
}

TEST_F(HostileTextTest, CellsShowAMegabyteAndTheListGoesOn)
{
    const std::vector<std::string> texts { std::string(1'000'000, 'x'), repeated("word ", 200'000),
        std::string(1'000'000, '\n'), std::string(1'000'000, '\0'), "last" };
    removeAll();
    add(bookmarksOf(texts));
    perchly::test::handlePendingEvents();

    expectShown(texts);
    search("last");
    EXPECT_THAT(shownTitles(), ElementsAre("last"));
    click(0, Pin);
    EXPECT_TRUE(store().bookmarks().back().isPinned);
    search("x");
    EXPECT_EQ(table().numberOfRows(), 1U);
}

TEST_F(HostileTextTest, CellsShowOneLineWhateverIsInIt)
{
    const std::vector<std::string> texts { "plain", "one\ntwo\r\nthree", "\n\n\nlate", "one\u2028two\u2029three" };
    removeAll();
    add(bookmarksOf(texts));

    const auto heightOf = [this](std::size_t row) {
        const auto cell = std::dynamic_pointer_cast<appkit::TableCellView>(table().viewAt(titleColumn, row, true));
        return cell->textField()->frame().size.height;
    };
    ASSERT_TRUE(perchly::test::waitUntil([&] { return heightOf(0) > 0 && heightOf(3) > 0; }));
    for (std::size_t row = 1; row < texts.size(); ++row)
        EXPECT_EQ(heightOf(row), heightOf(0)) << row;
}

TEST_F(HostileTextTest, TheQuestionBeforeADeletionShowsItAsItIs)
{
    const auto texts = hostileTexts();
    removeAll();
    add(bookmarksOf(texts));

    for (std::size_t row = 0; row < texts.size(); ++row) {
        clickAndAnswer(row, Delete, 1, [&](const Alert& alert) {
            EXPECT_EQ(alert.informativeText, "Are you sure you want to delete \"" + texts[row] + "\"?");
        });
    }
    EXPECT_THAT(store().bookmarks(), SizeIs(texts.size()));
}

TEST_F(HostileTextTest, TheMenuShowsItAsItIs)
{
    auto texts = hostileTexts();
    texts.emplace_back(1'000'000, 'x');
    removeAll();
    auto bookmarks = bookmarksOf(texts);
    for (auto& bookmark : bookmarks)
        bookmark.isPinned = true;
    const auto controller = perchly::StatusBarController::create();
    add(bookmarks);
    perchly::test::handlePendingEvents();

    const auto menu = controller->statusItem()->menu();
    constexpr std::size_t firstPinned = 4;
    ASSERT_EQ(menu->items().size(), firstPinned + texts.size() + 5);
    for (std::size_t index = 0; index < texts.size(); ++index)
        EXPECT_TRUE(menu->items()[firstPinned + index]->title() == texts[index]) << index;
}

TEST_F(HostileTextTest, TheDialogKeepsItButForBlanksAtItsEnds)
{
    for (const auto* text : { "one\ntwo\r\nthree", "<b>&amp;</b>", "_mnemonic", "%s%n", "\u05D0\u05D1\u05D2",
             "\u202Egnp.exe", "e\u0301\u0301\u0301", "tab\tbell\x07" }) {
        foundation::dispatchMainAsync([text] {
            ASSERT_NE(Alert::running(), nullptr);
            const auto& views = Alert::running()->accessoryView->subviews();
            EXPECT_EQ(std::dynamic_pointer_cast<TextField>(views.at(1))->stringValue(), text);
            EXPECT_EQ(std::dynamic_pointer_cast<TextField>(views.at(3))->stringValue(), text);
            Alert::running()->performClick(0);
        });
        const auto entered = perchly::askForBookmark(bookmarkNamed(text, text));
        ASSERT_TRUE(entered);
        EXPECT_EQ(entered->title, text);
        EXPECT_EQ(entered->url, text);
    }
}

TEST_F(HostileTextTest, TheDialogKeepsWhatEndsATextInC)
{
    const std::string text("before\0after", 12);
    foundation::dispatchMainAsync([&text] {
        ASSERT_NE(Alert::running(), nullptr);
        const auto& views = Alert::running()->accessoryView->subviews();
        EXPECT_EQ(std::dynamic_pointer_cast<TextField>(views.at(1))->stringValue(), text);
        std::dynamic_pointer_cast<TextField>(views.at(3))->setStringValue("typed.example");
        Alert::running()->performClick(0);
    });

    const auto entered = perchly::askForBookmark(bookmarkNamed(text, text));

    ASSERT_TRUE(entered);
    EXPECT_EQ(entered->title, text);
    EXPECT_EQ(entered->url, "typed.example");
}

} // namespace
