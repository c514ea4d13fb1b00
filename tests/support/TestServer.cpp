#include "TestServer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace perchly::test {

namespace {

[[noreturn]] void die(const char* what)
{
    std::fprintf(stderr, "test server: %s: %s\n", what, std::strerror(errno));
    std::abort();
}

bool equalIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

const char* reasonFor(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 204:
        return "No Content";
    case 301:
        return "Moved Permanently";
    case 302:
        return "Found";
    case 404:
        return "Not Found";
    default:
        return "Status";
    }
}

// Reads up to the blank line that ends a request's head; nothing when the peer leaves first.
std::optional<std::string> readHead(int connection)
{
    constexpr std::size_t longestHead = 4U << 20U; // tests send addresses of a megabyte
    std::string head;
    std::array<char, 16384> buffer {};
    while (head.find("\r\n\r\n") == std::string::npos) {
        const auto count = ::recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0 || head.size() > longestHead)
            return std::nullopt;
        head.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return head;
}

std::optional<Request> parseHead(std::string_view head)
{
    Request request;
    auto lineEnd = head.find("\r\n");
    const auto line = head.substr(0, lineEnd);
    const auto space = line.find(' ');
    const auto lastSpace = line.rfind(' ');
    if (space == std::string_view::npos || lastSpace <= space)
        return std::nullopt;
    request.method = line.substr(0, space);
    request.target = line.substr(space + 1, lastSpace - space - 1);
    request.path = request.target.substr(0, request.target.find('?'));

    while (true) {
        const auto start = lineEnd + 2;
        lineEnd = head.find("\r\n", start);
        if (lineEnd == std::string_view::npos || lineEnd == start)
            return request;
        const auto field = head.substr(start, lineEnd - start);
        const auto colon = field.find(':');
        if (colon != std::string_view::npos)
            request.headers.emplace_back(trimmed(field.substr(0, colon)), trimmed(field.substr(colon + 1)));
    }
}

/// False when the browser went away, as browsers do.
bool sendAll(int connection, std::string_view text)
{
    while (!text.empty()) {
        const auto count = ::send(connection, text.data(), text.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string headOf(const Response& response)
{
    auto head = "HTTP/1.1 " + std::to_string(response.status) + ' ' + reasonFor(response.status) + "\r\n";
    head += "Content-Type: " + response.contentType + "\r\n";
    const auto hasOwn = [&](std::string_view name) {
        return std::ranges::any_of(response.headers, [name](const auto& header) { return header.first == name; });
    };
    if (!response.isEndless && !hasOwn("Content-Length"))
        head += "Content-Length: " + std::to_string(response.body.size()) + "\r\n";
    if (!hasOwn("Cache-Control"))
        head += "Cache-Control: no-store\r\n";
    head += "Connection: close\r\n";
    for (const auto& [name, value] : response.headers)
        head.append(name).append(": ").append(value).append("\r\n");
    return head + "\r\n";
}

} // namespace

std::string Request::header(std::string_view name) const
{
    for (const auto& [key, value] : headers) {
        if (equalIgnoringCase(key, name))
            return value;
    }
    return {};
}

TestServer::TestServer()
{
    listener_ = ::socket(AF_INET, SOCK_STREAM, 0);
    if (listener_ < 0)
        die("socket");
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), size) != 0 || ::listen(listener_, 64) != 0
        || ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
        die("listen");
    port_ = ntohs(address.sin_port);

    std::array<int, 2> pipe {};
    if (::pipe(pipe.data()) != 0)
        die("pipe");
    wakeReader_ = pipe[0];
    wakeWriter_ = pipe[1];
    // A program under test that this one starts must not keep the port.
    for (const int descriptor : { listener_, wakeReader_, wakeWriter_ })
        ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    acceptor_ = std::thread([this] { acceptConnections(); });
}

TestServer::~TestServer()
{
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
        for (const int connection : connections_)
            ::shutdown(connection, SHUT_RDWR);
    }
    changed_.notify_all();
    if (::write(wakeWriter_, "x", 1) != 1)
        die("wake");
    acceptor_.join();
    for (auto& worker : workers_)
        worker.join();
    for (const int descriptor : { listener_, wakeReader_, wakeWriter_ })
        ::close(descriptor);
}

std::string TestServer::url(std::string_view path) const
{
    return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
}

void TestServer::serve(std::string path, Response response)
{
    const std::lock_guard lock(mutex_);
    routes_.insert_or_assign(std::move(path), std::move(response));
}

void TestServer::servePage(std::string path, std::string html)
{
    Response response;
    response.body = std::move(html);
    serve(std::move(path), std::move(response));
}

void TestServer::serveRedirect(std::string path, std::string location, int status)
{
    Response response;
    response.status = status;
    response.headers.emplace_back("Location", std::move(location));
    serve(std::move(path), std::move(response));
}

void TestServer::setHandler(Handler handler)
{
    const std::lock_guard lock(mutex_);
    handler_ = std::move(handler);
}

void TestServer::release(const std::string& path)
{
    {
        const std::lock_guard lock(mutex_);
        released_[path] = true;
    }
    changed_.notify_all();
}

std::vector<Request> TestServer::requests() const
{
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t TestServer::requestCount(std::string_view path) const
{
    const std::lock_guard lock(mutex_);
    return countLocked(path);
}

void TestServer::clearRequests()
{
    const std::lock_guard lock(mutex_);
    requests_.clear();
}

bool TestServer::waitForRequests(std::string_view path, std::size_t count, std::chrono::milliseconds limit) const
{
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, limit, [&] { return countLocked(path) >= count; });
}

std::size_t TestServer::countLocked(std::string_view path) const
{
    return static_cast<std::size_t>(std::count_if(
        requests_.begin(), requests_.end(), [&](const Request& request) { return request.path == path; }));
}

void TestServer::acceptConnections()
{
    while (true) {
        std::array<pollfd, 2> waits { pollfd { listener_, POLLIN, 0 }, pollfd { wakeReader_, POLLIN, 0 } };
        if (::poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR)
            die("poll");
        if (waits[1].revents != 0)
            return;
        if ((waits[0].revents & POLLIN) == 0)
            continue;
        const int connection = ::accept(listener_, nullptr, nullptr);
        if (connection < 0)
            continue;
        ::fcntl(connection, F_SETFD, FD_CLOEXEC);
        const std::lock_guard lock(mutex_);
        if (isEnding_) {
            ::close(connection);
            return;
        }
        connections_.push_back(connection);
        workers_.emplace_back([this, connection] { serveConnection(connection); });
    }
}

void TestServer::serveConnection(int connection)
{
    if (const auto head = readHead(connection)) {
        if (const auto request = parseHead(*head)) {
            const auto response = answer(*request);
            respond(connection, *request, response);
        }
    }
    const std::lock_guard lock(mutex_);
    std::erase(connections_, connection);
    ::close(connection);
}

Response TestServer::answer(const Request& request)
{
    Handler handler;
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
        changed_.notify_all();
        if (const auto route = routes_.find(request.path); route != routes_.end())
            return route->second;
        handler = handler_;
    }
    if (handler)
        return handler(request);
    Response missing;
    missing.status = 404;
    missing.body = "<!doctype html><title>Not found</title><p>There is no such page.";
    return missing;
}

void TestServer::respond(int connection, const Request& request, const Response& response)
{
    if (response.hold == Hold::BeforeHead)
        waitForRelease(request.path);
    sendAll(connection, headOf(response));
    if (request.method == "HEAD")
        return;
    while (response.isEndless) {
        if (!sendAll(connection, response.body))
            return;
    }
    const auto body = std::string_view(response.body);
    const auto before = response.hold == Hold::InBody ? body.size() / 2 : body.size();
    sendAll(connection, body.substr(0, before));
    if (response.hold == Hold::InBody)
        waitForRelease(request.path);
    sendAll(connection, body.substr(before));
}

void TestServer::waitForRelease(const std::string& path)
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return isEnding_ || released_[path]; });
}

} // namespace perchly::test
