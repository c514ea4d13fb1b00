#include "support/linux/ChildProcesses.h"
#include "ui/DownloadTest.h"

#include <csignal>

namespace {

using perchly::test::childProcesses;
using perchly::test::waitUntil;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// The program that downloads, and is there only while something is to be downloaded.
class FetchProcessTest : public DownloadTest {
protected:
    FetchProcessTest() { server.serve("/", { .body = "home" }); }

    [[nodiscard]] static std::set<pid_t> fetchers() { return childProcesses("perchly-fetch"); }

    void downloadOnce() const
    {
        const auto done = download(server.url("/"));
        EXPECT_EQ(done->data(), "home");
    }

    /// Waits until the program has ended of itself.
    [[nodiscard]] static bool isGone()
    {
        return waitUntil([] { return fetchers().empty(); });
    }
};

TEST_F(FetchProcessTest, NoneRunsBeforeTheFirstDownloadAndOneForMany)
{
    EXPECT_THAT(fetchers(), IsEmpty());

    for (auto number = 0; number < 3; ++number)
        downloadOnce();

    EXPECT_THAT(fetchers(), SizeIs(1));
}

TEST_F(FetchProcessTest, ItEndsSomeSecondsAfterTheLastDownload)
{
    downloadOnce();
    const auto end = std::chrono::steady_clock::now();

    EXPECT_TRUE(waitUntil([] { return fetchers().empty(); }, seconds(8)));

    EXPECT_GE(std::chrono::steady_clock::now() - end, milliseconds(1000));
}

TEST_F(FetchProcessTest, ItStaysWhileADownloadWaits)
{
    server.serve("/never", { .body = "late", .hold = perchly::test::Hold::BeforeHead });
    const auto waiting = start(server.url("/never"));
    downloadOnce();
    const auto end = std::chrono::steady_clock::now() + seconds(5);
    ASSERT_TRUE(waitUntil([&] { return std::chrono::steady_clock::now() > end; }));

    EXPECT_THAT(fetchers(), SizeIs(1));
    server.release("/never");
    ASSERT_TRUE(isDone(waiting));
    EXPECT_EQ(waiting->data(), "late");
    EXPECT_TRUE(isGone());
}

TEST_F(FetchProcessTest, AnotherIsThereForTheNextDownload)
{
    downloadOnce();
    ASSERT_TRUE(isGone());

    downloadOnce();

    EXPECT_THAT(fetchers(), SizeIs(1));
}

TEST_F(FetchProcessTest, WhatMayBeKeptIsKnownToTheNextOne)
{
    server.serve("/kept", keptResponse());
    EXPECT_EQ(download(server.url("/kept"))->data(), "kept");
    ASSERT_TRUE(isGone());

    EXPECT_EQ(download(server.url("/kept"))->data(), "kept");

    EXPECT_EQ(server.requestCount("/kept"), 1U);
}

TEST_F(FetchProcessTest, KilledInBetweenItsDownloadsFailAndTheNextSucceeds)
{
    server.serve("/never", { .body = "late", .hold = perchly::test::Hold::BeforeHead });
    const auto first = start(server.url("/never"));
    const auto second = start(server.url("/never"));
    ASSERT_TRUE(waitUntil([&] { return server.requestCount("/never") == 2; }));

    for (const auto id : fetchers())
        ASSERT_EQ(kill(id, SIGKILL), 0);

    ASSERT_TRUE(isDone(first));
    ASSERT_TRUE(isDone(second));
    EXPECT_THAT(first->error(), Not(IsEmpty()));
    EXPECT_THAT(second->error(), Not(IsEmpty()));
    downloadOnce();
    EXPECT_EQ(first->calls(), 1);
}

TEST_F(FetchProcessTest, KilledAtRestItIsStartedAgain)
{
    for (auto time = 0; time < 3; ++time) {
        downloadOnce();
        for (const auto id : fetchers())
            ASSERT_EQ(kill(id, SIGKILL), 0);
        ASSERT_TRUE(isGone());
        perchly::test::handlePendingEvents();
    }

    downloadOnce();
}

TEST_F(FetchProcessTest, KilledAMomentBeforeADownloadThatIsToldOrDone)
{
    downloadOnce();
    for (const auto id : fetchers())
        ASSERT_EQ(kill(id, SIGKILL), 0);

    const auto next = start(server.url("/"));

    ASSERT_TRUE(isDone(next));
    EXPECT_TRUE(next->data() == "home" || !next->error().empty());
    EXPECT_EQ(next->calls(), 1);
    downloadOnce();
}

TEST_F(FetchProcessTest, WhatIsWrittenWithoutAFolderForItIsDownloadedAllTheSame)
{
    // A file where the folder would be.
    setenv("XDG_CACHE_HOME", "/dev/null", 1);

    downloadOnce();
}

} // namespace
