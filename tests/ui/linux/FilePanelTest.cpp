#include "platform/linux/appkit/FilePanel.h"

#include "platform/appkit/OpenPanel.h"
#include "platform/linux/desktop/GObject.h"
#include "support/UserFolders.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/ContentWindow.h"

#include <fstream>

namespace {

using appkit::OpenPanel;
using appkit::SavePanel;
using perchly::test::toolkitFunction;
using perchly::test::waitUntil;

/// What a panel's handler was called with.
struct Answers {
    SavePanel::CompletionHandler handler()
    {
        return [this](std::optional<std::filesystem::path> path) { given.push_back(std::move(path)); };
    }

    std::vector<std::optional<std::filesystem::path>> given;
};

/// Panels for files in front of a window. There is no portal here, so they are windows of the toolkit.
class FilePanelTest : public ContentWindowTest {
protected:
    FilePanelTest()
    {
        showWindow(content());
        open.title = "Import Bookmarks";
        save.title = "Export Bookmarks";
        save.nameFieldStringValue = "backup.json";
    }
    void TearDown() override
    {
        appkit::cancelFilePanels();
        ContentWindowTest::TearDown();
    }

    /// The panel's window, or null.
    [[nodiscard]] static GtkWindow* shownPanel()
    {
        GtkWindow* shown = nullptr;
        auto* windows = gtk_window_list_toplevels();
        for (auto* link = windows; link; link = link->next) {
            if (GTK_IS_FILE_CHOOSER(link->data) && gtk_widget_get_mapped(GTK_WIDGET(link->data)))
                shown = GTK_WINDOW(link->data);
        }
        g_list_free(windows);
        return shown;
    }

    void waitForPanel()
    {
        ASSERT_TRUE(waitUntil([] { return shownPanel() != nullptr; }));
    }

    static void respond(int response)
    {
        toolkitFunction<void (*)(GtkWindow*, int)>("gtk_dialog_response")(shownPanel(), response);
    }

    static bool chooseFile(const std::filesystem::path& path)
    {
        const auto file = desktop::adopt(g_file_new_for_path(path.c_str()));
        using Choose = gboolean(GtkWindow*, GFile*, GError**);
        return toolkitFunction<Choose*>("gtk_file_chooser_set_file")(shownPanel(), file.get(), nullptr);
    }

    [[nodiscard]] static std::string suggestedName()
    {
        const desktop::GLibPointer<> name(
            toolkitFunction<char* (*)(GtkWindow*)>("gtk_file_chooser_get_current_name")(shownPanel()));
        return name ? name.get() : "";
    }

    perchly::test::UserFolders folders;
    Answers answers;
    OpenPanel open;
    SavePanel save;
};

TEST_F(FilePanelTest, HasItsTitleAndStandsBeforeTheWindow)
{
    open.begin(answers.handler());

    waitForPanel();
    const std::string title = gtk_window_get_title(shownPanel());
    EXPECT_EQ(title, "Import Bookmarks");
    EXPECT_TRUE(gtk_window_get_modal(shownPanel()));
    EXPECT_NE(gtk_window_get_transient_for(shownPanel()), nullptr);
    EXPECT_THAT(answers.given, testing::IsEmpty());
}

TEST_F(FilePanelTest, CancellingNamesNoFile)
{
    open.begin(answers.handler());
    waitForPanel();

    respond(GTK_RESPONSE_CANCEL);

    EXPECT_TRUE(waitUntil([&] { return !answers.given.empty(); }));
    EXPECT_THAT(answers.given, testing::ElementsAre(std::nullopt));
    EXPECT_TRUE(waitUntil([] { return shownPanel() == nullptr; }));
}

TEST_F(FilePanelTest, ClosingTheWindowNamesNoFile)
{
    save.begin(answers.handler());
    waitForPanel();

    toolkitFunction<void (*)(GtkWindow*)>("gtk_window_close")(shownPanel());

    EXPECT_TRUE(waitUntil([&] { return !answers.given.empty(); }));
    EXPECT_THAT(answers.given, testing::ElementsAre(std::nullopt));
}

TEST_F(FilePanelTest, NamesTheChosenFile)
{
    const auto path = std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "chosen.json";
    std::ofstream(path) << "{}";
    open.begin(answers.handler());
    waitForPanel();
    ASSERT_TRUE(chooseFile(path));

    // The panel reads the folder first.
    const auto isAnswered = waitUntil([&] {
        if (shownPanel())
            respond(GTK_RESPONSE_ACCEPT);
        return !answers.given.empty();
    });

    EXPECT_TRUE(isAnswered);
    EXPECT_THAT(answers.given, testing::ElementsAre(std::optional(path)));
}

TEST_F(FilePanelTest, SuggestsAName)
{
    save.begin(answers.handler());
    waitForPanel();

    EXPECT_EQ(suggestedName(), "backup.json");
}

TEST_F(FilePanelTest, QuittingCancelsEveryPanel)
{
    open.begin(answers.handler());
    save.begin(answers.handler());
    waitForPanel();

    appkit::cancelFilePanels();

    EXPECT_THAT(answers.given, testing::ElementsAre(std::nullopt, std::nullopt));
    EXPECT_TRUE(waitUntil([] { return shownPanel() == nullptr; }));
    appkit::cancelFilePanels();
    EXPECT_EQ(answers.given.size(), 2U);
}

} // namespace
