#include "platform/linux/statusarea/MenuTree.h"

#include <gmock/gmock.h>

#include <memory>

// Only told apart here, never drawn.
class desktop::Picture { };

namespace {

using desktop::MenuProperty;
using desktop::MenuRow;
using desktop::MenuRowChange;
using desktop::MenuTree;
using testing::ElementsAre;
using testing::IsEmpty;

MenuRow row(std::string key)
{
    MenuRow row;
    row.key = key;
    row.label = std::move(key);
    return row;
}

MenuRow separator()
{
    MenuRow row;
    row.kind = MenuRow::Kind::Separator;
    return row;
}

MenuRow submenu(std::string key, std::vector<MenuRow> children)
{
    auto parent = row(std::move(key));
    parent.opensSubmenu = true;
    parent.children = std::move(children);
    return parent;
}

const std::vector<std::int32_t>& childrenOf(const MenuTree& tree, std::int32_t id)
{
    return tree.find(id)->children;
}

const std::vector<std::int32_t>& rootRows(const MenuTree& tree)
{
    return childrenOf(tree, MenuTree::rootId);
}

TEST(MenuTreeTest, ANewTreeIsAnEmptySubmenu)
{
    const MenuTree tree;

    ASSERT_NE(tree.find(MenuTree::rootId), nullptr);
    EXPECT_TRUE(tree.find(MenuTree::rootId)->row.opensSubmenu);
    EXPECT_THAT(rootRows(tree), IsEmpty());
    EXPECT_EQ(tree.revision(), 1U);
}

TEST(MenuTreeTest, RowsGetIdsInTheirOrder)
{
    MenuTree tree;

    const auto change = tree.replace({ row("open"), separator(), row("quit") });

    EXPECT_TRUE(change.layout);
    EXPECT_THAT(change.rows, IsEmpty());
    EXPECT_EQ(tree.revision(), 2U);
    EXPECT_THAT(rootRows(tree), ElementsAre(1, 2, 3));
    EXPECT_EQ(tree.find(3)->row.label, "quit");
    EXPECT_EQ(tree.find(4), nullptr);
}

TEST(MenuTreeTest, TheSameRowsAgainChangeNothing)
{
    MenuTree tree;
    tree.replace({ row("open"), submenu("site", { row("browser") }) });

    const auto change = tree.replace({ row("open"), submenu("site", { row("browser") }) });

    EXPECT_FALSE(change.layout);
    EXPECT_THAT(change.rows, IsEmpty());
    EXPECT_EQ(tree.revision(), 2U);
}

TEST(MenuTreeTest, ARowThatStaysKeepsItsIdAndANewOneGetsAFreshOne)
{
    MenuTree tree;
    tree.replace({ row("open"), row("about"), row("quit") });

    const auto change = tree.replace({ row("open"), row("settings"), row("quit") });

    EXPECT_TRUE(change.layout);
    EXPECT_THAT(rootRows(tree), ElementsAre(1, 4, 3));
    EXPECT_EQ(tree.find(2), nullptr);
}

TEST(MenuTreeTest, AnIdIsNeverUsedForAnotherRow)
{
    MenuTree tree;
    tree.replace({ row("one") });
    tree.replace({ row("two") });

    tree.replace({ row("one") });

    EXPECT_THAT(rootRows(tree), ElementsAre(3));
}

TEST(MenuTreeTest, ARemovedRowIsAChangeOfLayout)
{
    MenuTree tree;
    tree.replace({ row("open"), row("quit") });

    const auto change = tree.replace({ row("quit") });

    EXPECT_TRUE(change.layout);
    EXPECT_THAT(rootRows(tree), ElementsAre(2));
}

TEST(MenuTreeTest, AnotherOrderIsAChangeOfLayoutWithTheSameIds)
{
    MenuTree tree;
    tree.replace({ row("open"), row("quit") });

    const auto change = tree.replace({ row("quit"), row("open") });

    EXPECT_TRUE(change.layout);
    EXPECT_EQ(tree.revision(), 3U);
    EXPECT_THAT(rootRows(tree), ElementsAre(2, 1));
}

TEST(MenuTreeTest, EqualRowsAreToldApartByTheirOrder)
{
    MenuTree tree;
    tree.replace({ separator(), row("site"), separator(), row("site") });

    tree.replace({ separator(), row("site"), separator() });

    EXPECT_THAT(rootRows(tree), ElementsAre(1, 2, 3));
}

TEST(MenuTreeTest, AnotherKindIsAnotherRow)
{
    MenuTree tree;
    auto blank = row("");
    tree.replace({ blank });

    blank.kind = MenuRow::Kind::Separator;
    tree.replace({ blank });

    EXPECT_THAT(rootRows(tree), ElementsAre(2));
}

TEST(MenuTreeTest, AnotherToggleTypeIsAnotherRow)
{
    MenuTree tree;
    auto option = row("option");
    tree.replace({ option });

    option.toggle = MenuRow::Toggle::Checkmark;
    tree.replace({ option });

    EXPECT_THAT(rootRows(tree), ElementsAre(2));
}

TEST(MenuTreeTest, ARowThatGetsASubmenuIsAnotherRow)
{
    MenuTree tree;
    tree.replace({ row("site") });

    tree.replace({ submenu("site", {}) });

    EXPECT_THAT(rootRows(tree), ElementsAre(2));
}

TEST(MenuTreeTest, AChangeInASubmenuKeepsTheRowsAroundIt)
{
    MenuTree tree;
    tree.replace({ submenu("site", { row("browser") }), row("quit") });
    const auto site = rootRows(tree).front();
    const auto browser = childrenOf(tree, site).front();

    const auto change = tree.replace({ submenu("site", { row("browser"), row("window") }), row("quit") });

    EXPECT_TRUE(change.layout);
    EXPECT_EQ(rootRows(tree).front(), site);
    ASSERT_EQ(childrenOf(tree, site).size(), 2U);
    EXPECT_EQ(childrenOf(tree, site).front(), browser);
}

TEST(MenuTreeTest, RowsOfOneSubmenuDoNotMoveToAnother)
{
    MenuTree tree;
    tree.replace({ submenu("one", { row("browser") }), submenu("two", {}) });
    const auto browser = childrenOf(tree, rootRows(tree).front()).front();

    tree.replace({ submenu("one", {}), submenu("two", { row("browser") }) });

    EXPECT_EQ(tree.find(browser), nullptr);
    EXPECT_EQ(childrenOf(tree, rootRows(tree).back()).size(), 1U);
}

TEST(MenuTreeTest, EveryPropertyThatChangesIsNamed)
{
    MenuTree tree;
    auto option = row("option");
    option.toggle = MenuRow::Toggle::Checkmark;
    tree.replace({ option });

    option.label = "Option";
    option.enabled = false;
    option.visible = false;
    option.isOn = true;
    option.shortcut = "o";
    option.icon = std::make_shared<desktop::Picture>();
    const auto change = tree.replace({ option });

    EXPECT_FALSE(change.layout);
    EXPECT_EQ(tree.revision(), 2U);
    EXPECT_THAT(change.rows,
        ElementsAre(MenuRowChange { 1,
            { MenuProperty::Label, MenuProperty::Enabled, MenuProperty::Visible, MenuProperty::ToggleState,
                MenuProperty::Shortcut, MenuProperty::Icon } }));
    EXPECT_EQ(tree.find(1)->row.label, "Option");
}

TEST(MenuTreeTest, OnlyTheRowThatChangedIsNamed)
{
    MenuTree tree;
    tree.replace({ row("open"), submenu("site", { row("browser") }) });

    auto disabled = row("browser");
    disabled.enabled = false;
    const auto change = tree.replace({ row("open"), submenu("site", { disabled }) });

    const auto browser = childrenOf(tree, rootRows(tree).back()).front();
    EXPECT_THAT(change.rows, ElementsAre(MenuRowChange { browser, { MenuProperty::Enabled } }));
}

TEST(MenuTreeTest, RowsAreFoundByThePictureTheyShow)
{
    MenuTree tree;
    const auto picture = std::make_shared<desktop::Picture>();
    auto shown = row("browser");
    shown.icon = picture;
    tree.replace({ row("open"), submenu("one", { shown }), submenu("two", { shown }) });

    const auto ids = tree.rowsShowing(*picture);

    EXPECT_THAT(ids, ElementsAre(childrenOf(tree, 2).front(), childrenOf(tree, rootRows(tree).back()).front()));
    EXPECT_THAT(tree.rowsShowing(desktop::Picture {}), IsEmpty());
}

class MenuTreeActionTest : public testing::Test {
protected:
    MenuRow acting(std::string key)
    {
        auto acting = row(key);
        acting.activate = [this, key] { performed_.push_back(key); };
        return acting;
    }

    void perform(std::int32_t id)
    {
        if (const auto action = tree_.actionOf(id))
            action();
    }

    MenuTree tree_;
    std::vector<std::string> performed_;
};

TEST_F(MenuTreeActionTest, ChoosingARowActs)
{
    tree_.replace({ acting("open"), acting("quit") });

    perform(2);

    EXPECT_THAT(performed_, ElementsAre("quit"));
}

TEST_F(MenuTreeActionTest, ADisabledRowDoesNotAct)
{
    auto disabled = acting("open");
    disabled.enabled = false;
    tree_.replace({ disabled });

    EXPECT_FALSE(tree_.actionOf(1));
}

TEST_F(MenuTreeActionTest, NeitherDoARowWithoutActionAndAnUnknownId)
{
    tree_.replace({ row("title") });

    EXPECT_FALSE(tree_.actionOf(1));
    EXPECT_FALSE(tree_.actionOf(99));
}

TEST_F(MenuTreeActionTest, AHostThatStillShowsTheFormerMenuCanChooseFromIt)
{
    tree_.replace({ submenu("site", { acting("browser") }) });
    const auto browser = childrenOf(tree_, 1).empty() ? 0 : childrenOf(tree_, 1).front();
    tree_.replace({ acting("open") });

    perform(browser);

    EXPECT_THAT(performed_, ElementsAre("browser"));
}

TEST_F(MenuTreeActionTest, AFormerRowIsForgottenWithTheNextChangeOfLayoutOnly)
{
    auto changing = acting("quit");
    tree_.replace({ acting("open"), changing });
    tree_.replace({ changing });
    changing.enabled = false;

    tree_.replace({ changing });
    EXPECT_TRUE(tree_.actionOf(1));

    tree_.replace({ changing, acting("about") });
    EXPECT_FALSE(tree_.actionOf(1));
}

TEST_F(MenuTreeActionTest, ARowThatStaysActsAsItsLatestVersion)
{
    tree_.replace({ acting("open") });
    auto newer = row("open");
    newer.activate = [this] { performed_.push_back("newer"); };
    tree_.replace({ newer });

    perform(1);

    EXPECT_THAT(performed_, ElementsAre("newer"));
}

} // namespace
