#include "platform/appkit/GridView.h"

#include "platform/appkit/Box.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/StackView.h"
#include "platform/appkit/TextField.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::Button;
using appkit::GridView;
using appkit::GridXPlacement;
using appkit::GridYPlacement;
using appkit::StackView;
using appkit::TextField;
using appkit::View;

/// A plain view of a size of its own.
std::shared_ptr<View> makeCell(foundation::Size size)
{
    // A stack asks for the size that it was made with.
    return std::make_shared<StackView>(appkit::LayoutOrientation::Vertical, foundation::Rect { {}, size });
}

/// Two columns and two rows, the cells of different sizes.
class GridViewTest : public ContentWindowTest {
protected:
    /// Shows the grid over the whole width of the content.
    void showGrid()
    {
        content().addSubview(grid);
        appkit::activateConstraints({
            grid->leadingAnchor().equalTo(content().leadingAnchor()),
            grid->trailingAnchor().equalTo(content().trailingAnchor()),
            grid->topAnchor().equalTo(content().topAnchor()),
        });
        showWindow(*grid);
        EXPECT_EQ(grid->frame().size.width, contentSize.width);
    }

    [[nodiscard]] static double top(const View& cell) { return cell.frame().origin.y + cell.frame().size.height; }

    std::shared_ptr<View> small = makeCell({ 30, 10 });
    std::shared_ptr<View> high = makeCell({ 50, 40 });
    std::shared_ptr<View> wide = makeCell({ 100, 20 });
    std::shared_ptr<View> plain = makeCell({ 60, 20 });
    std::shared_ptr<GridView> grid
        = std::make_shared<GridView>(std::vector<GridView::Row> { { small, high }, { wide, plain } });
};

TEST_F(GridViewTest, ColumnsAreAsWideAndRowsAsHighAsTheirLargestCell)
{
    grid->setRowSpacing(20);
    grid->setColumnSpacing(15);

    showGrid();

    EXPECT_EQ(small->frame().origin.x, 0);
    EXPECT_EQ(high->frame().origin.x, 115);
    EXPECT_EQ(plain->frame().origin.x, 115);
    EXPECT_EQ(top(*high) - top(*plain), 60);
    EXPECT_EQ(grid->frame().size.height, 80);
}

TEST_F(GridViewTest, CellsStandAtTheLeadingEdgeAndTheTopUnlessToldOtherwise)
{
    showGrid();
    EXPECT_EQ(top(*small), top(*high));

    grid->setXPlacement(GridXPlacement::Trailing);
    grid->setYPlacement(GridYPlacement::Center);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return small->frame().origin.x == 70; }));
    EXPECT_EQ(top(*high) - top(*small), 15);
}

TEST_F(GridViewTest, AColumnMayHaveAPlacementOfItsOwn)
{
    grid->setColumnXPlacement(0, GridXPlacement::Trailing);
    grid->setXPlacement(GridXPlacement::Leading);

    showGrid();

    EXPECT_EQ(small->frame().origin.x, 70);
    EXPECT_EQ(top(*wide), top(*plain));
}

TEST_F(GridViewTest, AColumnMayHaveAWidth)
{
    grid->setColumnWidth(0, 120);
    grid->setColumnXPlacement(0, GridXPlacement::Trailing);

    showGrid();

    EXPECT_EQ(wide->frame().origin.x, 20);
    EXPECT_EQ(high->frame().origin.x, 120);
}

TEST_F(GridViewTest, AMergedCellIsFilledAcrossAllColumns)
{
    const auto line = appkit::Box::separator();
    grid = std::make_shared<GridView>(
        std::vector<GridView::Row> { { small, high }, { line, nullptr }, { wide, plain } });
    grid->mergeCells(1);
    grid->setColumnXPlacement(0, GridXPlacement::Trailing);
    grid->setXPlacement(GridXPlacement::Leading);

    showGrid();

    EXPECT_EQ(line->frame().origin.x, 0);
    EXPECT_EQ(line->frame().size.width, contentSize.width);
    EXPECT_LE(line->frame().size.height, 2);
    EXPECT_GE(line->frame().size.height, 1);
    EXPECT_EQ(high->frame().origin.x, 100);
}

TEST_F(GridViewTest, ALabelStandsBesideTheFirstLineOfItsControls)
{
    const auto label = TextField::label("Web Cache:");
    const auto column = std::make_shared<StackView>(appkit::LayoutOrientation::Vertical);
    const auto button = Button::withTitle("Clear Cache", {});
    column->addArrangedSubview(button);
    column->addArrangedSubview(TextField::label("Deletes all of it."));
    grid = std::make_shared<GridView>(std::vector<GridView::Row> { { label, column } });

    showGrid();

    const auto middleOfLabel = label->frame().origin.y + label->frame().size.height / 2;
    const auto middleOfButton = column->frame().origin.y + button->frame().origin.y + button->frame().size.height / 2;
    EXPECT_NEAR(middleOfLabel, middleOfButton, 3);
}

} // namespace
