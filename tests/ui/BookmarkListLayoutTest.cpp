#include "ui/BookmarkListTest.h"

#include "platform/appkit/ScrollView.h"

namespace {

using appkit::TableCellView;
using appkit::View;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::SizeIs;

using BookmarkListLayoutTest = BookmarkListTest;

/// Where a view's upper edge is, from below as all places are.
double topOf(const View& view)
{
    return view.frame().origin.y + view.frame().size.height;
}

double trailingEdgeOf(const View& view)
{
    return view.frame().origin.x + view.frame().size.width;
}

TEST_F(BookmarkListLayoutTest, IsMadeAt950By500)
{
    EXPECT_EQ(list->preferredContentSize(), (foundation::Size { 950, 500 }));
    EXPECT_EQ(list->view()->frame().size, (foundation::Size { 950, 500 }));
}

TEST_F(BookmarkListLayoutTest, HasASearchFieldAndThreeButtonsAlongTheTop)
{
    const auto& field = *list->searchField();
    const auto& importing = *list->importButton();
    const auto& exporting = *list->exportButton();
    const auto& adding = *list->addButton();

    for (const View* view : std::initializer_list<const View*> { &field, &importing, &exporting, &adding })
        EXPECT_EQ(topOf(*view), 500 - 16);
    EXPECT_EQ(field.frame().origin.x, 16);
    EXPECT_EQ(trailingEdgeOf(field), importing.frame().origin.x - 8);
    EXPECT_EQ(importing.frame().size.width, 80);
    EXPECT_EQ(trailingEdgeOf(importing), exporting.frame().origin.x - 8);
    EXPECT_EQ(exporting.frame().size.width, 80);
    EXPECT_EQ(trailingEdgeOf(exporting), adding.frame().origin.x - 8);
    EXPECT_GE(adding.frame().size.width, 120) << "its title may need more";
    EXPECT_EQ(trailingEdgeOf(adding), 950 - 16);
}

TEST_F(BookmarkListLayoutTest, HasTheTableBelow)
{
    const auto scrollView = std::dynamic_pointer_cast<appkit::ScrollView>(list->view()->subviews().back());
    ASSERT_NE(scrollView, nullptr);

    EXPECT_EQ(scrollView->documentView(), list->tableView());
    EXPECT_EQ(topOf(*scrollView), list->searchField()->frame().origin.y - 16);
    EXPECT_EQ(scrollView->frame().origin, (foundation::Point { 16, 16 }));
    EXPECT_EQ(trailingEdgeOf(*scrollView), 950 - 16);
}

TEST_F(BookmarkListLayoutTest, FollowsTheWindowsSize)
{
    window->setContentSize({ 1100, 620 });
    const auto scrollView = list->view()->subviews().back();

    EXPECT_TRUE(perchly::test::waitUntil([&] {
        return trailingEdgeOf(*list->addButton()) == 1100 - 16 && trailingEdgeOf(*scrollView) == 1100 - 16
            && topOf(*list->searchField()) == 620 - 16 && scrollView->frame().origin.y == 16;
    }));
}

TEST_F(BookmarkListLayoutTest, NamesAndExplainsItsControls)
{
    EXPECT_EQ(list->searchField()->placeholderString(), "Search bookmarks...");
    EXPECT_EQ(list->searchField()->action().name(), "searchFieldChanged:");
    EXPECT_EQ(list->addButton()->title(), "+ New Bookmark");
    EXPECT_EQ(list->addButton()->toolTip(), "");
    EXPECT_EQ(list->addButton()->action().name(), "addButtonClicked:");
    EXPECT_EQ(list->importButton()->title(), "Import");
    EXPECT_EQ(list->importButton()->toolTip(), "Import bookmarks from a JSON file");
    EXPECT_EQ(list->importButton()->action().name(), "importButtonClicked:");
    EXPECT_EQ(list->exportButton()->title(), "Export");
    EXPECT_EQ(list->exportButton()->toolTip(), "Export all bookmarks to a JSON file");
    EXPECT_EQ(list->exportButton()->action().name(), "exportButtonClicked:");
}

TEST_F(BookmarkListLayoutTest, HasThreeColumns)
{
    using appkit::TableColumn;
    const auto column = [](const char* identifier, const char* title, double width) {
        return AllOf(Field(&TableColumn::identifier, identifier), Field(&TableColumn::title, title),
            Field(&TableColumn::width, width));
    };

    EXPECT_THAT(table().tableColumns(),
        ElementsAre(column("title", "Title", 180), column("url", "URL", 280), column("actions", "Actions", 280)));
    EXPECT_EQ(table().delegate(), list);
    EXPECT_EQ(table().dataSource(), list);
    EXPECT_EQ(table().doubleAction().name(), "tableViewDoubleClick:");
}

TEST_F(BookmarkListLayoutTest, ItsRowsAre32High)
{
    for (std::size_t row = 0; row < 5; ++row)
        EXPECT_EQ(list->heightOfRow(table(), row), 32);
}

TEST_F(BookmarkListLayoutTest, TextsKeepFivePointsFromTheSidesOfTheirCells)
{
    for (const auto column : { titleColumn, urlColumn }) {
        const auto cell = std::dynamic_pointer_cast<TableCellView>(table().viewAt(column, 0, false));
        ASSERT_NE(cell, nullptr);
        const auto& label = *cell->textField();
        EXPECT_TRUE(perchly::test::waitUntil([&] { return label.frame().origin.x == 5; }));
        EXPECT_EQ(trailingEdgeOf(label), cell->frame().size.width - 5);
        EXPECT_NEAR(label.frame().origin.y + topOf(label), cell->frame().size.height, 1);
    }
}

TEST_F(BookmarkListLayoutTest, TheButtonsOfARowStandSideBySide)
{
    const auto strip = table().viewAt(actionsColumn, 0, false);
    ASSERT_NE(strip, nullptr);
    const auto buttons = buttonsIn(*strip);
    ASSERT_THAT(buttons, SizeIs(8));

    auto leading = 2.0;
    for (const auto& button : buttons) {
        EXPECT_TRUE(perchly::test::waitUntil([&] { return button->frame().size.width == 32; }));
        EXPECT_EQ(button->frame().origin.x, leading);
        EXPECT_NEAR(button->frame().origin.y + topOf(*button), strip->frame().size.height, 1);
        leading += 32 + 4;
    }
    EXPECT_EQ(trailingEdgeOf(*buttons.back()), 286);
}

} // namespace
