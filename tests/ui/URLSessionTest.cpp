#include "ui/DownloadTest.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using perchly::test::Hold;
using perchly::test::TestServer;
using perchly::test::waitUntil;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::IsEmpty;
using testing::Not;

constexpr std::size_t mebibyte = std::size_t { 1 } << 20U;

/// A port whose queue of connections is full, so that the system takes no other.
class FullListener {
public:
    FullListener()
    {
        sockaddr_in address {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* name = reinterpret_cast<sockaddr*>(&address);
        const auto listener = newSocket();
        EXPECT_EQ(bind(listener, name, size), 0);
        EXPECT_EQ(listen(listener, 0), 0);
        EXPECT_EQ(getsockname(listener, name, &size), 0);
        port_ = ntohs(address.sin_port);
        for (auto number = 0; number < 8; ++number)
            (void)connect(newSocket(), name, size); // under way, or refused: either will do
    }
    ~FullListener()
    {
        for (const auto descriptor : sockets_)
            close(descriptor);
    }
    FullListener(const FullListener&) = delete;
    FullListener& operator=(const FullListener&) = delete;

    [[nodiscard]] std::string url() const { return "http://127.0.0.1:" + std::to_string(port_) + "/"; }

private:
    int newSocket()
    {
        sockets_.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        return sockets_.back();
    }

    std::vector<int> sockets_;
    unsigned port_ = 0;
};

class URLSessionTest : public DownloadTest {
protected:
    /// How long that takes from now on.
    [[nodiscard]] static milliseconds timeOf(const std::function<void()>& work)
    {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
    }

    [[nodiscard]] static std::string errorOf(const SharedDownload& download)
    {
        EXPECT_EQ(download->data(), "");
        EXPECT_EQ(download->calls(), 1);
        return download->error();
    }

    [[nodiscard]] static std::filesystem::path fileNamed(const char* name)
    {
        return std::filesystem::path(std::getenv("XDG_DATA_HOME")) / name;
    }
};

TEST_F(URLSessionTest, BringsTheBytesAsTheyAre)
{
    std::string bytes;
    for (auto value = 0; value < 512; ++value)
        bytes += static_cast<char>(value);
    server.serve("/bytes", { .body = bytes, .contentType = "text/plain" });

    const auto done = download(server.url("/bytes"));

    EXPECT_EQ(done->data(), bytes);
    EXPECT_EQ(done->error(), "");
    EXPECT_EQ(done->calls(), 1);
}

TEST_F(URLSessionTest, AnEmptyAnswerIsNoError)
{
    server.serve("/empty", { .body = "" });

    const auto done = download(server.url("/empty"));

    EXPECT_EQ(done->data(), "");
    EXPECT_EQ(done->error(), "");
}

TEST_F(URLSessionTest, CompletesOnAnotherThread)
{
    server.serve("/", { .body = "home" });

    EXPECT_NE(download(server.url("/"))->thread(), std::this_thread::get_id());
    EXPECT_NE(download("data:,text")->thread(), std::this_thread::get_id());
    EXPECT_NE(download("stranger:address")->thread(), std::this_thread::get_id());
}

TEST_F(URLSessionTest, ASlowHandlerHoldsUpNeitherTheMainLoopNorTheNext)
{
    server.serve("/", { .body = "home" });
    std::atomic<bool> mayEnd = false;
    std::atomic<bool> hasEnded = false;
    foundation::URLSession::sharedSession().dataTask(
        requestFor(server.url("/")), [&](const foundation::Result<std::string>&) {
            mayEnd.wait(false);
            hasEnded = true;
        });

    EXPECT_EQ(download(server.url("/"))->data(), "home");

    EXPECT_FALSE(hasEnded);
    mayEnd = true;
    mayEnd.notify_all();
    EXPECT_TRUE(waitUntil([&] { return hasEnded.load(); }));
}

TEST_F(URLSessionTest, HeaderFieldsTakeTheUsualOnesPlace)
{
    server.serve("/", { .body = "home" });
    auto request = requestFor(server.url("/"));
    request.headerFields = { { "User-Agent", "Mine/1.0 (a; b)" }, { "X-Colour", "red" } };

    (void)download(request);
    (void)download(server.url("/"));

    EXPECT_EQ(server.requests()[0].header("User-Agent"), "Mine/1.0 (a; b)");
    EXPECT_EQ(server.requests()[0].header("X-Colour"), "red");
    EXPECT_EQ(server.requests()[0].method, "GET");
    EXPECT_NE(server.requests()[1].header("User-Agent"), "Mine/1.0 (a; b)");
    EXPECT_EQ(server.requests()[1].header("X-Colour"), "");
}

TEST_F(URLSessionTest, FollowsRedirectsWithTheHeaderFields)
{
    TestServer other;
    other.serve("/there", { .body = "arrived" });
    server.serveRedirect("/moved", "/again", 301);
    server.serveRedirect("/again", other.url("/there"), 307);
    auto request = requestFor(server.url("/moved"));
    request.headerFields = { { "User-Agent", "Mine/1.0" } };

    EXPECT_EQ(download(request)->data(), "arrived");

    EXPECT_EQ(other.requests().front().header("User-Agent"), "Mine/1.0");
}

TEST_F(URLSessionTest, RedirectsWithoutAnEndAreAnError)
{
    server.serveRedirect("/round", server.url("/round"));

    EXPECT_THAT(errorOf(download(server.url("/round"))), Not(IsEmpty()));
}

TEST_F(URLSessionTest, NoRedirectLeadsIntoTheFileSystem)
{
    const auto file = fileNamed("secret");
    std::ofstream(file) << "secret";
    server.serveRedirect("/moved", "file://" + file.string());

    EXPECT_NE(download(server.url("/moved"))->data(), "secret");
}

TEST_F(URLSessionTest, AnyStatusIsAnAnswer)
{
    for (const auto status : { 404, 500, 403, 410 }) {
        server.serve("/picture", { .status = status, .body = "picture", .contentType = "image/png" });
        const auto done = download(server.url("/picture"));
        EXPECT_EQ(done->data(), "picture") << status;
        EXPECT_EQ(done->error(), "") << status;
    }
}

TEST_F(URLSessionTest, ARefusedConnectionIsAnError)
{
    const auto address = TestServer().url("/"); // that server has gone

    EXPECT_THAT(errorOf(download(address)), Not(IsEmpty()));
}

TEST_F(URLSessionTest, AServerHasAMinuteUnlessAskedOtherwise)
{
    EXPECT_EQ(requestFor(server.url("/")).timeoutInterval, seconds(60));
}

TEST_F(URLSessionTest, AServerThatNeverAnswersIsGivenUp)
{
    server.serve("/never", { .body = "late", .hold = Hold::BeforeHead });
    auto request = requestFor(server.url("/never"));
    request.timeoutInterval = milliseconds(300);

    const auto time = timeOf([&] { EXPECT_EQ(errorOf(download(request)), "The request timed out."); });

    EXPECT_GE(time, milliseconds(300));
    EXPECT_LT(time, seconds(5));
}

TEST_F(URLSessionTest, AServerThatStopsInTheMiddleIsGivenUp)
{
    server.serve("/half", { .body = "both halves", .hold = Hold::InBody });
    auto request = requestFor(server.url("/half"));
    request.timeoutInterval = milliseconds(300);

    EXPECT_EQ(errorOf(download(request)), "The request timed out.");
}

TEST_F(URLSessionTest, AnAnswerCutShortIsAnError)
{
    server.serve("/half", { .body = "half", .headers = { { "Content-Length", "8" } } });
    server.serve("/nothing", { .body = "", .headers = { { "Content-Length", "8" } } });

    EXPECT_THAT(errorOf(download(server.url("/half"))), Not(IsEmpty()));
    EXPECT_THAT(errorOf(download(server.url("/nothing"))), Not(IsEmpty()));
}

TEST_F(URLSessionTest, OneThatIsSilentDoesNotHoldUpTheOthers)
{
    server.serve("/never", { .body = "late", .hold = Hold::BeforeHead });
    server.serve("/quick", { .body = "quick" });
    const auto silent = start(server.url("/never"));
    ASSERT_TRUE(isAskedFor("/never"));

    EXPECT_EQ(download(server.url("/quick"))->data(), "quick");

    EXPECT_FALSE(silent->isDone());
    server.release("/never");
    ASSERT_TRUE(isDone(silent));
    EXPECT_EQ(silent->data(), "late");
}

TEST_F(URLSessionTest, WhatWaitsForOthersOfItsHostIsNotGivenUp)
{
    constexpr auto count = 40;
    server.setHandler([](const auto& request) {
        std::this_thread::sleep_for(milliseconds(200));
        return perchly::test::Response { .body = request.path };
    });
    std::vector<SharedDownload> downloads;
    downloads.reserve(count);
    for (auto number = 0; number < count; ++number) {
        auto request = requestFor(server.url("/" + std::to_string(number)));
        request.timeoutInterval = milliseconds(700);
        downloads.push_back(start(request));
    }

    for (auto number = 0; number < count; ++number) {
        const auto& one = downloads[static_cast<std::size_t>(number)];
        ASSERT_TRUE(isDone(one));
        EXPECT_EQ(one->data(), "/" + std::to_string(number)) << one->error();
    }
}

TEST_F(URLSessionTest, SixAtATimeAreAskedOfAHostAndTheSilentOnesMakeRoom)
{
    server.serve("/never", { .body = "late", .hold = Hold::BeforeHead });
    server.serve("/quick", { .body = "quick" });
    auto request = requestFor(server.url("/never"));
    request.timeoutInterval = milliseconds(500);
    std::vector<SharedDownload> silent;
    silent.reserve(6);
    for (auto number = 0; number < 6; ++number)
        silent.push_back(start(request));
    ASSERT_TRUE(isAskedFor("/never", 6));

    EXPECT_EQ(download(server.url("/quick"))->data(), "quick");

    for (const auto& one : silent)
        EXPECT_EQ(errorOf(one), "The request timed out.");
}

TEST_F(URLSessionTest, AServerThatNeverTakesTheConnectionIsGivenUp)
{
    const FullListener listener;
    auto request = requestFor(listener.url());
    request.timeoutInterval = milliseconds(500);

    EXPECT_EQ(errorOf(download(request)), "The request timed out.");
}

TEST_F(URLSessionTest, ADownloadOfUpToSixteenMebibytesIsTaken)
{
    server.serve("/large", { .body = std::string(16 * mebibyte, 'x') });

    EXPECT_EQ(download(server.url("/large"))->data().size(), 16 * mebibyte);
}

TEST_F(URLSessionTest, ALargerDownloadIsAnError)
{
    server.serve("/larger", { .body = std::string(16 * mebibyte + 1, 'x') });
    server.serve("/huge", { .body = std::string(50 * mebibyte, 'x') });

    EXPECT_THAT(errorOf(download(server.url("/larger"))), Not(IsEmpty()));
    EXPECT_THAT(errorOf(download(server.url("/huge"))), Not(IsEmpty()));
}

TEST_F(URLSessionTest, ADownloadWithoutEndIsAnError)
{
    server.serve("/endless", { .body = std::string(mebibyte, 'x'), .isEndless = true });

    EXPECT_THAT(errorOf(download(server.url("/endless"))), Not(IsEmpty()));
}

TEST_F(URLSessionTest, AnAddressMayHoldItsData)
{
    EXPECT_EQ(download("data:text/plain;base64,aGVsbG8=")->data(), "hello");
    EXPECT_EQ(download("data:,a%20b")->data(), "a b");
    EXPECT_EQ(download("data:,")->error(), "");
}

TEST_F(URLSessionTest, AnAddressOfMoreThanADownloadMayHoldIsAnErrorAndHarmsNoOther)
{
    server.serve("/other", { .body = "other" });
    const auto other = start(server.url("/other"));

    EXPECT_THAT(errorOf(download("data:," + std::string(25 * mebibyte, 'x'))), Not(IsEmpty()));

    ASSERT_TRUE(isDone(other));
    EXPECT_EQ(other->data(), "other");
}

TEST_F(URLSessionTest, AFileIsReadFromItsFolder)
{
    const auto file = fileNamed("a file");
    std::ofstream(file) << "from the disk";

    EXPECT_EQ(download("file://" + file.string())->data(), "from the disk");
}

TEST_F(URLSessionTest, AFileThatIsMissingOrNoneIsAnError)
{
    const auto pipe = fileNamed("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const auto& path : { fileNamed("missing"), fileNamed(""), pipe, std::filesystem::path("/dev/zero") })
        EXPECT_THAT(errorOf(download("file://" + path.string())), Not(IsEmpty())) << path;
}

TEST_F(URLSessionTest, AnUnknownSchemeIsAnError)
{
    for (const auto* address : { "stranger:address", "stranger://host/", "about:blank", "http:nohost" })
        EXPECT_THAT(errorOf(download(std::string(address))), Not(IsEmpty())) << address;
}

TEST_F(URLSessionTest, ManyAtOnceAllArriveAtTheRightHandler)
{
    constexpr auto count = 200;
    server.setHandler([](const auto& request) { return perchly::test::Response { .body = request.path }; });
    std::vector<SharedDownload> downloads;
    downloads.reserve(count);
    for (auto number = 0; number < count; ++number)
        downloads.push_back(start(server.url("/" + std::to_string(number))));

    for (auto number = 0; number < count; ++number) {
        ASSERT_TRUE(isDone(downloads[static_cast<std::size_t>(number)]));
        EXPECT_EQ(downloads[static_cast<std::size_t>(number)]->data(), "/" + std::to_string(number));
    }
}

TEST_F(URLSessionTest, ManyLongAddressesAtOnceBringTheirData)
{
    constexpr auto count = 50;
    const std::string text(300000, 'x');
    std::vector<SharedDownload> downloads;
    const auto time = timeOf([&] {
        for (auto number = 0; number < count; ++number)
            downloads.push_back(start("data:," + std::to_string(number % 10) + text));
    });

    for (auto number = 0; number < count; ++number) {
        const auto& one = downloads[static_cast<std::size_t>(number)];
        ASSERT_TRUE(isDone(one));
        EXPECT_EQ(one->data(), std::to_string(number % 10) + text);
    }
    EXPECT_LT(time, seconds(5));
}

TEST_F(URLSessionTest, TheMainLoopTurnsWhileMuchIsDownloaded)
{
    server.serve("/large", { .body = std::string(15 * mebibyte, 'x') });
    std::vector<SharedDownload> downloads;
    downloads.reserve(8);
    for (auto number = 0; number < 8; ++number)
        downloads.push_back(start(server.url("/large")));

    auto longest = milliseconds(0);
    auto latest = std::chrono::steady_clock::now();
    const auto allAreDone = [&] {
        const auto now = std::chrono::steady_clock::now();
        longest = std::max(longest, std::chrono::duration_cast<milliseconds>(now - latest));
        latest = now;
        return std::ranges::all_of(downloads, &Download::isDone);
    };
    ASSERT_TRUE(waitUntil(allAreDone, seconds(40)));

    EXPECT_LT(longest, milliseconds(250));
}

TEST_F(URLSessionTest, WhatMayBeKeptIsAskedForOnce)
{
    server.serve("/kept", keptResponse());

    EXPECT_EQ(download(server.url("/kept"))->data(), "kept");

    // It is kept a moment after it has come.
    auto isKept = false;
    for (auto time = 0; time < 50 && !isKept; ++time) {
        const auto before = server.requestCount("/kept");
        EXPECT_EQ(download(server.url("/kept"))->data(), "kept");
        isKept = server.requestCount("/kept") == before;
    }
    EXPECT_TRUE(isKept);
}

TEST_F(URLSessionTest, WhatMayNotBeKeptIsAskedForAgain)
{
    server.serve("/fresh", { .body = "fresh" });

    EXPECT_EQ(download(server.url("/fresh"))->data(), "fresh");
    EXPECT_EQ(download(server.url("/fresh"))->data(), "fresh");

    EXPECT_EQ(server.requestCount("/fresh"), 2U);
}

} // namespace
