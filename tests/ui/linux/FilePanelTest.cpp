#include "platform/linux/appkit/FilePanel.h"

#include "platform/appkit/Alert.h"
#include "platform/appkit/Button.h"
#include "platform/appkit/OpenPanel.h"
#include "platform/foundation/DispatchQueue.h"
#include "platform/linux/desktop/GObject.h"
#include "platform/linux/desktop/X11Property.h"
#include "platform/linux/desktop/X11Window.h"
#include "support/UserFolders.h"
#include "support/linux/ScreenPointer.h"
#include "support/linux/ToolkitFunction.h"
#include "ui/ContentWindow.h"

#include <gdk/x11/gdkx.h>

#include <X11/Xatom.h>

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

    [[nodiscard]] static std::filesystem::path folder() { return std::getenv("XDG_DATA_HOME"); }

    /// Confirms the panel there, once it has read the folder, and answers a question that follows.
    void saveInFolder()
    {
        const auto pathFrom = [](const char* getter) -> std::filesystem::path {
            const auto file = desktop::adopt(toolkitFunction<GFile* (*)(GtkWindow*)>(getter)(shownPanel()));
            const desktop::GLibPointer<> path(file ? g_file_get_path(file.get()) : nullptr);
            return path ? path.get() : "";
        };
        // It goes to a folder of its own choice first.
        ASSERT_TRUE(waitUntil([&] { return !pathFrom("gtk_file_chooser_get_current_folder").empty(); }));
        const auto place = desktop::adopt(g_file_new_for_path(folder().c_str()));
        using SetFolder = gboolean(GtkWindow*, GFile*, GError**);
        toolkitFunction<SetFolder*>("gtk_file_chooser_set_current_folder")(shownPanel(), place.get(), nullptr);
        using SetName = void(GtkWindow*, const char*);
        toolkitFunction<SetName*>("gtk_file_chooser_set_current_name")(shownPanel(), save.nameFieldStringValue.c_str());
        const auto wanted = folder() / save.nameFieldStringValue;
        ASSERT_TRUE(waitUntil([&] { return pathFrom("gtk_file_chooser_get_file") == wanted; }));
        lookForQuestion();
        respond(GTK_RESPONSE_ACCEPT);
        EXPECT_TRUE(waitUntil([&] { return !answers.given.empty(); }));
        look_.reset();
    }

    /// Nobody else comes to it while the question waits.
    void lookForQuestion()
    {
        look_ = desktop::callAfter(10, [this] {
            if (auto* alert = appkit::Alert::running())
                answerTo(*alert);
            else
                lookForQuestion();
        });
    }

    std::function<void(appkit::Alert&)> answerTo = [](appkit::Alert& alert) { alert.performClick(1); };
    perchly::test::UserFolders folders;
    Answers answers;
    OpenPanel open;
    SavePanel save;

private:
    desktop::SourceHandle look_;
};

TEST_F(FilePanelTest, HasItsTitleAndStandsBeforeTheWindow)
{
    open.begin(answers.handler());

    waitForPanel();
    const std::string title = gtk_window_get_title(shownPanel());
    EXPECT_EQ(title, "Import Bookmarks");
    EXPECT_NE(gtk_window_get_transient_for(shownPanel()), nullptr);
    EXPECT_THAT(answers.given, testing::IsEmpty());
}

TEST_F(FilePanelTest, LeavesOtherWindowsUsable)
{
    struct Receiver {
        void receive() { ++count; }
        int count = 0;
    };
    const auto receiver = std::make_shared<Receiver>();
    const auto button = appkit::Button::withTitle("Other", { "receive", std::weak_ptr(receiver), &Receiver::receive });
    const auto other = appkit::Window::create({ { 20, 20 }, contentSize }, appkit::WindowStyleMask::Titled);
    const auto otherContent = std::make_shared<Content>();
    other->setContentViewController(otherContent);
    otherContent->view()->addSubview(button);
    appkit::activateConstraints({
        button->leadingAnchor().equalTo(otherContent->view()->leadingAnchor()),
        button->topAnchor().equalTo(otherContent->view()->topAnchor()),
    });
    open.begin(answers.handler());
    waitForPanel();

    other->makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&] { return other->isKeyWindow() && button->frame().size.width > 0; }));
    perchly::test::ScreenPointer pointer;
    ASSERT_TRUE(pointer.moveTo(perchly::test::middleOf(*button)));
    pointer.press();
    pointer.release();

    EXPECT_TRUE(waitUntil([&] { return receiver->count == 1; }));
    other->close();
}

TEST_F(FilePanelTest, HasTheProgramsIcon)
{
    open.begin(answers.handler());

    waitForPanel();
    auto* display = gdk_display_get_default();
    const auto id = desktop::X11Window(GTK_WIDGET(shownPanel())).id();
    EXPECT_NE(desktop::X11Property(display, id, "_NET_WM_ICON", XA_CARDINAL, 2).values(), nullptr);
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

TEST_F(FilePanelTest, ANameWithoutASuffixGetsThatOfItsType)
{
    save.nameFieldStringValue = "backup";
    save.begin(answers.handler());
    waitForPanel();

    saveInFolder();

    EXPECT_THAT(answers.given, testing::ElementsAre(std::optional(folder() / "backup.json")));
}

TEST_F(FilePanelTest, ANameWithAnotherSuffixKeepsIt)
{
    save.nameFieldStringValue = "backup.txt";
    save.begin(answers.handler());
    waitForPanel();

    saveInFolder();

    EXPECT_THAT(answers.given, testing::ElementsAre(std::optional(folder() / "backup.txt")));
}

TEST_F(FilePanelTest, AsksBeforeItReplacesAFileByItsSuffix)
{
    std::ofstream(folder() / "backup.json") << "{}";
    save.nameFieldStringValue = "backup";
    for (const auto answer : { 0U, 1U }) {
        answers.given.clear();
        save.begin(answers.handler());
        waitForPanel();
        std::string question;
        answerTo = [&](appkit::Alert& alert) {
            question = alert.messageText;
            alert.performClick(answer);
        };

        saveInFolder();

        EXPECT_THAT(question, testing::HasSubstr("backup.json"));
        const auto chosen = answer == 0 ? std::optional(folder() / "backup.json") : std::nullopt;
        EXPECT_THAT(answers.given, testing::ElementsAre(chosen));
    }
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
