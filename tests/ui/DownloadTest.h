#pragma once

#include "platform/foundation/URLSession.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <ctime>
#include <memory>
#include <string>
#include <thread>

/// Downloads of a user who has downloaded nothing before, and a server for them.
class DownloadTest : public testing::Test {
protected:
    /// One download and what came of it.
    class Download {
    public:
        [[nodiscard]] bool isDone() const { return calls_ > 0; }
        [[nodiscard]] int calls() const { return calls_; }
        /// Once it is done.
        [[nodiscard]] const std::string& data() const { return data_; }
        /// Empty where there was none.
        [[nodiscard]] const std::string& error() const { return error_; }
        [[nodiscard]] std::thread::id thread() const { return thread_; }

        void finish(const foundation::Result<std::string>& result)
        {
            if (result)
                data_ = result.value();
            else
                error_ = result.error().localizedDescription;
            thread_ = std::this_thread::get_id();
            ++calls_; // last, for whoever waits
        }

    private:
        std::string data_;
        std::string error_;
        std::thread::id thread_;
        std::atomic<int> calls_ = 0;
    };

    using SharedDownload = std::shared_ptr<Download>;

    [[nodiscard]] static foundation::URLRequest requestFor(const std::string& address)
    {
        return { .url = *foundation::URL::parse(address) };
    }

    [[nodiscard]] static SharedDownload start(const foundation::URLRequest& request)
    {
        auto download = std::make_shared<Download>();
        foundation::URLSession::sharedSession().dataTask(
            request, [download](const foundation::Result<std::string>& result) { download->finish(result); });
        return download;
    }

    [[nodiscard]] static SharedDownload start(const std::string& address) { return start(requestFor(address)); }

    [[nodiscard]] static bool isDone(
        const SharedDownload& download, std::chrono::milliseconds deadline = std::chrono::seconds(15))
    {
        return perchly::test::waitUntil([&] { return download->isDone(); }, deadline);
    }

    /// To its end.
    [[nodiscard]] static SharedDownload download(const foundation::URLRequest& request)
    {
        auto started = start(request);
        EXPECT_TRUE(isDone(started)) << request.url.absoluteString();
        return started;
    }

    [[nodiscard]] static SharedDownload download(const std::string& address) { return download(requestFor(address)); }

    /// Waits, handling events, until the server was asked for the path that many times.
    [[nodiscard]] bool isAskedFor(std::string_view path, std::size_t count = 1) const
    {
        return perchly::test::waitUntil([&] { return server.requestCount(path) >= count; });
    }

    /// One that may be kept for an hour.
    [[nodiscard]] static perchly::test::Response keptResponse()
    {
        const auto now = std::time(nullptr);
        char date[64];
        std::strftime(date, sizeof date, "%a, %d %b %Y %H:%M:%S GMT", std::gmtime(&now));
        return { .body = "kept", .headers = { { "Date", date }, { "Cache-Control", "max-age=3600" } } };
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
};
