#include "bookmarks/UserAgents.h"
#include "platform/linux/appkit/EventScope.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "ui/PinnedTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using appkit::EventScope;
using appkit::EventType;
using appkit::Menu;
using appkit::MenuItem;
using perchly::Bookmark;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

/// Clicks with either button on a bookmark's status item.
class PinnedRightClickTest : public PinnedTest {
protected:
    void click(EventType type) const
    {
        const EventScope event(type);
        buttonOf(bookmark)->performClick();
    }

    /// The menu that a right click pops up, or null.
    [[nodiscard]] std::shared_ptr<Menu> menu() const
    {
        buttonOf(bookmark)->native().contextMenu = nullptr;
        click(EventType::RightMouseUp);
        return buttonOf(bookmark)->native().contextMenu;
    }

    [[nodiscard]] static std::shared_ptr<MenuItem> row(const Menu& menu, std::string_view title)
    {
        for (const auto& item : menu.items()) {
            if (item->title() == title)
                return item;
        }
        throw std::runtime_error("No row " + std::string(title));
    }

    void choose(std::string_view title) const { row(*menu(), title)->performAction(); }
    void choose(std::string_view parent, std::string_view title) const
    {
        row(*row(*menu(), parent)->submenu(), title)->performAction();
    }

    [[nodiscard]] std::vector<std::string> checked(std::string_view parent) const
    {
        std::vector<std::string> titles;
        const auto submenu = row(*menu(), parent)->submenu();
        for (const auto& item : submenu->items()) {
            if (item->isOn())
                titles.push_back(item->title());
        }
        return titles;
    }

    Bookmark bookmark = added(bookmarkNamed("This"));
};

TEST_F(PinnedRightClickTest, PopsUpTheMenuAndNeverOpensTheBookmark)
{
    const auto shown = menu();

    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->items().size(), 12U);
    EXPECT_EQ(itemOf(bookmark)->menu(), nullptr);
    EXPECT_THAT(delegate->opened, IsEmpty());
    bookmark.openInSystemBrowser = true;
    change(bookmark);
    EXPECT_NE(menu(), nullptr);
}

TEST_F(PinnedRightClickTest, PopsUpAMenuBuiltAnew)
{
    const auto former = menu();
    bookmark.isPinned = true;
    store().updateBookmark(bookmark);

    const auto latter = menu();

    EXPECT_NE(latter, former);
    EXPECT_FALSE(row(*former, "Pin to Quick Access")->isOn());
    EXPECT_TRUE(row(*latter, "Pin to Quick Access")->isOn());
    EXPECT_EQ(std::any_cast<Bookmark>(row(*latter, "Detach Window")->representedObject()), bookmark);
}

TEST_F(PinnedRightClickTest, NeedsNoDelegateForItsMenu)
{
    manager->setDelegate({});

    EXPECT_NE(menu(), nullptr);
}

TEST_F(PinnedRightClickTest, PopsUpNothingForATagOfNobodyOrADeletedBookmark)
{
    buttonOf(bookmark)->setTag(buttonOf(bookmark)->tag() + 1);
    EXPECT_EQ(menu(), nullptr);
    announce();
    EXPECT_NE(menu(), nullptr);

    store().removeBookmark(bookmark.id);

    EXPECT_EQ(menu(), nullptr);
}

TEST_F(PinnedRightClickTest, ALeftClickOpensTheBookmarkAndPopsUpNothing)
{
    for (const auto type : { EventType::LeftMouseUp, EventType::LeftMouseDown, EventType::LeftMouseDragged }) {
        delegate->opened.clear();
        click(type);
        EXPECT_THAT(delegate->opened, ElementsAre(bookmark));
    }
    EXPECT_EQ(buttonOf(bookmark)->native().contextMenu, nullptr);
}

TEST_F(PinnedRightClickTest, EveryRowOfTheMenuActs)
{
    auto expected = bookmark;
    const std::pair<const char*, bool Bookmark::*> toggles[] = { { "Reload on Every Open",
                                                                     &Bookmark::shouldReloadOnOpen },
        { "Always on Top", &Bookmark::isAlwaysOnTop }, { "Always Open in Window", &Bookmark::prefersDetached },
        { "Open in System Browser", &Bookmark::openInSystemBrowser }, { "Pin to Quick Access", &Bookmark::isPinned } };
    for (const auto& [title, flag] : toggles) {
        choose(title);
        expected.*flag = !(expected.*flag);
        EXPECT_EQ(storedLike(bookmark), expected) << title;
        EXPECT_EQ(row(*menu(), title)->isOn(), expected.*flag) << title;
    }
    choose("Detach Window");
    EXPECT_THAT(delegate->detached, ElementsAre(expected));
    EXPECT_EQ(delegate->levelled.size(), 1U);
    choose("Remove from Menubar");
    EXPECT_EQ(buttonOf(bookmark), nullptr);
    EXPECT_FALSE(storedLike(bookmark).isAddedToMenuBar);
}

TEST_F(PinnedRightClickTest, AChosenUserAgentIsCheckedInTheNextMenu)
{
    EXPECT_THAT(checked("Browser Agent"), ElementsAre("System Default (18.0)"));

    choose("Browser Agent", "Chrome");

    EXPECT_EQ(storedLike(bookmark).userAgent, std::string(perchly::agents::chrome));
    EXPECT_THAT(checked("Browser Agent"), ElementsAre("Chrome"));
    choose("Browser Agent", "System Default (18.0)");
    EXPECT_EQ(storedLike(bookmark).userAgent, std::nullopt);
}

TEST_F(PinnedRightClickTest, AChosenIconSizeIsCheckedInTheNextMenu)
{
    EXPECT_THAT(checked("Icon Size"), ElementsAre("Medium"));

    choose("Icon Size", "Medium");
    EXPECT_THAT(checked("Icon Size"), ElementsAre("Medium"));
    EXPECT_EQ(storedLike(bookmark).menubarIconSize, 15);

    choose("Icon Size", "Extra Large");
    EXPECT_THAT(checked("Icon Size"), ElementsAre("Extra Large"));
    EXPECT_EQ(storedLike(bookmark).menubarIconSize, 22);
}

/// Bookmarks that are opened in the user's default browser: here a program that notes what it is given.
class PinnedSystemBrowserTest : public PinnedTest {
protected:
    PinnedSystemBrowserTest()
    {
        namespace fs = std::filesystem;
        const fs::path data = std::getenv("XDG_DATA_HOME");
        const fs::path settings = std::getenv("XDG_CONFIG_HOME");
        opened_ = data / "opened";
        const auto program = data / "browser";
        std::ofstream(program) << "#!/bin/sh\nprintf '%s\\n' \"$1\" >>'" << opened_.string() << "'\n";
        fs::permissions(program, fs::perms::owner_all);
        fs::create_directory(data / "applications");
        constexpr auto* schemes = "x-scheme-handler/http;x-scheme-handler/https;";
        std::ofstream(data / "applications/notes.desktop")
            << "[Desktop Entry]\nType=Application\nName=Notes\nExec=" << program.string() << " %u\nMimeType=" << schemes
            << "\n";
        std::ofstream(settings / "mimeapps.list") << "[Default Applications]\nx-scheme-handler/http=notes.desktop\n"
                                                     "x-scheme-handler/https=notes.desktop\n";
    }

    void click(std::string_view address) const
    {
        auto bookmark = bookmarkNamed("This");
        bookmark.url = std::string(address);
        bookmark.openInSystemBrowser = true;
        buttonOf(added(bookmark))->performClick();
    }

    [[nodiscard]] std::vector<std::string> opened() const
    {
        std::vector<std::string> lines;
        std::ifstream file(opened_);
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

private:
    std::filesystem::path opened_;
};

TEST_F(PinnedSystemBrowserTest, AnAddressWithASchemeIsOpenedAsItIs)
{
    click("http://127.0.0.1/a?b#c");

    EXPECT_TRUE(waitUntil([&] { return !opened().empty(); }));
    EXPECT_THAT(opened(), ElementsAre("http://127.0.0.1/a?b#c"));
    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedSystemBrowserTest, AnAddressWithoutASchemeIsOpenedOverHttps)
{
    click("127.0.0.1:8080/a");

    EXPECT_TRUE(waitUntil([&] { return !opened().empty(); }));
    EXPECT_THAT(opened(), ElementsAre("https://127.0.0.1:8080/a"));
}

TEST_F(PinnedSystemBrowserTest, NeedsNoDelegate)
{
    manager->setDelegate({});

    click("https://127.0.0.1/a");

    EXPECT_TRUE(waitUntil([&] { return !opened().empty(); }));
}

TEST_F(PinnedSystemBrowserTest, AnAddressThatDoesNotParseIsNotOpened)
{
    click("a host with blanks");
    click("https://127.0.0.1/next");

    EXPECT_TRUE(waitUntil([&] { return !opened().empty(); }));
    EXPECT_THAT(opened(), ElementsAre("https://127.0.0.1/next"));
}

} // namespace
