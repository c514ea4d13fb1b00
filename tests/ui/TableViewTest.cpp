#include "ui/TableTest.h"

namespace {

using TableViewTest = TableTest;

constexpr auto columns = 2;

TEST_F(TableViewTest, OnlyRowsInSightHaveViews)
{
    show();

    EXPECT_LE(rows->made, 12 * columns);
    EXPECT_EQ(table->numberOfRows(), 10000U);
    EXPECT_EQ(viewOf(20), nullptr);
}

TEST_F(TableViewTest, TallerRowsAreFewer)
{
    rows->height = 100;

    show();

    EXPECT_LE(rows->made, 4 * columns);
}

TEST_F(TableViewTest, AnEmptyTableAsksForNoViews)
{
    rows->count = 0;
    table->reloadData();
    window->makeKeyAndOrderFront();

    ASSERT_TRUE(perchly::test::waitUntil([this] { return window->isKeyWindow(); }));

    EXPECT_EQ(rows->asked, 0);
    EXPECT_EQ(table->numberOfRows(), 0U);
    EXPECT_EQ(table->viewAt(0, 0, true), nullptr);
    table->scrollRowToVisible(0);
    table->selectRow(0);
    EXPECT_EQ(table->selectedRow(), std::nullopt);
}

TEST_F(TableViewTest, ViewsOfRowsThatLeaveAreUsedAgain)
{
    show();

    for (std::size_t row = 100; row < 10000; row += 900) {
        table->scrollRowToVisible(row);
        ASSERT_TRUE(isShown(row));
        EXPECT_EQ(textOf(row), "Row " + std::to_string(row));
    }

    EXPECT_LE(rows->made, 14 * columns);
    EXPECT_TRUE(isOutOfSight(0));
}

TEST_F(TableViewTest, TheLastOfAHundredThousandRowsCanBeSeen)
{
    rows->count = 100000;
    show();

    table->scrollRowToVisible(99999);

    ASSERT_TRUE(isShown(99999));
    EXPECT_EQ(textOf(99999), "Row 99999");
    EXPECT_LE(rows->made, 14 * columns);
}

TEST_F(TableViewTest, AReloadKeepsTheViewsWhereTheyAre)
{
    show();
    const auto first = viewOf(0);
    const auto fifth = viewOf(5);
    const auto madeBefore = rows->made;

    rows->prefix = "Other ";
    table->reloadData();

    ASSERT_TRUE(isShown(5));
    EXPECT_EQ(viewOf(0), first);
    EXPECT_EQ(viewOf(5), fifth);
    EXPECT_EQ(textOf(5), "Other 5");
    EXPECT_EQ(rows->made, madeBefore);
}

TEST_F(TableViewTest, RowsThatAreNoMoreHaveNoViews)
{
    show();
    const auto fifth = viewOf(5);

    rows->count = 3;
    table->reloadData();

    EXPECT_TRUE(isOutOfSight(5));
    EXPECT_EQ(table->rowForView(*fifth), std::nullopt);
    EXPECT_EQ(table->numberOfRows(), 3U);
    EXPECT_EQ(table->viewAt(0, 3, true), nullptr);
}

TEST_F(TableViewTest, RowsThatComeBackUseTheirViewsAgain)
{
    show();
    const auto madeBefore = rows->made;
    rows->count = 3;
    table->reloadData();
    ASSERT_TRUE(isOutOfSight(5));

    rows->count = 10000;
    table->reloadData();

    ASSERT_TRUE(isShown(5));
    EXPECT_EQ(rows->made, madeBefore);
}

TEST_F(TableViewTest, TheRowsAreCountedAtAReloadAlone)
{
    show();

    rows->count = 3;
    EXPECT_EQ(table->numberOfRows(), 10000U);
    table->reloadData();

    EXPECT_EQ(table->numberOfRows(), 3U);
}

TEST_F(TableViewTest, KnowsTheRowOfWhatIsInACell)
{
    show();
    const auto button = buttonOf(4);
    const appkit::View stranger;

    EXPECT_EQ(table->rowForView(*button), 4U);
    EXPECT_EQ(table->rowForView(*viewOf(4)), 4U);
    EXPECT_EQ(table->rowForView(stranger), std::nullopt);
    EXPECT_EQ(table->rowForView(*table), std::nullopt);
    EXPECT_EQ(table->rowForView(*scrollView), std::nullopt);
}

TEST_F(TableViewTest, AViewOutOfSightIsMadeForWhoNeedsIt)
{
    show();

    ASSERT_EQ(table->viewAt(0, 5000, false), nullptr);
    const auto made = table->viewAt(0, 5000, true);

    ASSERT_NE(made, nullptr);
    EXPECT_EQ(table->rowForView(*made), 5000U);
    EXPECT_EQ(table->rowForView(*buttonOf(5000)), 5000U);
    EXPECT_EQ(table->viewAt(0, 10000, true), nullptr);
    EXPECT_EQ(table->viewAt(2, 0, true), nullptr);
}

TEST_F(TableViewTest, ATableOnNoScreenMakesViewsOnDemandToo)
{
    table->reloadData();

    buttonOf(7)->performClick();

    EXPECT_EQ(rows->pressedRows, (std::vector<std::optional<std::size_t>> { 7 }));
}

TEST_F(TableViewTest, AnActionMayReplaceTheButtonThatSendsIt)
{
    rows->replacesButtons = true;
    show();
    std::weak_ptr<appkit::Button> clicked = buttonOf(2);
    rows->whenPressed = [this] { table->reloadData(); };

    clicked.lock()->performClick();

    EXPECT_EQ(rows->pressedRows, (std::vector<std::optional<std::size_t>> { 2 }));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return clicked.expired(); }));
    EXPECT_EQ(table->rowForView(*buttonOf(2)), 2U);
}

TEST_F(TableViewTest, AnActionMayRemoveItsRow)
{
    rows->replacesButtons = true;
    show();
    const auto button = buttonOf(2);
    rows->whenPressed = [this] {
        rows->count = 1;
        table->reloadData();
    };

    button->performClick();

    EXPECT_EQ(table->numberOfRows(), 1U);
    EXPECT_EQ(table->rowForView(*button), std::nullopt);
}

TEST_F(TableViewTest, WhoIsAskedForViewsMayReloadAndScroll)
{
    auto isFirst = true;
    rows->whenAsked = [&] {
        if (!std::exchange(isFirst, false))
            return;
        rows->prefix = "Other ";
        table->reloadData();
        table->scrollRowToVisible(500);
    };

    table->reloadData();
    window->makeKeyAndOrderFront();

    EXPECT_TRUE(perchly::test::waitUntil([this] {
        const auto top = table->viewAt(0, 0, false);
        const auto scrolled = table->viewAt(0, 500, false);
        return top || scrolled;
    }));
    EXPECT_EQ(table->numberOfRows(), 10000U);
}

TEST_F(TableViewTest, OneRowAtMostIsSelected)
{
    show();

    table->selectRow(3);
    table->selectRow(5);
    EXPECT_EQ(table->selectedRow(), 5U);

    table->selectRow(std::nullopt);
    EXPECT_EQ(table->selectedRow(), std::nullopt);
}

TEST_F(TableViewTest, NothingIsSelectedAfterAReload)
{
    show();
    table->selectRow(3);

    table->reloadData();

    EXPECT_EQ(table->selectedRow(), std::nullopt);
}

TEST_F(TableViewTest, ASelectedRowMayBeOutOfSight)
{
    show();

    table->selectRow(5000);

    EXPECT_EQ(table->selectedRow(), 5000U);
    EXPECT_EQ(viewOf(5000), nullptr);
}

TEST_F(TableViewTest, AViewIsHandedOutOnce)
{
    show();
    rows->count = 0;
    table->reloadData();

    const auto one = table->makeView("text");
    const auto other = table->makeView("text");

    ASSERT_NE(one, nullptr);
    EXPECT_NE(one, other);
    EXPECT_EQ(table->makeView("nobody's"), nullptr);
}

TEST_F(TableViewTest, WithoutADataSourceItIsEmpty)
{
    show();

    rows.reset();
    table->reloadData();

    EXPECT_EQ(table->numberOfRows(), 0U);
    EXPECT_TRUE(isOutOfSight(0));
}

TEST_F(TableViewTest, NobodyIsAskedWhenTheDelegateHasGone)
{
    show();

    rows.reset();
    table->scrollRowToVisible(5000);

    EXPECT_TRUE(isOutOfSight(0));
    EXPECT_EQ(viewOf(5000), nullptr);
}

TEST_F(TableViewTest, LeavesItsScrollViewWithItsViews)
{
    show();
    std::weak_ptr<appkit::View> cell = viewOf(0);

    scrollView->setDocumentView(nullptr);
    std::weak_ptr<appkit::TableView> leaving = table;
    table.reset();

    EXPECT_TRUE(leaving.expired());
    EXPECT_TRUE(cell.expired());
}

} // namespace
