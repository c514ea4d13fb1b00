#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace perchly::test {

/// What a browser asked for.
struct Request {
    std::string method;
    std::string target; // as it stood in the request line: path and query
    std::string path; // the target without its query
    std::vector<std::pair<std::string, std::string>> headers;

    /// The value of the header of that name, in any case; empty when there is none.
    [[nodiscard]] std::string header(std::string_view name) const;
};

/// When a response stops until the test lets it go on.
enum class Hold { Never, BeforeHead, InBody };

/// What the server answers. Headers "Content-Length" and "Cache-Control" (by default: not to be kept) of its own take
/// the usual ones' places.
struct Response {
    int status = 200;
    std::string body {}; // the braces let a test name only the fields it means
    std::string contentType = "text/html; charset=utf-8";
    std::vector<std::pair<std::string, std::string>> headers {};
    Hold hold = Hold::Never;
    bool isEndless = false; // the body again and again, of no stated length, until the client leaves
};

/// A web server for one test, on 127.0.0.1 and a free port, with a thread for each connection.
/// Records every request; what no route answers gets 404. Its end releases what it still holds.
class TestServer {
public:
    using Handler = std::function<Response(const Request&)>;

    TestServer();
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    [[nodiscard]] std::uint16_t port() const { return port_; }
    /// The address of a path on this server, such as "http://127.0.0.1:40123/index.html".
    [[nodiscard]] std::string url(std::string_view path = "/") const;

    /// A later route for the same path replaces the earlier one.
    void serve(std::string path, Response response);
    void servePage(std::string path, std::string html);
    void serveRedirect(std::string path, std::string location, int status = 302);
    /// Answers what has no route. Runs on the connections' threads.
    void setHandler(Handler handler);

    /// Lets all responses for this path go on, those that wait and those to come.
    void release(const std::string& path);

    [[nodiscard]] std::vector<Request> requests() const;
    [[nodiscard]] std::size_t requestCount(std::string_view path) const;
    void clearRequests();
    /// Waits until the path was asked for that many times; false when the time is over first.
    [[nodiscard]] bool waitForRequests(
        std::string_view path, std::size_t count, std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

private:
    void acceptConnections();
    void serveConnection(int connection);
    Response answer(const Request& request);
    void respond(int connection, const Request& request, const Response& response);
    void waitForRelease(const std::string& path);
    [[nodiscard]] std::size_t countLocked(std::string_view path) const;

    int listener_ = -1;
    int wakeReader_ = -1;
    int wakeWriter_ = -1;
    std::uint16_t port_ = 0;

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    bool isEnding_ = false;
    std::map<std::string, Response, std::less<>> routes_;
    std::map<std::string, bool, std::less<>> released_;
    Handler handler_;
    std::vector<Request> requests_;
    std::vector<int> connections_; // open ones, so that the end can cut them short
    std::vector<std::thread> workers_;
    std::thread acceptor_; // last: starts when all the rest is there
};

} // namespace perchly::test
