#pragma once

#include "bookmarks/BookmarkCollection.h"
#include "ui/BookmarkListTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

/// What the list reads and writes for the user.
class BookmarkTransferTest : public BookmarkListTest {
protected:
    [[nodiscard]] static std::filesystem::path folder() { return std::getenv("XDG_DATA_HOME"); }

    [[nodiscard]] static std::filesystem::path fileHolding(std::string_view contents)
    {
        auto file = folder() / "import.json";
        std::ofstream(file, std::ios::binary) << contents;
        return file;
    }

    [[nodiscard]] static std::string contentsOf(const std::filesystem::path& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    [[nodiscard]] static std::filesystem::path storeFile() { return folder() / "Perchly" / "bookmarks.json"; }

    [[nodiscard]] static std::string indented(const std::vector<perchly::Bookmark>& bookmarks)
    {
        return perchly::BookmarkCollection::encode(bookmarks, perchly::BookmarkCollection::Style::Indented).value();
    }

    /// Checks the sheet on the list's window, and answers it.
    void expectSheet(appkit::AlertStyle style, std::string_view message, std::string_view details) const
    {
        ASSERT_NE(sheet(), nullptr);
        EXPECT_EQ(sheet()->style, style);
        EXPECT_EQ(sheet()->messageText, message);
        EXPECT_EQ(sheet()->informativeText, details);
        EXPECT_THAT(sheet()->buttonTitles, testing::IsEmpty());
        EXPECT_EQ(appkit::Alert::running(), nullptr);
        sheet()->performClick(0);
        EXPECT_EQ(sheet(), nullptr);
    }

    void importFile(const std::filesystem::path& file)
    {
        watch();
        list->importBookmarks(file);
    }

    /// As a notice, and announced after the list has been reloaded.
    void expectImport() const
    {
        EXPECT_THAT(events, testing::ElementsAre("announced after the reload"));
        EXPECT_THAT(storeAtEvents, testing::ElementsAre(store().bookmarks()));
        expectSheet(appkit::AlertStyle::Warning, "Import Successful", "Bookmarks have been imported successfully.");
    }

    void expectNoImport(const std::filesystem::path& file)
    {
        const auto before = store().bookmarks();
        const auto wasStored = contentsOf(storeFile());

        importFile(file);

        expectSheet(
            appkit::AlertStyle::Critical, "Import Failed", "The file could not be read. Please check the format.");
        EXPECT_THAT(events, testing::IsEmpty());
        EXPECT_FALSE(wasReloaded());
        EXPECT_EQ(store().bookmarks(), before);
        EXPECT_EQ(contentsOf(storeFile()), wasStored);
    }

    void expectNoImportOf(std::string_view contents)
    {
        SCOPED_TRACE(contents.substr(0, 200));
        expectNoImport(fileHolding(contents));
    }

    void exportTo(const std::filesystem::path& file)
    {
        watch();
        std::filesystem::remove(storeFile());
        const auto before = store().bookmarks();
        const auto selected = table().selectedRow();

        list->exportBookmarks(file);

        EXPECT_EQ(store().bookmarks(), before);
        EXPECT_FALSE(std::filesystem::exists(storeFile()));
        EXPECT_THAT(events, testing::IsEmpty());
        EXPECT_EQ(table().selectedRow(), selected);
    }

    void expectExport() const
    {
        expectSheet(appkit::AlertStyle::Warning, "Export Successful", "Your bookmarks have been saved as a JSON file.");
    }

    void expectNoExport() const
    {
        expectSheet(appkit::AlertStyle::Critical, "Export Failed", "The file could not be saved.");
    }
};
