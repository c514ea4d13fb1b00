#include "StatusItemTest.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"

#include <optional>
#include <utility>
#include <vector>

namespace {

using appkit::Image;
using appkit::StatusBar;
using testbus::waitUntil;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

TEST_F(StatusItemTest, AnItemWithAMenuOpensItOnAnyClick)
{
    const FakeWatcher watcher;
    const auto item = makeItem(true);

    ASSERT_TRUE(appears(watcher));
    EXPECT_THAT(watcher.items().front(), EndsWith("/org/ayatana/NotificationItem/perchly"));
    EXPECT_EQ(property(watcher.items().front(), "ItemIsMenu"), "(<true>,)");
    EXPECT_EQ(property(watcher.items().front(), "Menu"), "(<objectpath '/MenuBar'>,)");
    const auto xml
        = print(target(watcher.items().front(), "org.freedesktop.DBus.Introspectable"), "Introspect", nullptr);
    EXPECT_THAT(xml, HasSubstr("ContextMenu"));
    EXPECT_THAT(xml, Not(HasSubstr("\"Activate\"")));
}

TEST_F(StatusItemTest, AnItemWithAMenuTakesAClickWhereTheDesktopKnowsNoOtherWay)
{
    g_setenv("XDG_CURRENT_DESKTOP", "LXQt", TRUE);
    const FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));
    g_unsetenv("XDG_CURRENT_DESKTOP");

    EXPECT_EQ(print(target(watcher.items().front(), itemInterface), "Activate", g_variant_new("(ii)", 3, 4)), "()");

    EXPECT_TRUE(waitUntil([&] { return clicks_->number() == 1; }));
}

TEST_F(StatusItemTest, AnItemWithoutAMenuSendsItsActionOnAClick)
{
    const FakeWatcher watcher;
    const auto item = makeItem(false);
    ASSERT_TRUE(appears(watcher));
    EXPECT_THAT(watcher.items().front(), EndsWith("/StatusNotifierItem"));
    EXPECT_EQ(property(watcher.items().front(), "ItemIsMenu"), "(<false>,)");

    for (const auto* method : { "ContextMenu", "Activate", "SecondaryActivate" })
        EXPECT_EQ(print(target(watcher.items().front(), itemInterface), method, g_variant_new("(ii)", 30, 12)), "()");

    EXPECT_TRUE(waitUntil([&] { return clicks_->number() == 2; }));
    testbus::settle(host_);
    EXPECT_EQ(clicks_->number(), 2);
    EXPECT_EQ(item->button()->native().lastClick, std::optional(std::pair(30, 12)));
}

TEST_F(StatusItemTest, AnActionKnowsWhetherTheItemItselfWasClicked)
{
    const FakeWatcher watcher;
    const auto item = makeItem(false);
    struct Observer {
        std::weak_ptr<appkit::StatusBarButton> button;
        std::vector<bool> seen {};
        void act() { seen.push_back(button.lock()->native().isBeingClicked); }
    };
    const auto observer = std::make_shared<Observer>(Observer { item->button() });
    item->button()->setAction({ "act", std::weak_ptr(observer), &Observer::act });
    ASSERT_TRUE(appears(watcher));
    auto menuObject = target(watcher.items().front(), "com.canonical.dbusmenu");
    menuObject.path = "/MenuBar";

    print(target(watcher.items().front(), itemInterface), "Activate", g_variant_new("(ii)", 30, 12));
    ASSERT_TRUE(waitUntil([&] { return observer->seen.size() == 1; }));
    print(menuObject, "Event", g_variant_new("(isvu)", 1, "clicked", g_variant_new_int32(0), 0U));
    ASSERT_TRUE(waitUntil([&] { return observer->seen.size() == 2; }));

    EXPECT_THAT(observer->seen, ElementsAre(true, false));
    EXPECT_FALSE(item->button()->native().isBeingClicked);
}

TEST_F(StatusItemTest, TheMenuOfAnItemWithoutOneHasARowForTheClick)
{
    const FakeWatcher watcher;
    const auto item = makeItem(false);
    ASSERT_TRUE(appears(watcher));
    auto menuObject = target(watcher.items().front(), "com.canonical.dbusmenu");
    menuObject.path = "/MenuBar";

    EXPECT_EQ(print(menuObject, "GetProperty", g_variant_new("(is)", 1, "label")), "(<'Open'>,)");
    EXPECT_EQ(print(menuObject, "Event", g_variant_new("(isvu)", 1, "clicked", g_variant_new_int32(0), 0U)), "()");

    EXPECT_TRUE(waitUntil([&] { return clicks_->number() == 1; }));
}

TEST_F(StatusItemTest, AllPropertiesComeAtOnceAndTypedWithThePicture)
{
    const FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));

    const auto all = testbus::call(host_, target(watcher.items().front(), "org.freedesktop.DBus.Properties"), "GetAll",
        g_variant_new("(s)", itemInterface));

    ASSERT_TRUE(all);
    const auto values = desktop::adoptVariant(g_variant_get_child_value(all.get(), 0));
    const std::pair<const char*, const char*> types[] = { { "Category", "s" }, { "Id", "s" }, { "Title", "s" },
        { "Status", "s" }, { "WindowId", "i" }, { "IconThemePath", "s" }, { "Menu", "o" }, { "ItemIsMenu", "b" },
        { "IconName", "s" }, { "IconPixmap", "a(iiay)" }, { "OverlayIconName", "s" },
        { "OverlayIconPixmap", "a(iiay)" }, { "AttentionIconName", "s" }, { "AttentionIconPixmap", "a(iiay)" },
        { "AttentionMovieName", "s" }, { "ToolTip", "(sa(iiay)ss)" }, { "XAyatanaLabel", "s" } };
    for (const auto& [name, type] : types) {
        auto* value = g_variant_lookup_value(values.get(), name, G_VARIANT_TYPE(type));
        ASSERT_NE(value, nullptr) << name;
        g_variant_unref(value);
    }
    const auto pixmaps
        = desktop::adoptVariant(g_variant_lookup_value(values.get(), "IconPixmap", G_VARIANT_TYPE("a(iiay)")));
    std::vector<int> sizes;
    for (gsize index = 0; index < g_variant_n_children(pixmaps.get()); ++index) {
        gint32 width = 0;
        gint32 height = 0;
        GVariant* pixels = nullptr;
        g_variant_get_child(pixmaps.get(), index, "(ii@ay)", &width, &height, &pixels);
        const auto owned = desktop::adoptVariant(pixels);
        EXPECT_EQ(width, height);
        EXPECT_EQ(g_variant_n_children(pixels), static_cast<gsize>(width * height * 4));
        sizes.push_back(width);
    }
    EXPECT_THAT(sizes, ElementsAre(16, 22, 24, 32, 48, 64));
}

TEST_F(StatusItemTest, ATemplateSymbolIsAlsoAnIconThatHostsRecolour)
{
    const FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));

    EXPECT_EQ(property(watcher.items().front(), "IconName"), "(<'perchly-star-symbolic'>,)");
    EXPECT_THAT(property(watcher.items().front(), "IconThemePath"), EndsWith("/icons'>,)"));
}

TEST_F(StatusItemTest, ATitleIsDrawnAndNoLabelRepeatsIt)
{
    const FakeWatcher watcher;
    const auto item = StatusBar::systemStatusBar().statusItem();
    item->button()->setTitle("YT");
    ASSERT_TRUE(appears(watcher));

    EXPECT_EQ(property(watcher.items().front(), "IconName"), "(<''>,)");
    EXPECT_EQ(property(watcher.items().front(), "XAyatanaLabel"), "(<''>,)");
    EXPECT_THAT(property(watcher.items().front(), "IconPixmap"), HasSubstr("(22, 22, ["));
}

TEST_F(StatusItemTest, TakesANewPictureWhileItBecomesAMenu)
{
    const FakeWatcher watcher;
    const auto item = makeItem(false);
    ASSERT_TRUE(appears(watcher));
    const auto isMenu = [&] {
        const auto& items = watcher.items();
        return items.size() == 1 && items.front().find("/org/ayatana/") != std::string::npos;
    };

    item->setMenu(menu("Quit"));
    item->button()->setImage(Image::systemSymbol("heart"));

    ASSERT_TRUE(waitUntil(isMenu));
    EXPECT_EQ(property(watcher.items().front(), "IconName"), "(<'perchly-heart-symbolic'>,)");
}

TEST_F(StatusItemTest, ANewMenuTakesThePlaceOfTheFormerOneOnTheSameItem)
{
    const FakeWatcher watcher;
    const auto item = makeItem(true);
    ASSERT_TRUE(appears(watcher));
    auto menuObject = target(watcher.items().front(), "com.canonical.dbusmenu");
    menuObject.path = "/MenuBar";
    ASSERT_EQ(print(menuObject, "GetProperty", g_variant_new("(is)", 1, "label")), "(<'Quit'>,)");

    item->setMenu(menu("Leave"));

    EXPECT_TRUE(waitUntil(
        [&] { return print(menuObject, "GetProperty", g_variant_new("(is)", 2, "label")) == "(<'Leave'>,)"; }));
    EXPECT_EQ(watcher.registrations(), 1);
}

TEST_F(StatusItemTest, AnItemThatGetsItsMenuLaterBecomesAMenu)
{
    const FakeWatcher watcher;
    const auto item = makeItem(false);
    ASSERT_TRUE(appears(watcher));

    item->setMenu(menu("Quit"));

    EXPECT_TRUE(waitUntil(
        [&] { return watcher.items().size() == 1 && watcher.items().front().ends_with("/NotificationItem/perchly"); }));
}

TEST_F(StatusItemTest, ARowWithAnActionAndASubmenuBeginsItsSubmenuWithOpen)
{
    const FakeWatcher watcher;
    const auto item = makeItem(true);
    const auto both = menu("Site");
    const auto submenu = menu("Open in System Browser");
    submenu->items().front()->setImage(Image::systemSymbol("safari"));
    both->items().front()->setSubmenu(submenu);
    item->setMenu(both);
    ASSERT_TRUE(appears(watcher));
    auto menuObject = target(watcher.items().front(), "com.canonical.dbusmenu");
    menuObject.path = "/MenuBar";

    EXPECT_EQ(print(menuObject, "GetProperty", g_variant_new("(is)", 2, "label")), "(<'Open'>,)");
    EXPECT_THAT(both->items().front()->submenu()->items(), SizeIs(1));
    for (const auto id : { 1, 2 })
        print(menuObject, "Event", g_variant_new("(isvu)", id, "clicked", g_variant_new_int32(0), 0U));
    EXPECT_TRUE(waitUntil([&] { return clicks_->number() == 2; }));
    // The picture of the other row is drawn once it was asked for.
    EXPECT_TRUE(
        waitUntil([&] { return print(menuObject, "GetProperty", g_variant_new("(is)", 3, "icon-data")) != "error"; }));
}

TEST(StatusImageTest, SymbolsAreFoundByRuleOrAlias)
{
    EXPECT_TRUE(Image::systemSymbol("lock.shield.fill"));
    EXPECT_TRUE(Image::systemSymbol("safari"));
    EXPECT_TRUE(Image::systemSymbol("safari")->isTemplate());
    EXPECT_TRUE(Image::imageNamed("AppStatusBarIcon"));
}

TEST(StatusImageTest, WhatIsNoSymbolGivesNone)
{
    for (const auto* name : { "", "YT", "🚀", "../icons/perchly-star-symbolic", "lock_shield", "no.such.symbol", "/" })
        EXPECT_FALSE(Image::systemSymbol(name)) << name;
    EXPECT_FALSE(Image::imageNamed("NoSuchAsset"));
}

} // namespace
