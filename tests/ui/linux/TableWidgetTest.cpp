#include "platform/linux/table/TableWidget.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/linux/ScreenPointer.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/TableTest.h"

#include <cstdlib>
#include <string_view>

namespace {

using perchly::test::middleOf;
using perchly::test::ScreenPointer;
using perchly::test::toolkitFunction;
using perchly::test::waitUntil;
using Rows = std::vector<std::optional<std::size_t>>;

void runTool(const std::string& arguments)
{
    auto status = 0;
    const auto command = "xdotool " + arguments;
    if (!g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, &status, nullptr) || status != 0)
        std::abort();
}

int countWidgets(GtkWidget* widget)
{
    auto count = 1;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child))
        count += countWidgets(child);
    return count;
}

/// The user's hands on a table.
class TableWidgetTest : public TableTest {
protected:
    void type(const std::string& keys) const
    {
        (void)window;
        runTool("key " + keys);
    }

    /// Until the keyboard's work is seen, which takes its time.
    [[nodiscard]] bool isSelected(std::optional<std::size_t> row) const
    {
        return waitUntil([&] { return table->selectedRow() == row; });
    }

    void clickAt(desktop::PixelPoint place, int times = 1)
    {
        ASSERT_TRUE(pointer.moveTo(place));
        runTool("click --repeat " + std::to_string(times) + " --delay 40 1");
    }

    [[nodiscard]] desktop::PixelPoint cornerOfTable() const
    {
        const auto middle = middleOf(*table);
        return { middle.x - gtk_widget_get_width(widgetOf(*table)) / 2,
            middle.y - gtk_widget_get_height(widgetOf(*table)) / 2 };
    }

    [[nodiscard]] GtkWidget* focus() const { return gtk_root_get_focus(gtk_widget_get_root(widgetOf(*table))); }

    [[nodiscard]] std::optional<std::size_t> focusedRow() const
    {
        const auto* row = desktop::tableOf(widgetOf(*table)).rows().holding(focus());
        return row && row->widget.get() == focus() ? row->index : std::nullopt;
    }

    [[nodiscard]] bool isFocused(const appkit::View& view) const
    {
        return waitUntil([&] { return focus() == widgetOf(view); });
    }

    [[nodiscard]] GtkWidget* rowWidget(std::size_t row) const
    {
        return desktop::tableOf(widgetOf(*table)).rows().find(row)->widget.get();
    }

    ScreenPointer pointer;
};

TEST_F(TableWidgetTest, AClickSelectsTheRow)
{
    show();

    clickAt(middleOf(*viewOf(3)));

    EXPECT_TRUE(isSelected(3));
    EXPECT_TRUE(gtk_widget_get_state_flags(rowWidget(3)) & GTK_STATE_FLAG_SELECTED);
    EXPECT_FALSE(gtk_widget_get_state_flags(rowWidget(2)) & GTK_STATE_FLAG_SELECTED);
    EXPECT_TRUE(rows->doubleClickedRows.empty());
}

TEST_F(TableWidgetTest, AClickOnAButtonSelectsNothing)
{
    show();

    clickAt(middleOf(*buttonOf(3)), 2);

    ASSERT_TRUE(waitUntil([&] { return rows->pressedRows.size() == 2; }));
    EXPECT_EQ(rows->pressedRows, (Rows { 3, 3 }));
    EXPECT_EQ(table->selectedRow(), std::nullopt);
    EXPECT_TRUE(rows->doubleClickedRows.empty());
}

TEST_F(TableWidgetTest, ADoubleClickSendsTheDoubleAction)
{
    show();

    clickAt(middleOf(*viewOf(3)), 2);

    EXPECT_TRUE(waitUntil([&] { return rows->doubleClickedRows == Rows { 3 }; }));
}

TEST_F(TableWidgetTest, ADoubleClickBelowTheRowsHasNoRow)
{
    rows->count = 2;
    show();
    table->selectRow(1);
    const auto corner = cornerOfTable();

    clickAt({ corner.x + 100, corner.y + 250 }, 2);

    EXPECT_TRUE(waitUntil([&] { return rows->doubleClickedRows == Rows { std::nullopt }; }));
}

TEST_F(TableWidgetTest, ADoubleClickOnTheTitlesHasNoRow)
{
    show();
    table->selectRow(1);
    const auto corner = cornerOfTable();

    clickAt({ corner.x + 100, corner.y + 8 }, 2);

    EXPECT_TRUE(waitUntil([&] { return rows->doubleClickedRows == Rows { std::nullopt }; }));
}

TEST_F(TableWidgetTest, AClickBelowTheRowsSelectsNone)
{
    rows->count = 2;
    show();
    table->selectRow(1);
    const auto corner = cornerOfTable();

    clickAt({ corner.x + 100, corner.y + 250 });

    EXPECT_TRUE(isSelected(std::nullopt));
}

TEST_F(TableWidgetTest, TheWheelScrolls)
{
    show();
    const auto widgets = countWidgets(widgetOf(*table));
    ASSERT_TRUE(pointer.moveTo(middleOf(*viewOf(3))));

    runTool("click --repeat 30 --delay 5 5");

    EXPECT_TRUE(isOutOfSight(0));
    EXPECT_TRUE(isShown(30));
    EXPECT_LE(countWidgets(widgetOf(*table)), widgets * 5 / 4);
}

TEST_F(TableWidgetTest, KeysMoveTheSelection)
{
    show();
    clickAt(middleOf(*viewOf(0)));
    ASSERT_TRUE(isSelected(0));

    type("Down Down");
    EXPECT_TRUE(isSelected(2));
    type("Up");
    EXPECT_TRUE(isSelected(1));
    type("End");
    EXPECT_TRUE(isSelected(9999));
    EXPECT_TRUE(isShown(9999));
    type("Page_Up");
    EXPECT_TRUE(waitUntil([&] { return *table->selectedRow() < 9999 && *table->selectedRow() > 9980; }));
    type("Home");
    EXPECT_TRUE(isSelected(0));
    EXPECT_TRUE(isShown(0));
    type("Up Page_Up");
    type("Page_Down");
    EXPECT_TRUE(waitUntil([&] { return *table->selectedRow() > 3 && *table->selectedRow() < 12; }));
    EXPECT_EQ(focusedRow(), table->selectedRow());
}

TEST_F(TableWidgetTest, ReturnSendsTheDoubleAction)
{
    show();
    clickAt(middleOf(*viewOf(2)));
    ASSERT_TRUE(isSelected(2));

    type("Down Return");

    EXPECT_TRUE(waitUntil([&] { return rows->doubleClickedRows == Rows { 3 }; }));
}

TEST_F(TableWidgetTest, LettersAreNobodysAndChangeNothing)
{
    show();
    clickAt(middleOf(*viewOf(2)));
    ASSERT_TRUE(isSelected(2));
    const auto widgets = countWidgets(widgetOf(*table));

    type("r o w Down");

    EXPECT_TRUE(isSelected(3));
    EXPECT_EQ(countWidgets(widgetOf(*table)), widgets);
}

TEST_F(TableWidgetTest, TabGoesFromTheRowToItsButtonAndOut)
{
    show();
    clickAt(middleOf(*viewOf(2)));
    ASSERT_TRUE(waitUntil([&] { return focusedRow() == 2U; }));
    const auto button = buttonOf(2);

    type("Tab");
    EXPECT_TRUE(isFocused(*button));
    type("shift+Tab");
    EXPECT_TRUE(waitUntil([&] { return focusedRow() == 2U; }));
    type("Right");
    EXPECT_TRUE(isFocused(*button));
    type("space");
    EXPECT_TRUE(waitUntil([&] { return rows->pressedRows == Rows { 2 }; }));
    EXPECT_TRUE(rows->doubleClickedRows.empty());
}

TEST_F(TableWidgetTest, KeysKeepTheKeyboardAtTheSameButton)
{
    show();
    gtk_widget_grab_focus(widgetOf(*buttonOf(2)));

    type("Down");

    EXPECT_TRUE(isFocused(*buttonOf(3)));
    EXPECT_TRUE(isSelected(3));
}

TEST_F(TableWidgetTest, TheKeyboardStaysAtAButtonThatIsReplaced)
{
    rows->replacesButtons = true;
    show();
    rows->whenPressed = [this] { table->reloadData(); };
    const auto button = buttonOf(2);
    gtk_widget_grab_focus(widgetOf(*button));

    type("space");

    ASSERT_TRUE(waitUntil([&] { return rows->pressedRows == Rows { 2 }; }));
    EXPECT_NE(buttonOf(2), button);
    EXPECT_TRUE(isFocused(*buttonOf(2)));
}

TEST_F(TableWidgetTest, AClickMayReplaceItsButton)
{
    rows->replacesButtons = true;
    show();
    std::weak_ptr<appkit::Button> clicked = buttonOf(2);
    rows->whenPressed = [this] { table->reloadData(); };

    clickAt(middleOf(*clicked.lock()), 2);

    EXPECT_TRUE(waitUntil([&] { return !rows->pressedRows.empty() && clicked.expired(); }));
    EXPECT_EQ(rows->pressedRows.front(), 2U);
}

TEST_F(TableWidgetTest, AReloadTakesTheKeyboardFromNobodyElse)
{
    show();
    const auto field = std::make_shared<appkit::TextField>();
    content->view()->addSubview(field);
    rows->replacesButtons = true;
    gtk_widget_grab_focus(widgetOf(*field));
    ASSERT_TRUE(waitUntil([&] { return gtk_widget_is_ancestor(focus(), widgetOf(*field)); }));

    table->reloadData();
    table->reloadData();

    EXPECT_TRUE(gtk_widget_is_ancestor(focus(), widgetOf(*field)));
}

TEST_F(TableWidgetTest, TheKeyboardWaitsForItsRowToComeBack)
{
    show();
    gtk_widget_grab_focus(widgetOf(*buttonOf(0)));

    table->scrollRowToVisible(500);
    ASSERT_TRUE(isShown(500));
    EXPECT_EQ(focus(), widgetOf(*table));
    type("Down");

    EXPECT_TRUE(isSelected(1));
    EXPECT_TRUE(isShown(1));
    EXPECT_EQ(focusedRow(), 1U);
}

TEST_F(TableWidgetTest, WidgetsAreNoMoreThanRowsInSightNeed)
{
    show();
    const auto widgets = countWidgets(widgetOf(*table));

    for (std::size_t row = 50; row < 10000; row += 333) {
        table->scrollRowToVisible(row);
        ASSERT_TRUE(isShown(row));
    }

    EXPECT_LE(countWidgets(widgetOf(*table)), widgets * 5 / 4);
}

TEST_F(TableWidgetTest, TextsTakeTheRoomThatIsLeft)
{
    show();

    const auto text = viewOf(0)->frame();

    // The column of buttons is 100 wide, behind it there is a little room.
    EXPECT_GT(text.size.width, 450);
    EXPECT_LT(text.size.width, 500);
}

TEST_F(TableWidgetTest, FillsItsRowsFromTheTrailingSideWhereTextRunsFromTheRight)
{
    const auto setDirection = toolkitFunction<void (*)(GtkTextDirection)>("gtk_widget_set_default_direction");
    ASSERT_NE(setDirection, nullptr);
    setDirection(GTK_TEXT_DIR_RTL);
    show();
    const auto corner = cornerOfTable();

    EXPECT_GT(middleOf(*viewOf(0)).x, corner.x + 300);
    EXPECT_LT(middleOf(*buttonOf(0)).x, corner.x + 150);
    setDirection(GTK_TEXT_DIR_LTR);
}

/// What screen readers are told.
class TableAccessibilityTest : public TableWidgetTest {
protected:
    static void SetUpTestSuite() { g_setenv("GTK_A11Y", "test", TRUE); }

    [[nodiscard]] static bool hasRole(GtkWidget* widget, GtkAccessibleRole role)
    {
        const auto check
            = toolkitFunction<gboolean (*)(GtkAccessible*, GtkAccessibleRole)>("gtk_test_accessible_has_role");
        return check(GTK_ACCESSIBLE(widget), role);
    }

    [[nodiscard]] static bool hasLabel(GtkWidget* widget, const char* label)
    {
        const auto check = toolkitFunction<char* (*)(GtkAccessible*, GtkAccessibleProperty, ...)>(
            "gtk_test_accessible_check_property");
        const desktop::GLibPointer<> difference(check(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, label));
        return !difference;
    }

    [[nodiscard]] static bool hasRelation(GtkWidget* widget, GtkAccessibleRelation relation, int value)
    {
        const auto check = toolkitFunction<char* (*)(GtkAccessible*, GtkAccessibleRelation, ...)>(
            "gtk_test_accessible_check_relation");
        const desktop::GLibPointer<> difference(check(GTK_ACCESSIBLE(widget), relation, value));
        return !difference;
    }
};

TEST_F(TableAccessibilityTest, ItIsAGridOfRowsAndCells)
{
    show();
    auto* grid = widgetOf(*table);
    auto* header = gtk_widget_get_first_child(grid);

    EXPECT_TRUE(hasRole(grid, GTK_ACCESSIBLE_ROLE_GRID));
    EXPECT_TRUE(hasRole(rowWidget(0), GTK_ACCESSIBLE_ROLE_ROW));
    EXPECT_TRUE(hasRole(gtk_widget_get_first_child(rowWidget(0)), GTK_ACCESSIBLE_ROLE_GRID_CELL));
    EXPECT_TRUE(hasRole(gtk_widget_get_first_child(header), GTK_ACCESSIBLE_ROLE_COLUMN_HEADER));
    EXPECT_TRUE(hasLabel(gtk_widget_get_first_child(header), "Text"));
    EXPECT_TRUE(hasRelation(grid, GTK_ACCESSIBLE_RELATION_ROW_COUNT, 10000));
    EXPECT_TRUE(hasRelation(grid, GTK_ACCESSIBLE_RELATION_COL_COUNT, 2));
    EXPECT_TRUE(hasRelation(rowWidget(3), GTK_ACCESSIBLE_RELATION_ROW_INDEX, 4));
}

TEST_F(TableAccessibilityTest, ARowIsCalledByItsTexts)
{
    show();
    EXPECT_TRUE(hasLabel(rowWidget(3), "Row 3"));
    auto* cell = gtk_widget_get_first_child(rowWidget(3));
    EXPECT_TRUE(hasLabel(cell, "Row 3"));
    EXPECT_TRUE(hasLabel(gtk_widget_get_next_sibling(cell), "Button"));

    rows->prefix = "Other ";
    table->reloadData();

    EXPECT_TRUE(hasLabel(rowWidget(3), "Other 3"));
}

} // namespace
