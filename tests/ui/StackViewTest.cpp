#include "platform/appkit/StackView.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/LayoutConstraint.h"
#include "platform/appkit/TextField.h"
#include "ui/ContentWindow.h"

namespace {

using appkit::LayoutOrientation;
using appkit::StackAlignment;
using appkit::StackView;
using appkit::View;

/// A column or row of plain views in a window.
class StackViewTest : public ContentWindowTest {
protected:
    static constexpr foundation::Size size { 40, 20 };

    /// Adds one of that size.
    std::shared_ptr<View> add(foundation::Size itsSize = size) const
    {
        auto view = std::make_shared<View>();
        stack->addArrangedSubview(view);
        appkit::activateConstraints({
            view->widthAnchor().equalToConstant(itsSize.width),
            view->heightAnchor().equalToConstant(itsSize.height),
        });
        return view;
    }

    /// Shows the stack at its own size in the content's leading top corner.
    void showStack() { showAtTop(stack); }

    /// Of a column.
    [[nodiscard]] double roomBetween(const View& upper, const View& lower) const
    {
        return upper.frame().origin.y - lower.frame().origin.y - lower.frame().size.height;
    }

    std::shared_ptr<StackView> stack = std::make_shared<StackView>(LayoutOrientation::Vertical);
};

TEST_F(StackViewTest, PutsViewsBelowEachOtherWithTheSpacing)
{
    stack->setSpacing(8);
    const auto first = add();
    const auto second = add();
    const auto third = add();

    showStack();

    EXPECT_EQ(roomBetween(*first, *second), 8);
    EXPECT_EQ(roomBetween(*second, *third), 8);
    EXPECT_EQ(stack->frame().size, (foundation::Size { 40, 76 }));
}

TEST_F(StackViewTest, PutsViewsBesideEachOther)
{
    stack = std::make_shared<StackView>(LayoutOrientation::Horizontal);
    stack->setSpacing(8);
    stack->setAlignment(StackAlignment::CenterY);
    const auto first = add({ 40, 30 });
    const auto second = add();

    showStack();

    EXPECT_EQ(second->frame(), (foundation::Rect { { 48, 5 }, { 40, 20 } }));
    EXPECT_EQ(first->frame(), (foundation::Rect { { 0, 0 }, { 40, 30 } }));
}

TEST_F(StackViewTest, ACustomSpacingStandsInPlaceOfTheUsualOne)
{
    const auto first = add();
    const auto second = add();
    const auto third = add();
    stack->setCustomSpacing(3, *second);
    stack->setCustomSpacing(25, *first);

    stack->setSpacing(10);
    showStack();

    EXPECT_EQ(roomBetween(*first, *second), 25);
    EXPECT_EQ(roomBetween(*second, *third), 3);
}

TEST_F(StackViewTest, ACustomSpacingAfterTheLastViewTakesNoRoom)
{
    add();
    stack->setCustomSpacing(25, *add());

    showStack();

    EXPECT_EQ(stack->frame().size.height, 40);
}

TEST_F(StackViewTest, AHiddenViewTakesNoRoomUntilItIsShown)
{
    stack->setSpacing(8);
    const auto first = add();
    const auto hidden = add();
    hidden->setHidden(true);
    stack->setCustomSpacing(25, *hidden);
    const auto third = add();
    showStack();
    EXPECT_EQ(roomBetween(*first, *third), 8);

    hidden->setHidden(false);

    EXPECT_TRUE(perchly::test::waitUntil([&] { return roomBetween(*hidden, *third) == 25; }));
    EXPECT_EQ(roomBetween(*first, *hidden), 8);
    EXPECT_EQ(stack->frame().size.height, 60 + 8 + 25);
}

TEST_F(StackViewTest, ARemovedViewTakesNoRoom)
{
    stack->setSpacing(8);
    const auto first = add();
    const auto second = add();
    const auto third = add();
    showStack();

    second->removeFromSuperview();

    EXPECT_THAT(stack->subviews(), testing::ElementsAre(first, third));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return roomBetween(*first, *third) == 8; }));
}

TEST_F(StackViewTest, AlignsViewsAtTheirLeadingEdgesOrCentres)
{
    add({ 100, 20 });
    const auto leading = add();
    stack->setAlignment(StackAlignment::CenterX);
    const auto centred = add();

    showStack();

    EXPECT_EQ(leading->frame().origin.x, 0);
    EXPECT_EQ(centred->frame().origin.x, 30);
}

TEST_F(StackViewTest, TheInsetsAreInsideOfItsFrame)
{
    stack = std::make_shared<StackView>(LayoutOrientation::Vertical, foundation::Rect { {}, { 350, 300 } });
    stack->setEdgeInsets({ .top = 1, .left = 10, .bottom = 20, .right = 10 });
    const auto view = add({ 330, 20 });

    showStack();

    EXPECT_TRUE(perchly::test::waitUntil([&] {
        return view->frame() == foundation::Rect { { 10, 279 }, { 330, 20 } };
    }));
    EXPECT_EQ(stack->frame().size, (foundation::Size { 350, 300 }));
}

TEST_F(StackViewTest, AStackMayBeInAnother)
{
    stack->setSpacing(20);
    const auto row = std::make_shared<StackView>(LayoutOrientation::Horizontal);
    row->setSpacing(8);
    for (const auto* title : { "Save", "Clear" })
        row->addArrangedSubview(appkit::Button::withTitle(title, {}));
    row->addArrangedSubview(appkit::TextField::label("Note"));
    stack->addArrangedSubview(row);
    const auto below = add();

    showStack();

    EXPECT_EQ(roomBetween(*row, *below), 20);
    const auto& parts = row->subviews();
    for (std::size_t index = 1; index < parts.size(); ++index) {
        const auto before = parts[index - 1]->frame();
        EXPECT_EQ(parts[index]->frame().origin.x, before.origin.x + before.size.width + 8);
    }
}

} // namespace
