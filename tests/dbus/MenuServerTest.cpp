#include "platform/linux/statusarea/MenuServer.h"
#include "FakeHosts.h"
#include "platform/linux/statusarea/MenuInterface.h"

#include <gmock/gmock.h>

namespace {

using desktop::MenuRow;
using testing::ElementsAre;

MenuRow row(std::string key)
{
    MenuRow row;
    row.key = key;
    row.label = std::move(key);
    return row;
}

MenuRow submenu(std::string key, std::vector<MenuRow> children)
{
    auto parent = row(std::move(key));
    parent.opensSubmenu = true;
    parent.children = std::move(children);
    return parent;
}

std::string print(const desktop::VariantPointer& value)
{
    return value ? desktop::GLibPointer<>(g_variant_print(value.get(), FALSE)).get() : "error";
}

class MenuServerTest : public testing::Test {
protected:
    static constexpr const char* path = "/MenuBar";

    void TearDown() override { g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr); }

    std::shared_ptr<desktop::MenuServer> serve()
    {
        return desktop::MenuServer::create(connection_.get(), path,
            { [this] {
                 ++asked_;
                 return rows_;
             },
                [this] { ++opened_; } });
    }

    MenuRow acting(const std::string& key)
    {
        auto acting = row(key);
        acting.activate = [this, key] { performed_.push_back(key); };
        return acting;
    }

    [[nodiscard]] std::string service() const { return testbus::nameOf(connection_); }

    testbus::Connection connection_ = testbus::connect();
    std::vector<MenuRow> rows_ { row("Open"), row("Quit") };
    int asked_ = 0;
    int opened_ = 0;
    std::vector<std::string> performed_;
};

template <class Host>
class EveryHostTest : public MenuServerTest {
};

using Hosts = testing::Types<GtkHost, PlasmaHost, GnomeHost>;
TYPED_TEST_SUITE(EveryHostTest, Hosts);

TYPED_TEST(EveryHostTest, ShowsAChangeThatIsFoundWhenTheMenuOpens)
{
    const auto server = this->serve();
    TypeParam host(this->service(), this->path);
    this->rows_ = { row("Open"), row("Settings"), row("Quit") };

    host.openMenu();

    EXPECT_THAT(host.labels(), ElementsAre("Open", "Settings", "Quit"));
    EXPECT_EQ(this->opened_, 1);
}

TYPED_TEST(EveryHostTest, ShowsAChangeThatWasPushedBeforeTheMenuOpens)
{
    const auto server = this->serve();
    TypeParam host(this->service(), this->path);
    this->rows_ = { row("Quit") };
    server->rowsChanged();
    host.settle();

    host.openMenu();

    EXPECT_THAT(host.labels(), ElementsAre("Quit"));
}

TYPED_TEST(EveryHostTest, MissesNoChangeAfterOneThatWasFoundOnOpening)
{
    const auto server = this->serve();
    TypeParam host(this->service(), this->path);
    this->rows_ = { row("One") };
    host.openMenu();
    this->rows_ = { row("Two") };
    server->rowsChanged();
    host.settle();

    host.openMenu();

    EXPECT_THAT(host.labels(), ElementsAre("Two"));
}

TYPED_TEST(EveryHostTest, IsToldNothingWhenNothingHasChanged)
{
    const auto server = this->serve();
    TypeParam host(this->service(), this->path);

    server->rowsChanged();
    host.openMenu();

    EXPECT_THAT(host.labels(), ElementsAre("Open", "Quit"));
    EXPECT_EQ(std::ranges::count(host.traffic(), "LayoutUpdated"), 0);
}

TYPED_TEST(EveryHostTest, MayChooseFromTheMenuThatHasJustChanged)
{
    this->rows_ = { this->acting("Open"), this->acting("Quit") };
    const auto server = this->serve();
    TypeParam host(this->service(), this->path);
    const auto stale = host.idOf("Open");
    this->rows_ = { this->acting("Quit") };
    server->rowsChanged();
    host.settle();

    host.call("Event", g_variant_new("(isvu)", stale, "clicked", g_variant_new_int32(0), 0U));

    EXPECT_TRUE(testbus::waitUntil([this] { return !this->performed_.empty(); }));
    EXPECT_THAT(this->performed_, ElementsAre("Open"));
}

TEST_F(MenuServerTest, TheReplyComesBeforeTheOneSignalOfTheSameChange)
{
    const auto server = serve();
    PlasmaHost host(service(), path);
    rows_ = { row("Quit") };

    host.openMenu();

    EXPECT_THAT(host.traffic(), ElementsAre("reply", "LayoutUpdated"));
}

TEST_F(MenuServerTest, ManyChangesInOneTurnMakeOneSignal)
{
    const auto server = serve();
    PlasmaHost host(service(), path);
    for (const auto* title : { "One", "Two", "Three" }) {
        rows_ = { row(title) };
        server->rowsChanged();
    }

    host.settle();

    EXPECT_THAT(host.traffic(), ElementsAre("LayoutUpdated"));
    EXPECT_THAT(host.labels(), ElementsAre("Three"));
}

TEST_F(MenuServerTest, AChangeOfPropertiesAloneIsToldWithoutANewLayout)
{
    const auto server = serve();
    PlasmaHost host(service(), path);
    rows_.front().enabled = false;

    server->rowsChanged();
    host.settle();

    EXPECT_THAT(host.traffic(), ElementsAre("ItemsPropertiesUpdated"));
    EXPECT_EQ(print(host.call("GetProperty", g_variant_new("(is)", host.idOf("Open"), "enabled"))), "(<false>,)");
}

TEST_F(MenuServerTest, OpeningASubmenuChangesNothing)
{
    rows_ = { submenu("Site", { row("Browser") }) };
    const auto server = serve();
    PlasmaHost host(service(), path);
    rows_.push_back(row("Quit"));
    const auto askedBefore = asked_;

    EXPECT_EQ(print(host.call("AboutToShow", g_variant_new("(i)", 1))), "(false,)");
    EXPECT_EQ(asked_, askedBefore);
}

TEST_F(MenuServerTest, RowsAreMadeForTheFirstHostThatAsks)
{
    const auto server = serve();
    server->rowsChanged();
    testbus::settle(connection_);
    ASSERT_EQ(asked_, 0);

    PlasmaHost host(service(), path);

    EXPECT_THAT(host.labels(), ElementsAre("Open", "Quit"));
    EXPECT_EQ(asked_, 1);
    host.openMenu();
    EXPECT_THAT(host.traffic(), ElementsAre("reply"));
}

TEST_F(MenuServerTest, AboutToShowGroupNamesWhatChangedAndWhatIsUnknown)
{
    const auto server = serve();
    PlasmaHost host(service(), path);
    rows_.push_back(row("About"));
    const std::vector<std::int32_t> ids { 0, 77 };

    auto* array = g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, ids.data(), ids.size(), sizeof(std::int32_t));
    const auto reply = host.call("AboutToShowGroup", g_variant_new("(@ai)", array));

    EXPECT_EQ(print(reply), "([0], [77])");
}

TEST_F(MenuServerTest, TheLayoutIsAsDeepAsAskedAndCarriesTheNamedPropertiesOnly)
{
    rows_ = { submenu("Site", { submenu("More", { row("Deep") }) }) };
    const auto server = serve();
    PlasmaHost host(service(), path);
    const auto layout = [&](int id, int depth) {
        const char* names[] = { "label" };
        return print(host.call("GetLayout", g_variant_new("(ii@as)", id, depth, g_variant_new_strv(names, 1))));
    };

    EXPECT_EQ(layout(0, 0), "(2, (0, {'label': <''>}, []))");
    EXPECT_EQ(layout(0, 1), "(2, (0, {'label': <''>}, [<(1, {'label': <'Site'>}, @av [])>]))");
    EXPECT_EQ(layout(1, -1),
        "(2, (1, {'label': <'Site'>}, [<(2, {'label': <'More'>}, [<(3, {'label': <'Deep'>}, @av [])>])>]))");
    EXPECT_EQ(layout(77, -1), "error");
}

TEST_F(MenuServerTest, ARowSaysAllThatItIs)
{
    auto option = row("Save_as");
    option.toggle = MenuRow::Toggle::Checkmark;
    option.isOn = true;
    MenuRow separator;
    separator.kind = MenuRow::Kind::Separator;
    rows_ = { option, separator, submenu("Site", {}) };
    const auto server = serve();
    PlasmaHost host(service(), path);
    const auto properties = [&](std::int32_t id) {
        auto* ids = g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, &id, 1, sizeof(id));
        auto* all = g_variant_new_strv(nullptr, 0);
        return print(host.call("GetGroupProperties", g_variant_new("(@ai@as)", ids, all)));
    };

    EXPECT_EQ(properties(1),
        "([(1, {'type': <'standard'>, 'label': <'Save__as'>, 'enabled': <true>, 'visible': <true>, "
        "'toggle-type': <'checkmark'>, 'toggle-state': <1>})],)");
    EXPECT_EQ(properties(2), "([(2, {'type': <'separator'>, 'enabled': <true>, 'visible': <true>})],)");
    EXPECT_EQ(properties(3),
        "([(3, {'type': <'standard'>, 'label': <'Site'>, 'enabled': <true>, 'visible': <true>, "
        "'toggle-state': <-1>, 'children-display': <'submenu'>})],)");
    EXPECT_EQ(properties(77), "([],)");
}

TEST_F(MenuServerTest, AskingForWhatIsNotThereIsAnError)
{
    const auto server = serve();
    PlasmaHost host(service(), path);

    EXPECT_EQ(print(host.call("GetProperty", g_variant_new("(is)", 77, "label"))), "error");
    EXPECT_EQ(print(host.call("GetProperty", g_variant_new("(is)", 1, "icon-data"))), "error");
}

TEST_F(MenuServerTest, TheMenuItselfHasItsProperties)
{
    const auto server = serve();
    const auto host = testbus::connect();

    const auto all = testbus::call(host, { service(), path, "org.freedesktop.DBus.Properties" }, "GetAll",
        g_variant_new("(s)", "com.canonical.dbusmenu"));

    EXPECT_EQ(print(all),
        "({'Version': <uint32 3>, 'TextDirection': <'ltr'>, 'Status': <'normal'>, 'IconThemePath': <@as []>},)");
}

TEST_F(MenuServerTest, AClickActsAfterItsReply)
{
    rows_ = { acting("Open") };
    const auto server = serve();
    PlasmaHost host(service(), path);

    host.call("Event", g_variant_new("(isvu)", 1, "hovered", g_variant_new_int32(0), 0U));
    host.call("Event", g_variant_new("(isvu)", 1, "clicked", g_variant_new_int32(0), 0U));

    EXPECT_TRUE(testbus::waitUntil([this] { return !performed_.empty(); }));
    EXPECT_THAT(performed_, ElementsAre("Open"));
}

TEST_F(MenuServerTest, AGroupOfEventsNamesTheUnknownRowsAndRunsTheOthers)
{
    rows_ = { acting("Open") };
    const auto server = serve();
    PlasmaHost host(service(), path);

    const auto reply = host.call(
        "EventGroup", g_variant_new_parsed("([(77, 'clicked', <0>, uint32 0), (1, 'clicked', <0>, uint32 0)],)"));

    EXPECT_EQ(print(reply), "([77],)");
    EXPECT_TRUE(testbus::waitUntil([this] { return !performed_.empty(); }));
    EXPECT_THAT(performed_, ElementsAre("Open"));
}

TEST_F(MenuServerTest, ADisabledRowIgnoresAClick)
{
    rows_ = { acting("Open"), acting("Quit") };
    rows_.front().enabled = false;
    const auto server = serve();
    PlasmaHost host(service(), path);

    host.call("EventGroup", g_variant_new_parsed("([(1, 'clicked', <0>, uint32 0), (2, 'clicked', <0>, uint32 0)],)"));

    EXPECT_TRUE(testbus::waitUntil([this] { return !performed_.empty(); }));
    EXPECT_THAT(performed_, ElementsAre("Quit"));
}

TEST(MenuShortcutTest, IsSpeltAsTheDesktopsHostsDo)
{
    using desktop::ShortcutSpelling;
    const auto spelt = [](const char* key, ShortcutSpelling spelling) {
        auto* value = desktop::shortcutValue(key, spelling);
        return value ? print(desktop::adoptVariant(value)) : "none";
    };

    EXPECT_EQ(spelt("b", ShortcutSpelling::Gtk), "[['Control', 'b']]");
    EXPECT_EQ(spelt("B", ShortcutSpelling::Gtk), "[['Control', 'Shift', 'b']]");
    EXPECT_EQ(spelt(",", ShortcutSpelling::Gtk), "[['Control', 'comma']]");
    EXPECT_EQ(spelt(",", ShortcutSpelling::Qt), "[['Control', ',']]");
    EXPECT_EQ(spelt("b", ShortcutSpelling::None), "none");
}

TEST(MenuShortcutTest, IsSentToHostsOnlyThatAreKnownToTakeIt)
{
    using desktop::ShortcutSpelling;

    EXPECT_EQ(desktop::shortcutSpellingOn("XFCE"), ShortcutSpelling::Gtk);
    EXPECT_EQ(desktop::shortcutSpellingOn("X-Something:KDE"), ShortcutSpelling::Qt);
    EXPECT_EQ(desktop::shortcutSpellingOn("sway"), ShortcutSpelling::None);
    EXPECT_EQ(desktop::shortcutSpellingOn(""), ShortcutSpelling::None);
}

} // namespace
