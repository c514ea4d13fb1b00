#include "ui/SettingsTest.h"

#include "platform/appkit/Box.h"
#include "platform/appkit/GridView.h"

namespace {

using appkit::Alert;
using appkit::Button;
using appkit::ControlState;
using appkit::TextField;
using foundation::UserDefaults;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(SettingsTest, IsMadeAt500By320)
{
    EXPECT_EQ(settings->preferredContentSize(), (foundation::Size { 500, 320 }));
}

TEST_F(SettingsTest, SaysWhatThereIsToSet)
{
    EXPECT_THAT(texts(),
        ElementsAre("General:", "Home Page:", "Web Cache:", "Deletes cookies and local storage.",
            "Factory Reset:", "Restores bookmarks and settings to defaults."));
    std::vector<std::string> actions;
    for (const auto& each : viewsIn<Button>(*settings->view()))
        actions.push_back(each->title() + " " + each->action().name());
    EXPECT_THAT(actions,
        ElementsAre("Launch at login toggleLaunchAtLogin:", "Save URL saveHomePage", "Clear Cache clearCache",
            "Reset All Data resetAllData"));
    EXPECT_EQ(field().placeholderString(), "example.com or https://...");
    EXPECT_FALSE(field().action());
}

TEST_F(SettingsTest, StandsInTwoColumnsOfWhichTheFirstIs120Wide)
{
    const auto grids = viewsIn<appkit::GridView>(*settings->view());
    ASSERT_THAT(grids, SizeIs(1));
    const auto& grid = *grids.front();
    const auto root = settings->view()->frame().size;
    EXPECT_EQ(grid.frame().origin.x, 20);
    EXPECT_EQ(grid.frame().origin.y + grid.frame().size.height, root.height - 30);
    EXPECT_EQ(grid.frame().size.width, root.width - 40);

    auto above = grid.frame().size.height;
    for (const auto& view : grid.subviews()) {
        const auto label = std::dynamic_pointer_cast<TextField>(view);
        if (!label)
            continue;
        EXPECT_EQ(label->frame().origin.x + label->frame().size.width, 120) << label->stringValue();
        EXPECT_LT(label->frame().origin.y, above);
        above = label->frame().origin.y;
    }
    EXPECT_EQ(button("Launch at login")->frame().origin.x, 120 + 20);
    EXPECT_EQ(field().frame().size.width, 260);

    const auto lines = viewsIn<appkit::Box>(grid);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines.front()->frame().origin.x, 0);
    EXPECT_EQ(lines.front()->frame().size.width, grid.frame().size.width);
}

TEST_F(SettingsTest, AllOfItIsInsideTheWindow)
{
    const auto root = settings->view()->frame().size;
    const auto& grid = *viewsIn<appkit::GridView>(*settings->view()).front();
    EXPECT_GE(grid.frame().origin.y, 0);
    for (const auto& each : grid.subviews())
        EXPECT_LE(each->frame().origin.x + each->frame().size.width, grid.frame().size.width);
    const auto save = button("Save URL");
    const auto& row = *grid.subviews().at(4);
    ASSERT_THAT(row.subviews(), ElementsAre(settings->homePageTextField(), save));
    EXPECT_EQ(save->frame().origin.x, 260 + 8);
    EXPECT_LE(
        grid.frame().origin.x + row.frame().origin.x + save->frame().origin.x + save->frame().size.width, root.width);
}

TEST_F(SettingsTest, ShowsTheHomePageAsItWasWhenItWasBuilt)
{
    EXPECT_EQ(field().stringValue(), "");

    setHomePage("first.example");
    EXPECT_EQ(field().stringValue(), "");

    show();
    EXPECT_EQ(field().stringValue(), "first.example");
}

TEST_F(SettingsTest, SavingStoresTheTextWithoutBlanksAtItsEndsAndSaysSo)
{
    std::optional<std::string> storedWhenAnnounced;
    whenSettingsChange = [&] {
        storedWhenAnnounced = homePage();
        EXPECT_EQ(Alert::running(), nullptr);
    };
    field().setStringValue("  text  ");

    clickAndAnswer("Save URL", confirm, [this](const Alert& alert) {
        EXPECT_EQ(alert.messageText, "Saved");
        EXPECT_EQ(alert.informativeText, "");
        EXPECT_THAT(alert.buttonTitles, IsEmpty());
        EXPECT_EQ(homePage(), "text");
        EXPECT_THAT(announced, ElementsAre("settings"));
    });

    EXPECT_EQ(storedWhenAnnounced, "text");
    EXPECT_EQ(homePage(), "text");
    EXPECT_THAT(announced, ElementsAre("settings"));
}

TEST_F(SettingsTest, SavingTakesAnyTextAsItIs)
{
    const std::vector<std::string> texts { "example.com", "ftp://example.com", "no address at all", "%", "http://[",
        "\u05D0\u05D1 e\u0301 <b>&amp;", std::string(60'000, 'x') };
    for (const auto& text : texts) {
        save(text);
        EXPECT_EQ(homePage(), text);
    }
}

TEST_F(SettingsTest, SavingLeavesOutBlanksOfEveryKind)
{
    save("\t\u00A0\u3000a b\u2003 ");

    EXPECT_EQ(homePage(), "a b");
}

TEST_F(SettingsTest, SavingAnEmptyFieldStoresAnEmptyText)
{
    setHomePage("first.example");

    save("");
    EXPECT_EQ(homePage(), "");

    UserDefaults::standard().removeObjectForKey(perchly::preferences::homePageURL);
    save(" \t ");
    EXPECT_EQ(homePage(), "");
    EXPECT_THAT(announced, ElementsAre("settings", "settings"));
}

TEST_F(SettingsTest, ReturnInTheFieldDoesNotSave)
{
    field().setStringValue("typed.example");

    field().doCommandBySelector("insertNewline:");

    EXPECT_EQ(homePage(), std::nullopt);
    EXPECT_THAT(announced, IsEmpty());
    EXPECT_EQ(Alert::running(), nullptr);
}

TEST_F(SettingsTest, LaunchAtLoginOnlyChecksItsBox)
{
    const auto checkbox = button("Launch at login");
    EXPECT_EQ(checkbox->state(), ControlState::Off);

    checkbox->performClick();
    EXPECT_EQ(checkbox->state(), ControlState::On);
    checkbox->performClick();
    EXPECT_EQ(checkbox->state(), ControlState::Off);
    checkbox->performClick();

    EXPECT_THAT(announced, IsEmpty());
    EXPECT_EQ(Alert::running(), nullptr);
    EXPECT_EQ(homePage(), std::nullopt);
    show();
    EXPECT_EQ(button("Launch at login")->state(), ControlState::Off);
}

} // namespace
