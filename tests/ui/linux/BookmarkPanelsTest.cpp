#include "bookmarks/BookmarkCollection.h"
#include "platform/linux/appkit/FilePanel.h"
#include "platform/linux/desktop/GObject.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/BookmarkListTest.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using perchly::Bookmark;
using perchly::BookmarkCollection;
using perchly::test::toolkitFunction;
using perchly::test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;

/// The windows that the list's buttons open, as its user meets them. Without a portal these are the toolkit's own.
class BookmarkPanelsTest : public BookmarkListTest {
public:
    ~BookmarkPanelsTest() override { appkit::cancelFilePanels(); }

protected:
    /// The window on the screen for which that holds, or null.
    template <class Condition>
    [[nodiscard]] static GtkWindow* shownWindow(Condition condition)
    {
        GtkWindow* shown = nullptr;
        auto* windows = gtk_window_list_toplevels();
        for (auto* link = windows; link; link = link->next) {
            if (gtk_widget_get_mapped(GTK_WIDGET(link->data)) && condition(GTK_WINDOW(link->data)))
                shown = GTK_WINDOW(link->data);
        }
        g_list_free(windows);
        return shown;
    }

    [[nodiscard]] static GtkWindow* panel()
    {
        return shownWindow([](GtkWindow* each) { return GTK_IS_FILE_CHOOSER(each); });
    }

    static void openPanel(const appkit::Button& button)
    {
        const_cast<appkit::Button&>(button).performClick();
        ASSERT_TRUE(waitUntil([] { return panel() != nullptr; }));
    }

    [[nodiscard]] static std::string titleOfPanel() { return gtk_window_get_title(panel()); }

    static void respond(int response)
    {
        toolkitFunction<void (*)(GtkWindow*, int)>("gtk_dialog_response")(panel(), response);
    }

    static void close(GtkWindow* shown) { toolkitFunction<void (*)(GtkWindow*)>("gtk_window_close")(shown); }

    [[nodiscard]] static std::filesystem::path folder() { return std::getenv("XDG_DATA_HOME"); }

    [[nodiscard]] static std::filesystem::path pathFrom(const char* getter)
    {
        const auto file = desktop::adopt(toolkitFunction<GFile* (*)(GtkWindow*)>(getter)(panel()));
        const desktop::GLibPointer<> path(file ? g_file_get_path(file.get()) : nullptr);
        return path ? path.get() : "";
    }

    [[nodiscard]] static bool names(const std::filesystem::path& path)
    {
        return pathFrom("gtk_file_chooser_get_file") == path;
    }

    static bool callWithFile(const char* name, const std::filesystem::path& path)
    {
        const auto file = desktop::adopt(g_file_new_for_path(path.c_str()));
        using Call = gboolean(GtkWindow*, GFile*, GError**);
        return toolkitFunction<Call*>(name)(panel(), file.get(), nullptr);
    }

    static void chooseFile(const std::filesystem::path& path)
    {
        ASSERT_TRUE(callWithFile("gtk_file_chooser_set_file", path));
        ASSERT_TRUE(waitUntil([&] { return names(path); }));
    }

    static void choosePlace(const std::filesystem::path& path)
    {
        // It goes to a folder of its own choice first.
        ASSERT_TRUE(waitUntil([] { return !pathFrom("gtk_file_chooser_get_current_folder").empty(); }));
        ASSERT_TRUE(callWithFile("gtk_file_chooser_set_current_folder", path.parent_path()));
        using SetName = void(GtkWindow*, const char*);
        toolkitFunction<SetName*>("gtk_file_chooser_set_current_name")(panel(), path.filename().c_str());
        ASSERT_TRUE(waitUntil([&] { return names(path); }));
    }

    /// Once, because each time the panel looks anew at what has that name.
    [[nodiscard]] static bool confirmPanel()
    {
        respond(GTK_RESPONSE_ACCEPT);
        return waitUntil([] { return panel() == nullptr; });
    }

    static void writeFile(const std::filesystem::path& file, const std::vector<Bookmark>& bookmarks)
    {
        std::ofstream(file) << BookmarkCollection::encode(bookmarks, BookmarkCollection::Style::Compact).value();
    }

    [[nodiscard]] static std::string contentsOf(const std::filesystem::path& file)
    {
        std::ifstream stream(file);
        return { std::istreambuf_iterator<char>(stream), {} };
    }
};

TEST_F(BookmarkPanelsTest, ImportAsksForAJsonFileAndDoesNotWait)
{
    openPanel(*list->importButton());

    EXPECT_EQ(titleOfPanel(), "Import Bookmarks");
    auto* filter = toolkitFunction<GtkFileFilter* (*)(GtkWindow*)>("gtk_file_chooser_get_filter")(panel());
    auto* kinds = toolkitFunction<GListModel* (*)(GtkWindow*)>("gtk_file_chooser_get_filters")(panel());
    EXPECT_EQ(g_list_model_get_n_items(kinds), 1U);
    g_object_unref(kinds);
    ASSERT_NE(filter, nullptr);
    EXPECT_FALSE(toolkitFunction<gboolean (*)(GtkWindow*)>("gtk_file_chooser_get_select_multiple")(panel()));
    EXPECT_EQ(toolkitFunction<GtkFileChooserAction (*)(GtkWindow*)>("gtk_file_chooser_get_action")(panel()),
        GTK_FILE_CHOOSER_ACTION_OPEN);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BookmarkPanelsTest, TheChosenFileIsImported)
{
    const auto delta = bookmarkNamed("Delta", "four.example");
    writeFile(folder() / "chosen.json", { delta });
    openPanel(*list->importButton());
    chooseFile(folder() / "chosen.json");

    ASSERT_TRUE(confirmPanel());

    ASSERT_TRUE(waitUntil([&] { return sheet() != nullptr; }));
    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, beta, gamma, delta));
    EXPECT_EQ(sheet()->messageText, "Import Successful");
}

TEST_F(BookmarkPanelsTest, ACancelledImportChangesNothingAndShowsNothing)
{
    const auto before = store().bookmarks();
    openPanel(*list->importButton());
    watch();

    respond(GTK_RESPONSE_CANCEL);

    ASSERT_TRUE(waitUntil([] { return panel() == nullptr; }));
    perchly::test::handlePendingEvents();
    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_THAT(events, IsEmpty());
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_FALSE(wasReloaded());
}

TEST_F(BookmarkPanelsTest, AFileChosenForAListThatIsGoneIsNotImported)
{
    writeFile(folder() / "chosen.json", { bookmarkNamed("Delta", "four.example") });
    openPanel(*list->importButton());
    chooseFile(folder() / "chosen.json");
    const std::weak_ptr<perchly::BookmarkListViewController> held = list;
    window->setContentViewController(nullptr);
    delegate->note = [](const std::string&) {};
    observation = {};
    list.reset();
    ASSERT_TRUE(waitUntil([&] { return held.expired(); }));

    ASSERT_TRUE(confirmPanel());

    EXPECT_THAT(store().bookmarks(), ElementsAre(alpha, beta, gamma));
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(BookmarkPanelsTest, ExportAsksForAPlaceAndSuggestsAName)
{
    openPanel(*list->exportButton());

    EXPECT_EQ(titleOfPanel(), "Export Bookmarks");
    EXPECT_EQ(toolkitFunction<GtkFileChooserAction (*)(GtkWindow*)>("gtk_file_chooser_get_action")(panel()),
        GTK_FILE_CHOOSER_ACTION_SAVE);
    const desktop::GLibPointer<> name(
        toolkitFunction<char* (*)(GtkWindow*)>("gtk_file_chooser_get_current_name")(panel()));
    EXPECT_STREQ(name.get(), "bookmarks_backup.json");
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BookmarkPanelsTest, AllBookmarksGoToTheChosenPlace)
{
    search("gamma");
    openPanel(*list->exportButton());
    choosePlace(folder() / "chosen.json");

    ASSERT_TRUE(confirmPanel());

    ASSERT_TRUE(waitUntil([&] { return sheet() != nullptr; }));
    EXPECT_EQ(contentsOf(folder() / "chosen.json"),
        BookmarkCollection::encode({ alpha, beta, gamma }, BookmarkCollection::Style::Indented).value());
    EXPECT_EQ(sheet()->messageText, "Export Successful");
}

TEST_F(BookmarkPanelsTest, OneIsOpenAtATime)
{
    const auto countPanels = [] {
        auto count = 0;
        (void)shownWindow([&](GtkWindow* each) {
            count += GTK_IS_FILE_CHOOSER(each) ? 1 : 0;
            return false;
        });
        return count;
    };
    openPanel(*list->importButton());

    for (const auto& button : { list->importButton(), list->exportButton() })
        button->performClick();
    perchly::test::handlePendingEvents();

    EXPECT_EQ(countPanels(), 1);
    respond(GTK_RESPONSE_CANCEL);
    ASSERT_TRUE(waitUntil([] { return panel() == nullptr; }));
    openPanel(*list->exportButton());
    EXPECT_EQ(titleOfPanel(), "Export Bookmarks");
}

TEST_F(BookmarkPanelsTest, ACancelledExportWritesNothingAndShowsNothing)
{
    openPanel(*list->exportButton());
    choosePlace(folder() / "chosen.json");

    close(panel());

    ASSERT_TRUE(waitUntil([] { return panel() == nullptr; }));
    perchly::test::handlePendingEvents();
    EXPECT_FALSE(std::filesystem::exists(folder() / "chosen.json"));
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(BookmarkPanelsTest, ClosingTheQuestionLeavesTheBookmark)
{
    const auto before = store().bookmarks();
    foundation::dispatchMainAsync([] {
        const auto isQuestion = [](GtkWindow* each) {
            const auto* title = gtk_window_get_title(each);
            return title && std::string_view(title) == "Delete Bookmark";
        };
        ASSERT_TRUE(waitUntil([&] { return shownWindow(isQuestion) != nullptr; }));
        close(shownWindow(isQuestion));
    });

    click(1, Delete);

    EXPECT_EQ(store().bookmarks(), before);
    EXPECT_THAT(shownTitles(), ElementsAre("Alpha", "Beta", "Gamma"));
}

} // namespace
