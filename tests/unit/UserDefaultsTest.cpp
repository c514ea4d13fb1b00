#include "platform/foundation/UserDefaults.h"
#include "CapturedStandardError.h"
#include "ChildProcess.h"
#include "TemporaryHome.h"
#include "bookmarks/Preferences.h"

#include <fstream>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace perchly::tests {

using foundation::UserDefaults;
using testing::HasSubstr;

/// Each step is a start of its own: the defaults are read once in a process.
class UserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] static std::string stored()
    {
        return inChildProcess([] {
            const auto value = UserDefaults::standard().stringForKey(preferences::homePageURL);
            return value ? "value: " + *value : "absent";
        });
    }

    static void store(const std::string& value)
    {
        EXPECT_EQ(inChildProcess([&] {
            UserDefaults::standard().setString(value, preferences::homePageURL);
            return UserDefaults::standard().stringForKey(preferences::homePageURL).value_or("absent");
        }),
            value);
    }

    void storeFile(std::string_view contents) const
    {
        std::filesystem::create_directories(home_.preferencesFile().parent_path());
        std::ofstream(home_.preferencesFile()) << contents;
    }

    TemporaryHome home_;
};

TEST_F(UserDefaultsTest, TheKeyIsTheOneOfTheHomePage)
{
    EXPECT_EQ(preferences::homePageURL, "HomePageURL");
}

TEST_F(UserDefaultsTest, AtFirstEverythingIsAbsentAndNoFileIsMade)
{
    EXPECT_EQ(stored(), "absent");
    EXPECT_FALSE(std::filesystem::exists(home_.preferencesFile()));
}

TEST_F(UserDefaultsTest, AValueIsWrittenAtOnceAndIsThereAtTheNextStart)
{
    store("https://example.org/");

    EXPECT_EQ(contentsOf(home_.preferencesFile()), "[Preferences]\nHomePageURL=https://example.org/\n");
    EXPECT_EQ(stored(), "value: https://example.org/");
}

TEST_F(UserDefaultsTest, AbsentAndEmptyDiffer)
{
    store("");

    EXPECT_EQ(stored(), "value: ");
}

TEST_F(UserDefaultsTest, AnyTextComesBackAsItWas)
{
    for (const std::string text :
        { " blanks ", "a;b\\c=d#e", "line\nbreak\ttab\r", "\xC3\xBC\xF0\x9F\x98\x80", "[group]" }) {
        store(text);
        EXPECT_EQ(stored(), "value: " + text);
    }
}

TEST_F(UserDefaultsTest, ARemovedValueIsAbsentAtOnceAndAtTheNextStart)
{
    store("https://example.org/");

    EXPECT_EQ(inChildProcess([] {
        UserDefaults::standard().removeObjectForKey(preferences::homePageURL);
        return UserDefaults::standard().stringForKey(preferences::homePageURL).value_or("absent");
    }),
        "absent");

    EXPECT_EQ(stored(), "absent");
}

TEST_F(UserDefaultsTest, RemovingWhatIsAbsentWritesNothing)
{
    EXPECT_EQ(inChildProcess([] {
        UserDefaults::standard().removeObjectForKey(preferences::homePageURL);
        return std::string("done");
    }),
        "done");

    EXPECT_FALSE(std::filesystem::exists(home_.preferencesFile()));
}

TEST_F(UserDefaultsTest, OtherKeysOfTheFileAreKept)
{
    storeFile("# by hand\n[Preferences]\nOther=1\n\n[Elsewhere]\nHomePageURL=no\n");
    EXPECT_EQ(stored(), "absent");

    store("yes");

    EXPECT_THAT(contentsOf(home_.preferencesFile()), HasSubstr("# by hand"));
    EXPECT_THAT(contentsOf(home_.preferencesFile()), HasSubstr("Other=1"));
    EXPECT_THAT(contentsOf(home_.preferencesFile()), HasSubstr("[Elsewhere]\nHomePageURL=no"));
}

TEST_F(UserDefaultsTest, ABrokenFileCountsAsEmptyAndIsReplaced)
{
    for (const std::string_view broken : { "HomePageURL=without a group", "[Preferences", "\xFF\xFE", "" }) {
        storeFile(broken);
        EXPECT_EQ(stored(), "absent");
        store("new");
        EXPECT_EQ(stored(), "value: new");
    }
}

TEST_F(UserDefaultsTest, AValueThatIsNotUTF8IsAbsent)
{
    storeFile("[Preferences]\nHomePageURL=\xFF\n");

    EXPECT_EQ(stored(), "absent");
}

TEST_F(UserDefaultsTest, APipeInTheFilesPlaceIsNotWaitedFor)
{
    std::filesystem::create_directories(home_.preferencesFile().parent_path());
    ASSERT_EQ(::mkfifo(home_.preferencesFile().c_str(), 0600), 0);

    EXPECT_EQ(stored(), "absent");
}

TEST_F(UserDefaultsTest, AFailedWriteIsLoggedAndTheValueStaysInMemory)
{
    std::ofstream(home_.path() / "config") << "in the way";

    const auto report = inChildProcess([] {
        const CapturedStandardError log;
        UserDefaults::standard().setString("new", preferences::homePageURL);
        return *UserDefaults::standard().stringForKey(preferences::homePageURL) + ": " + log.debugLines().at(0);
    });

    EXPECT_THAT(report, testing::StartsWith("new: DEBUG: UserDefaults - Save error: "));
}

} // namespace perchly::tests
