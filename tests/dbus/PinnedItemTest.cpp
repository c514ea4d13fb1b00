#include "FakeHosts.h"
#include "FakeWatcher.h"
#include "Monitor.h"
#include "platform/linux/appkit/StatusBarButtonNative.h"
#include "ui/PinnedTest.h"
#include "unit/CapturedStandardError.h"

#include <atomic>
#include <filesystem>
#include <set>
#include <thread>

namespace {

using perchly::Bookmark;
using perchly::test::Hold;
using testbus::waitUntil;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr const char* itemInterface = "org.kde.StatusNotifierItem";
constexpr const char* noPixmaps = "(<@a(iiay) []>,)";

/// The status items of bookmarks as a status area sees them.
class PinnedItemTest : public PinnedTest {
protected:
    void SetUp() override
    {
        g_unsetenv("DISPLAY");
        g_unsetenv("XDG_CURRENT_DESKTOP");
    }

    /// Stored, and in the status area.
    Bookmark shown(Bookmark bookmark)
    {
        const auto before = watcher_.items().size();
        added(bookmark);
        EXPECT_TRUE(waitUntil([&] { return watcher_.items().size() == before + 1; }));
        names_[bookmark.id] = watcher_.items().back();
        return bookmark;
    }

    /// "name/path", as the watcher keeps it.
    [[nodiscard]] const std::string& nameOf(const Bookmark& bookmark) const { return names_.at(bookmark.id); }
    [[nodiscard]] std::string connectionOf(const Bookmark& bookmark) const
    {
        return nameOf(bookmark).substr(0, nameOf(bookmark).find('/'));
    }

    [[nodiscard]] std::string answer(
        const Bookmark& bookmark, const char* interface, const char* method, GVariant* parameters) const
    {
        const auto path = interface == std::string_view("com.canonical.dbusmenu") ? "/MenuBar" : "/StatusNotifierItem";
        const auto reply = testbus::call(host_, { connectionOf(bookmark), path, interface }, method, parameters);
        return reply ? desktop::GLibPointer<>(g_variant_print(reply.get(), TRUE)).get() : "error";
    }

    [[nodiscard]] std::string property(const Bookmark& bookmark, const char* name) const
    {
        return answer(bookmark, "org.freedesktop.DBus.Properties", "Get", g_variant_new("(ss)", itemInterface, name));
    }

    [[nodiscard]] std::string rowProperty(const Bookmark& bookmark, std::int32_t id, const char* name) const
    {
        return answer(bookmark, "com.canonical.dbusmenu", "GetProperty", g_variant_new("(is)", id, name));
    }

    void click(const Bookmark& bookmark, const char* method) const
    {
        EXPECT_EQ(answer(bookmark, itemInterface, method, g_variant_new("(ii)", 30, 12)), "()");
        testbus::settle(host_);
    }

    static void choose(const FakeHost& host, const std::string& label)
    {
        EXPECT_TRUE(
            host.call("Event", g_variant_new("(isvu)", host.idOf(label), "clicked", g_variant_new_int32(0), 0U)));
        host.settle();
    }

    /// Opens its menu as each kind of host does.
    template <class Test>
    void withEachHost(const Bookmark& bookmark, Test test) const
    {
        GtkHost gtk(connectionOf(bookmark), "/MenuBar");
        test(gtk);
        PlasmaHost plasma(connectionOf(bookmark), "/MenuBar");
        test(plasma);
        GnomeHost gnome(connectionOf(bookmark), "/MenuBar");
        test(gnome);
    }

    [[nodiscard]] bool hasLetter(const Bookmark& bookmark, std::string_view letter) const
    {
        const auto button = buttonOf(bookmark);
        return waitUntil([&] { return button->title() == letter; });
    }

    [[nodiscard]] static Bookmark withFavicon(std::string_view title)
    {
        auto bookmark = bookmarkNamed(title);
        bookmark.sfSymbolName = std::nullopt;
        return bookmark;
    }

    const FakeWatcher watcher_;
    testbus::Connection host_ = testbus::connect();

private:
    std::map<std::string, std::string> names_;
};

TEST_F(PinnedItemTest, IsKnownByTheBookmarksId)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    EXPECT_EQ(property(bookmark, "Id"), "(<'perchly-" + bookmark.id + "'>,)");
    EXPECT_THAT(nameOf(bookmark), EndsWith("/StatusNotifierItem"));
    EXPECT_EQ(property(bookmark, "ItemIsMenu"), "(<false>,)");
}

TEST_F(PinnedItemTest, KeepsItsIdOverItsReturn)
{
    const auto bookmark = shown(bookmarkNamed("This"));
    const auto id = property(bookmark, "Id");
    remove(bookmark);
    ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    shown(bookmarkNamed("Another"));

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "Id"), id);
}

TEST_F(PinnedItemTest, AnIdOfAnyCharactersIsEscaped)
{
    auto bookmark = bookmarkNamed("This");
    bookmark.id = "a b/ü\n";

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "Id"), "(<'perchly-a%20b%2F%C3%BC%0A'>,)");
}

TEST_F(PinnedItemTest, TellsTheTitleAndAToolTipWithoutMarkup)
{
    const auto bookmark = shown(bookmarkNamed("A & B <c>"));

    EXPECT_EQ(property(bookmark, "Title"), "(<'A & B <c>'>,)");
    EXPECT_EQ(property(bookmark, "ToolTip"), "(<('', @a(iiay) [], 'A ＆ B ‹c›', '')>,)");
}

TEST_F(PinnedItemTest, TellsANewTitleAndKeepsItsPlace)
{
    auto bookmark = shown(bookmarkNamed("Before"));
    const auto name = nameOf(bookmark);

    bookmark.title = "After";
    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "Title") == "(<'After'>,)"; }));
    EXPECT_THAT(watcher_.items(), ElementsAre(name));
    EXPECT_EQ(watcher_.registrations(), 1);
}

TEST_F(PinnedItemTest, TakesTheTwoMouseButtonsForALeftClick)
{
    shown(bookmarkNamed("Another"));
    const auto bookmark = shown(bookmarkNamed("This"));
    EXPECT_THAT(delegate->opened, IsEmpty());

    click(bookmark, "Activate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
    click(bookmark, "SecondaryActivate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 2; }));

    EXPECT_THAT(delegate->opened, Each(bookmark));
    EXPECT_EQ(delegate->anchor, buttonOf(bookmark).get());
}

TEST_F(PinnedItemTest, ARequestForItsMenuDoesNotOpenTheBookmark)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    click(bookmark, "ContextMenu");
    click(bookmark, "Activate");

    EXPECT_TRUE(waitUntil([&] { return !delegate->opened.empty(); }));
    testbus::settle(host_);
    EXPECT_THAT(delegate->opened, SizeIs(1));
}

TEST_F(PinnedItemTest, EveryHostIsShownTheMenu)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [](FakeHost& host) {
        host.openMenu();
        auto labels = host.labels();
        std::erase_if(labels, [](const auto& label) { return label.empty(); });
        EXPECT_EQ(labels.front(), "Detach Window");
        EXPECT_EQ(labels.back(), "Remove from Menubar");
        EXPECT_THAT(labels, Contains("Browser Agent"));
        EXPECT_THAT(labels, Not(Contains("Open")));
    });
    EXPECT_THAT(delegate->opened, IsEmpty());
}

TEST_F(PinnedItemTest, ItsMenuIsFreshAtEveryOpening)
{
    auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [&](FakeHost& host) {
        host.openMenu();
        const auto id = host.idOf("Pin to Quick Access");
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-type"), "(<'checkmark'>,)");
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-state"), bookmark.isPinned ? "(<1>,)" : "(<0>,)");
        // The store announces nothing of itself.
        bookmark.isPinned = !bookmark.isPinned;
        store().updateBookmark(bookmark);

        host.openMenu();

        EXPECT_EQ(host.idOf("Pin to Quick Access"), id);
        EXPECT_EQ(rowProperty(bookmark, id, "toggle-state"), bookmark.isPinned ? "(<1>,)" : "(<0>,)");
        EXPECT_THAT(host.traffic(), Contains("ItemsPropertiesUpdated"));
    });
}

TEST_F(PinnedItemTest, ItsMenuFollowsAChangeThatWasAnnouncedBeforeItIsOpened)
{
    auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");
    const auto id = host.idOf("Reload on Every Open");
    bookmark.shouldReloadOnOpen = true;

    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return rowProperty(bookmark, id, "toggle-state") == "(<1>,)"; }));
}

TEST_F(PinnedItemTest, EveryHostsChoiceActs)
{
    const auto bookmark = shown(bookmarkNamed("This"));

    withEachHost(bookmark, [&](FakeHost& host) {
        const auto before = storedLike(bookmark).prefersDetached;
        host.openMenu();

        choose(host, "Always Open in Window");
        choose(host, "Detach Window");

        EXPECT_EQ(storedLike(bookmark).prefersDetached, !before);
    });
    EXPECT_THAT(delegate->detached, SizeIs(3));
}

TEST_F(PinnedItemTest, ChoosingToRemoveItTakesItFromTheStatusArea)
{
    const auto bookmark = shown(bookmarkNamed("This"));
    {
        GnomeHost host(connectionOf(bookmark), "/MenuBar");
        host.openMenu();
        host.call(
            "Event", g_variant_new("(isvu)", host.idOf("Remove from Menubar"), "clicked", g_variant_new_int32(0), 0U));
    }

    EXPECT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    EXPECT_FALSE(storedLike(bookmark).isAddedToMenuBar);
}

TEST_F(PinnedItemTest, OnADesktopOfGnomesPartsTheMenuHasNoOpen)
{
    g_setenv("XDG_CURRENT_DESKTOP", "Budgie:GNOME", TRUE);
    const auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");

    host.openMenu();

    EXPECT_THAT(host.labels(), Not(Contains("Open")));
}

TEST_F(PinnedItemTest, OnlyWhereAClickOpensTheMenuAloneItBeginsWithOpen)
{
    g_setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", TRUE);
    const auto bookmark = shown(bookmarkNamed("This"));
    GnomeHost host(connectionOf(bookmark), "/MenuBar");

    host.openMenu();

    const auto labels = host.labels();
    ASSERT_GT(labels.size(), 3U);
    EXPECT_EQ(labels[0], "Open");
    EXPECT_EQ(labels[1], "");
    EXPECT_EQ(labels[2], "Detach Window");
    choose(host, "Open");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
}

TEST_F(PinnedItemTest, LeavesTheStatusAreaAtOnceWhoeverHasIt)
{
    const auto stays = shown(bookmarkNamed("Stays"));
    const auto goes = shown(bookmarkNamed("Goes"));
    const auto item = itemOf(goes);

    remove(goes);

    EXPECT_TRUE(waitUntil([&] { return watcher_.items().size() == 1; }));
    EXPECT_THAT(watcher_.items(), ElementsAre(nameOf(stays)));
    EXPECT_NE(item->button(), nullptr);
    item->button()->setToolTip("Still here");
    testbus::settle(host_);
    EXPECT_EQ(watcher_.registrations(), 2);
}

TEST_F(PinnedItemTest, ManyAtOnceComeInTheOrderOfTheBookmarks)
{
    constexpr auto count = 40;
    std::vector<std::string> expected;
    for (auto number = 0; number < count; ++number) {
        store().addBookmark(bookmarkNamed("Bookmark " + std::to_string(number)));
        expected.push_back("(<'Bookmark " + std::to_string(number) + "'>,)");
    }

    announce();

    ASSERT_TRUE(waitUntil([&] { return watcher_.items().size() == count; }));
    std::vector<std::string> titles;
    for (const auto& item : watcher_.items()) {
        const auto reply = testbus::call(host_,
            { item.substr(0, item.find('/')), "/StatusNotifierItem", "org.freedesktop.DBus.Properties" }, "Get",
            g_variant_new("(ss)", itemInterface, "Title"));
        ASSERT_TRUE(reply);
        titles.emplace_back(desktop::GLibPointer<>(g_variant_print(reply.get(), TRUE)).get());
    }
    EXPECT_EQ(titles, expected);
}

TEST_F(PinnedItemTest, AChoiceFromAMenuThatWasNeverToldToOpenSavesOverNothing)
{
    auto bookmark = shown(bookmarkNamed("This"));
    const GtkHost host(connectionOf(bookmark), "/MenuBar");
    // As a browser's size is, which nobody announces.
    bookmark.preferredWidth = 512;
    bookmark.preferredHeight = 640;
    store().updateBookmark(bookmark);

    choose(host, "Pin to Quick Access");

    bookmark.isPinned = true;
    EXPECT_EQ(storedLike(bookmark), bookmark);
}

TEST_F(PinnedItemTest, AChoiceFromAMenuThatIsOpenSavesItAsItWasWhenItOpened)
{
    auto bookmark = shown(bookmarkNamed("This"));
    GtkHost host(connectionOf(bookmark), "/MenuBar");
    host.openMenu();
    auto changed = bookmark;
    changed.preferredWidth = 512;
    store().updateBookmark(changed);

    choose(host, "Pin to Quick Access");

    bookmark.isPinned = true;
    EXPECT_EQ(storedLike(bookmark), bookmark);
}

TEST_F(PinnedItemTest, ARowThatTakesItsItemAwayIsAnsweredAllTheSame)
{
    const auto bookmark = bookmarkNamed("This");
    for (auto time = 0; time < 100; ++time) {
        store().removeBookmark(bookmark.id);
        shown(bookmark);
        const GnomeHost host(connectionOf(bookmark), "/MenuBar");

        EXPECT_TRUE(host.call(
            "Event", g_variant_new("(isvu)", host.idOf("Remove from Menubar"), "clicked", g_variant_new_int32(0), 0U)));

        ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    }
}

TEST_F(PinnedItemTest, AChangeOfOneAmongManyIsToldOfThatOneAlone)
{
    std::vector<Bookmark> bookmarks;
    bookmarks.reserve(20);
    for (auto number = 0; number < 20; ++number)
        bookmarks.push_back(shown(bookmarkNamed("Bookmark " + std::to_string(number))));
    testbus::settle(host_);
    const testbus::Monitor monitor;

    auto& changed = bookmarks[7];
    changed.title = "Renamed";
    changed.sfSymbolName = "Cd";
    changed.isPinned = true;
    change(changed);

    ASSERT_TRUE(waitUntil([&] { return monitor.hasSeen(connectionOf(changed), "NewToolTip"); }));
    testbus::settle(host_);
    for (const auto& bookmark : bookmarks) {
        if (bookmark.id == changed.id)
            continue;
        EXPECT_THAT(monitor.messagesFrom(connectionOf(bookmark)), IsEmpty()) << bookmark.title;
    }
    EXPECT_THAT(monitor.messagesFrom(connectionOf(changed)), Contains("NewIcon"));
    EXPECT_THAT(monitor.messagesFrom(connectionOf(changed)), SizeIs(testing::Le(6)));
}

TEST_F(PinnedItemTest, NothingIsToldOfLettersThatComeBack)
{
    const auto first = shown(withFavicon("first"));
    const auto second = shown(withFavicon("second"));
    ASSERT_TRUE(hasLetter(first, "F") && hasLetter(second, "S"));
    testbus::settle(host_);
    const testbus::Monitor monitor;

    for (auto time = 0; time < 3; ++time) {
        announce();
        ASSERT_EQ(buttonOf(first)->title(), "");
        ASSERT_TRUE(hasLetter(first, "F") && hasLetter(second, "S"));
        testbus::settle(host_);
    }

    EXPECT_THAT(monitor.messagesFrom(connectionOf(first)), IsEmpty());
    EXPECT_THAT(monitor.messagesFrom(connectionOf(second)), IsEmpty());
}

TEST_F(PinnedItemTest, ABlankLookLeavesTheFormerPictureForAWhile)
{
    auto bookmark = shown(bookmarkNamed("This"));
    const auto picture = property(bookmark, "IconPixmap");
    ASSERT_NE(picture, noPixmaps);
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    const auto start = std::chrono::steady_clock::now();

    change(bookmark);
    testbus::settle(host_);

    EXPECT_EQ(property(bookmark, "IconPixmap"), picture);
    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "IconPixmap") == noPixmaps; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
}

TEST_F(PinnedItemTest, ANewLookEndsTheBlankOneBeforeItIsSeen)
{
    auto bookmark = shown(bookmarkNamed("This"));
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    change(bookmark);
    testbus::settle(host_);
    const testbus::Monitor monitor;
    bookmark.iconURL = std::nullopt;

    change(bookmark);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(2500);
    ASSERT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() > end; }));

    EXPECT_THAT(monitor.messagesFrom(connectionOf(bookmark)), IsEmpty());
}

TEST_F(PinnedItemTest, AnIconWithoutAnEndLeavesTheItemBlankAndAnswered)
{
    constexpr auto mebibyte = std::size_t { 1 } << 20U;
    server.serve("/large.png", { .body = std::string(50 * mebibyte, 'x'), .contentType = "image/png" });
    server.serve("/endless.png", { .body = std::string(mebibyte, 'x'), .contentType = "image/png", .isEndless = true });
    server.serve("/never.png", { .hold = Hold::BeforeHead });
    const perchly::tests::CapturedStandardError captured;
    const auto withIcon = [&](const std::string& name) {
        auto bookmark = withFavicon(name);
        bookmark.iconURL = server.url("/" + name + ".png");
        return shown(bookmark);
    };
    const auto large = withIcon("large");
    const auto endless = withIcon("endless");
    const auto never = withIcon("never");
    ASSERT_TRUE(isAskedFor("/never.png"));

    auto longest = std::chrono::steady_clock::duration::zero();
    const auto isTold = [&] {
        const auto start = std::chrono::steady_clock::now();
        for (const auto& bookmark : { large, endless, never })
            EXPECT_EQ(property(bookmark, "IconPixmap"), noPixmaps);
        longest = std::max(longest, std::chrono::steady_clock::now() - start);
        const auto text = captured.text();
        return text.find("load error for large: The download is too large") != std::string::npos
            && text.find("load error for endless: The download is too large") != std::string::npos;
    };
    EXPECT_TRUE(waitUntil(isTold)) << captured.text();

    EXPECT_LT(longest, std::chrono::seconds(1));
    click(never, "Activate");
    EXPECT_TRUE(waitUntil([&] { return delegate->opened.size() == 1; }));
}

TEST_F(PinnedItemTest, ADownloadedIconIsSetOnTheMainThread)
{
    server.serve("/icon.svg",
        { .body = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><rect width='8' height='8'/></svg>",
            .contentType = "image/svg+xml",
            .hold = Hold::BeforeHead });
    auto bookmark = withFavicon("This");
    bookmark.iconURL = server.url("/icon.svg");
    shown(bookmark);
    std::vector<std::thread::id> threads;
    auto& changed = buttonOf(bookmark)->native().changed;
    changed = [&threads, tell = changed] {
        threads.push_back(std::this_thread::get_id());
        tell();
    };

    server.release("/icon.svg");

    ASSERT_TRUE(waitUntil([&] { return buttonOf(bookmark)->image() != nullptr; }));
    EXPECT_THAT(threads, Not(IsEmpty()));
    EXPECT_THAT(threads, Each(std::this_thread::get_id()));
}

TEST_F(PinnedItemTest, ADrawingThatChangesLeavesNoFilesBehind)
{
    auto drawings = std::make_shared<std::atomic<int>>(0);
    server.setHandler([drawings](const auto&) {
        const auto width = std::to_string(++*drawings % 8 + 1);
        return perchly::test::Response { .body
            = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'><rect width='" + width
                + "' height='8'/></svg>",
            .contentType = "image/svg+xml" };
    });
    auto bookmark = withFavicon("This");
    bookmark.iconURL = server.url("/icon.svg");
    shown(bookmark);
    shown(withFavicon("Another"));
    std::set<std::string> names;
    for (auto time = 0; time < 4; ++time) {
        ASSERT_TRUE(waitUntil([&] { return names.insert(property(bookmark, "IconName")).second; }));
        announce();
    }
    remove(bookmark);
    ASSERT_TRUE(waitUntil([&] { return watcher_.items().size() == 1; }));

    const auto folder = std::filesystem::path(std::getenv("XDG_CACHE_HOME")) / "Perchly" / "icons";
    EXPECT_TRUE(waitUntil([&] { return std::filesystem::is_empty(folder); }));
}

TEST_F(PinnedItemTest, ATitleIsToldAtOnceWhileItsIconIsOnItsWay)
{
    auto bookmark = shown(bookmarkNamed("Before"));
    const auto picture = property(bookmark, "IconPixmap");
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");
    bookmark.title = "After";
    const auto start = std::chrono::steady_clock::now();

    change(bookmark);

    EXPECT_TRUE(waitUntil([&] { return property(bookmark, "Title") == "(<'After'>,)"; }));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1000));
    EXPECT_EQ(property(bookmark, "IconPixmap"), picture);
}

TEST_F(PinnedItemTest, IdsThatDifferSomewhereAreDifferent)
{
    using namespace std::string_literals;
    auto first = bookmarkNamed("First");
    auto second = bookmarkNamed("Second");
    first.id = "same\0one"s;
    second.id = "same\0two"s;

    EXPECT_EQ(property(shown(first), "Id"), "(<'perchly-same%00one'>,)");
    EXPECT_EQ(property(shown(second), "Id"), "(<'perchly-same%00two'>,)");
}

TEST_F(PinnedItemTest, ASizeBeyondAllMeasureIsDrawnAsTheLargest)
{
    auto bookmark = shown(bookmarkNamed("This"));
    bookmark.menubarIconSize = 22;
    change(bookmark);
    testbus::settle(host_);
    const auto large = property(bookmark, "IconPixmap");
    for (const auto size : { 1e300, -1e300, 0.0, 1e10 }) {
        bookmark.menubarIconSize = size;
        change(bookmark);
        testbus::settle(host_);
        EXPECT_EQ(property(bookmark, "IconPixmap") == large, size > 22) << size;
    }
}

TEST_F(PinnedItemTest, ATextOfAnyLengthIsDrawn)
{
    for (const auto* letters : { "é", "日", "🚀" }) {
        auto bookmark = bookmarkNamed("This");
        bookmark.sfSymbolName.emplace();
        for (auto count = 0; count < 1 << 20; ++count)
            *bookmark.sfSymbolName += letters;
        shown(bookmark);

        EXPECT_NE(property(bookmark, "IconPixmap"), noPixmaps) << letters;

        remove(bookmark);
        ASSERT_TRUE(waitUntil([&] { return watcher_.items().empty(); }));
    }
}

TEST_F(PinnedItemTest, AnItemThatIsBlankFromTheStartIsThere)
{
    auto bookmark = withFavicon("This");
    server.serve("/slow.png", { .status = 404, .hold = Hold::BeforeHead });
    bookmark.iconURL = server.url("/slow.png");

    shown(bookmark);

    EXPECT_EQ(property(bookmark, "IconPixmap"), noPixmaps);
    EXPECT_EQ(property(bookmark, "Title"), "(<'This'>,)");
}

} // namespace
