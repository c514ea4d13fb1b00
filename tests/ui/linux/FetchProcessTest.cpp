#include "support/linux/ChildProcesses.h"
#include "ui/DownloadTest.h"

#include <gio/gio.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <mutex>

namespace {

using perchly::test::childProcesses;
using perchly::test::waitUntil;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr long mebibyte = 1024; // in kilobytes, as the system counts

/// A line of the process's status, in kilobytes.
long memoryOf(const std::string& process, const std::string& line)
{
    std::ifstream status("/proc/" + process + "/status");
    for (std::string word; status >> word;) {
        long value = 0;
        if (word == line + ":" && status >> value)
            return value;
    }
    return 0;
}

/// The most that it has ever held, from now on.
void forgetPeak(const std::string& process)
{
    std::ofstream("/proc/" + process + "/clear_refs") << "5";
}

/// As a server sends it that packs its answers.
std::string packed(const std::string& text)
{
    auto* compressor = G_CONVERTER(g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, 9));
    std::string result;
    std::string buffer(std::size_t { 64 } << 10U, '\0');
    gsize taken = 0;
    for (auto state = G_CONVERTER_CONVERTED; state != G_CONVERTER_FINISHED;) {
        gsize read = 0;
        gsize written = 0;
        state = g_converter_convert(compressor, text.data() + taken, text.size() - taken, buffer.data(), buffer.size(),
            G_CONVERTER_INPUT_AT_END, &read, &written, nullptr);
        EXPECT_NE(state, G_CONVERTER_ERROR);
        if (state == G_CONVERTER_ERROR)
            break;
        taken += read;
        result.append(buffer, 0, written);
    }
    g_object_unref(compressor);
    return result;
}

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

TEST_F(FetchProcessTest, AnAnswerThatUnpacksToMoreThanADownloadMayHoldIsAnError)
{
    const auto serve = [this](const char* path, std::size_t size) {
        server.serve(path, { .body = packed(std::string(size, 'x')), .headers = { { "Content-Encoding", "gzip" } } });
    };
    constexpr auto most = std::size_t { 16 } << 20U;
    serve("/most", most);
    serve("/more", most + 1);
    serve("/bomb", 40 * most);

    EXPECT_EQ(download(server.url("/most"))->data().size(), most);
    EXPECT_EQ(download(server.url("/more"))->error(), "The download is too large");
    EXPECT_EQ(download(server.url("/bomb"))->error(), "The download is too large");
    EXPECT_LT(memoryOf(std::to_string(*fetchers().begin()), "VmHWM"), 100 * mebibyte);
}

TEST_F(FetchProcessTest, ManyLargeDownloadsDoNotFillTheMemory)
{
    constexpr auto count = 40;
    const auto file = std::filesystem::path(std::getenv("XDG_DATA_HOME")) / "large";
    std::ofstream(file).put('x');
    std::filesystem::resize_file(file, std::uintmax_t { 15 } << 20U);
    const auto url = foundation::URL::parse("file://" + file.string());
    downloadOnce();
    const auto fetcher = std::to_string(*fetchers().begin());
    const auto before = memoryOf("self", "VmRSS");
    forgetPeak("self");
    std::mutex oneAtATime;
    std::atomic<int> complete = 0;

    for (auto number = 0; number < count; ++number) {
        foundation::URLSession::sharedSession().dataTask(
            { .url = *url }, [&](const foundation::Result<std::string>& data) {
                // Takes the time that decoding takes.
                const std::scoped_lock lock(oneAtATime);
                std::this_thread::sleep_for(milliseconds(200));
                complete += data && data.value().size() == std::size_t { 15 } << 20U ? 1 : 0;
            });
    }
    ASSERT_TRUE(waitUntil([&] { return complete == count; }, seconds(40)));

    EXPECT_LT(memoryOf("self", "VmHWM") - before, 100 * mebibyte);
    EXPECT_LT(memoryOf(fetcher, "VmHWM"), 180 * mebibyte);
    EXPECT_TRUE(waitUntil([&] { return memoryOf("self", "VmRSS") - before < 8 * mebibyte; }));
}

TEST_F(FetchProcessTest, WhatIsWrittenWithoutAFolderForItIsDownloadedAllTheSame)
{
    // A file where the folder would be.
    setenv("XDG_CACHE_HOME", "/dev/null", 1);

    downloadOnce();
}

} // namespace
