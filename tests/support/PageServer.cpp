// Serves the pages of a folder on a free port of 127.0.0.1, for tests that run a whole program.
//   perchly_page_server FOLDER LOG
// Prints the port as its first line. Appends the lines "METHOD TARGET" and "User-Agent: ..." to LOG for each
// request. A page named slow* stays open until /release is asked for. It is a service for icons of sites as well: each
// has the one in favicon.svg. Ends when its standard input does.

#include "TestServer.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <memory>
#include <mutex>

namespace {

using perchly::test::Hold;
using perchly::test::Request;
using perchly::test::Response;
using perchly::test::TestServer;

std::string textOf(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>() };
}

std::string contentTypeOf(const std::filesystem::path& file)
{
    if (file.extension() == ".svg")
        return "image/svg+xml";
    if (file.extension() == ".css")
        return "text/css";
    return "text/html; charset=utf-8";
}

class Pages {
public:
    Pages(std::filesystem::path folder, const std::filesystem::path& log, TestServer& server)
        : folder_(std::move(folder))
        , log_(log, std::ios::app)
        , server_(server)
    {
    }

    Response answer(const Request& request)
    {
        note(request);
        if (request.path == "/release")
            return releaseAll();
        return page(request);
    }

private:
    void note(const Request& request)
    {
        const std::lock_guard lock(mutex_);
        // Flushed at once: others read along.
        log_ << request.method << ' ' << request.target << "\nUser-Agent: " << request.header("User-Agent")
             << std::endl;
    }

    Response releaseAll()
    {
        for (const auto& request : server_.requests())
            server_.release(request.path);
        return { .body = "released" };
    }

    Response page(const Request& request)
    {
        // Only plain names: no folder, nothing above this one.
        auto name = request.path.substr(1);
        if (name.empty())
            name = "index.html";
        if (name == "s2/favicons")
            name = "favicon.svg";
        if (name.find('.') == std::string::npos)
            name += ".html";
        const auto file = folder_ / name;
        if (name.find('/') != std::string::npos || !std::filesystem::is_regular_file(file))
            return { .status = 404, .body = "<!doctype html><title>Not found</title><p>There is no such page." };
        Response response { .body = textOf(file), .contentType = contentTypeOf(file) };
        if (name.starts_with("slow"))
            response.hold = Hold::BeforeHead;
        return response;
    }

    std::filesystem::path folder_;
    std::mutex mutex_;
    std::ofstream log_;
    TestServer& server_;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("usage: perchly_page_server FOLDER LOG\n", stderr);
        return 2;
    }
    auto server = std::make_unique<TestServer>();
    Pages pages(argv[1], argv[2], *server);
    server->setHandler([&pages](const Request& request) { return pages.answer(request); });
    std::cout << server->port() << std::endl;
    std::cin.ignore(std::numeric_limits<std::streamsize>::max());
    server.reset(); // before the pages that its threads use
    return 0;
}
