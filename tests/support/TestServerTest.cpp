#include "TestServer.h"

#include <gtest/gtest.h>

#include <array>
#include <future>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using perchly::test::Hold;
using perchly::test::TestServer;

// Asks as a browser would and returns all that came back.
std::string fetch(std::uint16_t port, const std::string& target, const std::string& fields = {})
{
    const int connection = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return "no connection";
    const auto request = "GET " + target + " HTTP/1.1\r\nHost: test\r\n" + fields + "\r\n";
    ::send(connection, request.data(), request.size(), MSG_NOSIGNAL);
    std::string answer;
    std::array<char, 4096> buffer {};
    while (true) {
        const auto count = ::recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            break;
        answer.append(buffer.data(), static_cast<std::size_t>(count));
    }
    ::close(connection);
    return answer;
}

TEST(TestServerTest, ServesItsPagesAndRecordsWhatWasAsked)
{
    TestServer server;
    server.servePage("/page", "<p>hello");

    const auto answer = fetch(server.port(), "/page?x=1", "User-Agent:  Finch/2 \r\n");

    EXPECT_TRUE(answer.starts_with("HTTP/1.1 200 OK\r\n"));
    EXPECT_TRUE(answer.ends_with("\r\n\r\n<p>hello"));
    ASSERT_EQ(server.requestCount("/page"), 1U);
    EXPECT_EQ(server.requests()[0].target, "/page?x=1");
    EXPECT_EQ(server.requests()[0].header("user-agent"), "Finch/2");
    EXPECT_EQ(server.requests()[0].header("Cookie"), "");
}

TEST(TestServerTest, AnswersAnUnknownPathWith404)
{
    TestServer server;

    EXPECT_TRUE(fetch(server.port(), "/nowhere").starts_with("HTTP/1.1 404 "));
}

TEST(TestServerTest, RedirectsWithALocation)
{
    TestServer server;
    server.serveRedirect("/old", server.url("/new"));

    const auto answer = fetch(server.port(), "/old");

    EXPECT_TRUE(answer.starts_with("HTTP/1.1 302 "));
    EXPECT_NE(answer.find("Location: " + server.url("/new")), std::string::npos);
}

TEST(TestServerTest, HoldsAResponseUntilItIsReleased)
{
    for (const auto hold : { Hold::BeforeHead, Hold::InBody }) {
        TestServer server;
        server.serve("/slow", { .body = "at last", .hold = hold });
        auto answer = std::async(std::launch::async, [&] { return fetch(server.port(), "/slow"); });
        ASSERT_TRUE(server.waitForRequests("/slow", 1));
        EXPECT_EQ(answer.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);

        server.release("/slow");

        EXPECT_TRUE(answer.get().ends_with("at last"));
    }
}

TEST(TestServerTest, EndsWhileAResponseIsHeld)
{
    auto server = std::make_unique<TestServer>();
    server->serve("/slow", { .body = "never", .hold = Hold::BeforeHead });
    auto answer = std::async(std::launch::async, [port = server->port()] { return fetch(port, "/slow"); });
    ASSERT_TRUE(server->waitForRequests("/slow", 1));

    server.reset();

    EXPECT_EQ(answer.wait_for(std::chrono::seconds(5)), std::future_status::ready);
}

TEST(TestServerTest, WaitingForARequestThatNeverComesFails)
{
    const TestServer server;

    EXPECT_FALSE(server.waitForRequests("/", 1, std::chrono::milliseconds(20)));
}

} // namespace
