#include "platform/foundation/FileManager.h"
#include "TemporaryHome.h"
#include "UnprivilegedUser.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace perchly::tests {

using testing::EndsWith;

class FileManagerTest : public testing::Test {
protected:
    void expectUnreadable(const std::filesystem::path& path, const std::string& reason) const
    {
        const auto contents = files_.contentsOfFile(path);
        ASSERT_FALSE(contents);
        EXPECT_EQ(contents.error().localizedDescription, path.string() + ": " + reason);
    }

    void expectUnwritable(const std::filesystem::path& path, const std::string& reason) const
    {
        const auto written = files_.write("text", path);
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().localizedDescription, path.string() + ": " + reason);
    }

    TemporaryHome home_;
    const foundation::FileManager& files_ = foundation::FileManager::defaultManager();
};

TEST_F(FileManagerTest, TheSupportFolderIsWhereTheEnvironmentSays)
{
    const EnvironmentVariable data("XDG_DATA_HOME", "/somewhere/data");

    EXPECT_EQ(files_.applicationSupportDirectory(), "/somewhere/data");
}

TEST_F(FileManagerTest, WithoutAnAbsolutePathThereTheSupportFolderIsBelowTheHomeFolder)
{
    for (const std::optional<std::string>& named : { std::optional<std::string>(), { "" }, { "relative/data" } }) {
        const EnvironmentVariable data("XDG_DATA_HOME", named);
        EXPECT_EQ(files_.applicationSupportDirectory(), home_.path() / ".local/share");
    }
}

TEST_F(FileManagerTest, WithoutAHomeFolderThereIsNoSupportFolder)
{
    const EnvironmentVariable data("XDG_DATA_HOME", std::nullopt);
    const EnvironmentVariable home("HOME", "");

    EXPECT_EQ(files_.applicationSupportDirectory(), std::nullopt);
}

TEST_F(FileManagerTest, FilesAndFoldersExistWhereTheyAre)
{
    EXPECT_TRUE(files_.fileExists(home_.path()));
    EXPECT_TRUE(files_.fileExists(home_.fileHolding("")));
    EXPECT_FALSE(files_.fileExists(home_.path() / "missing"));
    EXPECT_FALSE(files_.fileExists(home_.fileHolding("") / "below-a-file"));
}

TEST_F(FileManagerTest, AFolderIsCreatedWithThoseAboveIt)
{
    const auto folder = home_.path() / "a" / "b" / "c";

    EXPECT_TRUE(files_.createDirectory(folder));
    EXPECT_TRUE(std::filesystem::is_directory(folder));
    EXPECT_TRUE(files_.createDirectory(folder));
}

TEST_F(FileManagerTest, AFolderBelowAFileIsNotCreated)
{
    const auto created = files_.createDirectory(home_.fileHolding("") / "folder");

    ASSERT_FALSE(created);
    EXPECT_THAT(created.error().localizedDescription, EndsWith(": Not a directory"));
}

TEST_F(FileManagerTest, AFileIsReadWholeWithTheSpareCapacityThatWasAskedFor)
{
    const auto bytes = std::string(100000, 'x') + std::string("\0\xFF\n", 3);
    for (const std::size_t padding : { 0u, 64u, 5000u }) {
        const auto contents = files_.contentsOfFile(home_.fileHolding(bytes), padding);
        ASSERT_TRUE(contents);
        EXPECT_EQ(contents.value(), bytes);
        EXPECT_GE(contents.value().capacity() - contents.value().size(), padding);
    }
}

TEST_F(FileManagerTest, AnEmptyFileIsAnEmptyText)
{
    EXPECT_EQ(files_.contentsOfFile(home_.fileHolding("")).value(), "");
}

TEST_F(FileManagerTest, AFileThatDoesNotKnowItsSizeIsReadWhole)
{
    const auto contents = files_.contentsOfFile("/proc/self/maps", 64);

    ASSERT_TRUE(contents);
    EXPECT_GT(contents.value().size(), 4096u);
    EXPECT_EQ(contents.value().back(), '\n');
}

TEST_F(FileManagerTest, WhatIsNoFileIsNotRead)
{
    const auto pipe = home_.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    expectUnreadable(home_.path() / "missing", "No such file or directory");
    expectUnreadable(home_.path(), "Is a directory");
    expectUnreadable(pipe, "Not a regular file");
    expectUnreadable("/dev/zero", "Not a regular file");
}

TEST_F(FileManagerTest, AGiantFileIsNotRead)
{
    const auto file = home_.fileHolding("");
    std::filesystem::resize_file(file, std::uintmax_t { 1 } << 40);

    expectUnreadable(file, "File too large");
}

TEST_F(FileManagerTest, AFileIsReadUpToTheSizeThatWasAllowed)
{
    const auto file = home_.fileHolding("0123456789");

    EXPECT_EQ(files_.contentsOfFile(file, 0, 10).value(), "0123456789");
    const auto refused = files_.contentsOfFile(file, 0, 9);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().localizedDescription, file.string() + ": File too large");
    EXPECT_FALSE(files_.contentsOfFile("/proc/self/maps", 0, 100));
}

TEST_F(FileManagerTest, AFileWithoutPermissionIsNotRead)
{
    const auto file = home_.fileHolding("secret");
    const UnprivilegedUser user(home_.path());
    if (!user.isActive())
        GTEST_SKIP() << "cannot become another user";
    std::filesystem::permissions(file, std::filesystem::perms::none);

    expectUnreadable(file, "Permission denied");
    expectUnwritable(file, "Permission denied");
}

TEST_F(FileManagerTest, WritingReplacesTheContentsInPlace)
{
    const auto file = home_.fileHolding("a longer text than before");
    std::filesystem::create_hard_link(file, home_.path() / "link");

    EXPECT_TRUE(files_.write("short", file));

    EXPECT_EQ(contentsOf(home_.path() / "link"), "short");
}

TEST_F(FileManagerTest, WritingCreatesTheFileAndTakesAnyBytes)
{
    const auto bytes = std::string(1'000'000, '\0') + "\xFF";

    EXPECT_TRUE(files_.write(bytes, home_.path() / "new"));
    EXPECT_EQ(contentsOf(home_.path() / "new"), bytes);
    EXPECT_TRUE(files_.write("", home_.path() / "new"));
    EXPECT_EQ(contentsOf(home_.path() / "new"), "");
}

TEST_F(FileManagerTest, WhatCannotBeWrittenIsReported)
{
    const auto pipe = home_.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);

    expectUnwritable(home_.path(), "Is a directory");
    expectUnwritable(home_.path() / "missing" / "file", "No such file or directory");
    expectUnwritable("/dev/full", "No space left on device");
    expectUnwritable(pipe, "No such device or address"); // nobody reads it
}

} // namespace perchly::tests
