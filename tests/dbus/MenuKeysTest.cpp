#include "platform/linux/appkit/MenuKeys.h"
#include "platform/appkit/StatusBar.h"
#include "platform/appkit/StatusItem.h"
#include "platform/linux/appkit/StatusItemNative.h"

#include <gmock/gmock.h>

namespace {

using appkit::Action;
using appkit::Menu;
using appkit::MenuItem;
using appkit::MenuKey;
using testing::ElementsAre;
using testing::IsEmpty;

class MenuKeysTest : public testing::Test {
protected:
    struct Target {
        void act() { }
    };

    [[nodiscard]] Action action() const { return { "act", std::weak_ptr(target), &Target::act }; }

    /// The item that Control and the key choose.
    [[nodiscard]] std::shared_ptr<MenuItem> chosen(char32_t character, bool withShift = false) const
    {
        return appkit::itemForKey(menu, [&](const MenuKey& key) { return key == MenuKey { character, withShift }; });
    }

    std::shared_ptr<Target> target = std::make_shared<Target>();
    Menu menu;
};

TEST_F(MenuKeysTest, ControlStandsForCommand)
{
    const auto& quit = menu.addItem("Quit", action(), "q");

    EXPECT_EQ(chosen(U'q').get(), &quit);
    EXPECT_EQ(chosen(U'b'), nullptr);
}

TEST_F(MenuKeysTest, AnUpperCaseLetterAsksForShift)
{
    const auto& redo = menu.addItem("Redo", action(), "Z");

    EXPECT_EQ(chosen(U'z', true).get(), &redo);
    EXPECT_EQ(chosen(U'z'), nullptr);
}

TEST_F(MenuKeysTest, ASignHasAKeyToo)
{
    const auto& settings = menu.addItem("Settings...", action(), ",");

    EXPECT_EQ(chosen(U',').get(), &settings);
}

TEST_F(MenuKeysTest, OnlyAnItemThatCanBeChosenIs)
{
    menu.addItem("Off", action(), "q").setEnabled(false);
    menu.addSeparator();
    menu.addItem("Nothing", {}, "q");
    EXPECT_EQ(chosen(U'q'), nullptr);

    const auto& on = menu.addItem("On", action(), "q");

    EXPECT_EQ(chosen(U'q').get(), &on);
}

TEST_F(MenuKeysTest, WhatIsForTheFirstResponderIsLeftToTheWidgets)
{
    menu.addItem("Copy", Action("copy:"), "c");

    EXPECT_EQ(chosen(U'c'), nullptr);
}

TEST_F(MenuKeysTest, SubmenusAreSearchedUnlessTheyCannotBeOpened)
{
    const auto submenu = std::make_shared<Menu>();
    const auto& inside = submenu->addItem("Inside", action(), "i");
    auto& parent = menu.addItem("More", {});
    parent.setSubmenu(submenu);
    EXPECT_EQ(chosen(U'i').get(), &inside);

    parent.setEnabled(false);

    EXPECT_EQ(chosen(U'i'), nullptr);
}

TEST_F(MenuKeysTest, TheMenusOfStatusItemsCountWhileTheyAreAttached)
{
    EXPECT_THAT(appkit::StatusItem::Native::attachedMenus(), IsEmpty());
    auto item = appkit::StatusBar::systemStatusBar().statusItem();
    const auto without = appkit::StatusBar::systemStatusBar().statusItem();
    const auto attached = std::make_shared<Menu>();
    item->setMenu(attached);
    EXPECT_THAT(appkit::StatusItem::Native::attachedMenus(), ElementsAre(attached));

    item.reset();

    EXPECT_THAT(appkit::StatusItem::Native::attachedMenus(), IsEmpty());
}

} // namespace
