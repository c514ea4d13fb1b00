#pragma once

#include "platform/webkit/WebView.h"
#include "platform/webkit/WebsiteDataStore.h"
#include "support/MainLoop.h"
#include "support/TestServer.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Notes what the view tells its delegates, and opens no window.
class RecordingWebViewDelegate : public webkit::NavigationDelegate, public webkit::UIDelegate {
public:
    void webViewDidFinishNavigation(webkit::WebView& webView) override
    {
        finished.push_back(webView.url() ? webView.url()->absoluteString() : "");
    }

    std::shared_ptr<webkit::WebView> createWebView(
        webkit::WebView& webView, const webkit::NavigationAction& action) override
    {
        EXPECT_FALSE(action.hasTargetFrame);
        windows.push_back(action.request.url.absoluteString());
        if (loadsWindowsHere)
            webView.load(action.request);
        return nullptr;
    }

    std::vector<std::string> finished;
    std::vector<std::string> windows;
    bool loadsWindowsHere = false;
};

/// A web view of its own, a web server, and a user who has never browsed.
class WebViewTest : public testing::Test {
protected:
    WebViewTest()
    {
        server.servePage("/", "<title>First</title><body>first</body>");
        server.servePage("/second", "<title>Second</title><body>second</body>");
        webView->setNavigationDelegate(delegate);
        webView->setUIDelegate(delegate);
    }

    void load(const std::string& address, std::chrono::milliseconds timeout = std::chrono::seconds(60))
    {
        webView->load({ *foundation::URL::parse(address), timeout });
    }

    [[nodiscard]] bool comesToRest()
    {
        return perchly::test::waitUntil([&] { return !webView->isLoading(); });
    }

    /// Loads the page and waits for its end.
    void open(std::string_view path)
    {
        const auto before = delegate->finished.size();
        load(server.url(path));
        ASSERT_TRUE(perchly::test::waitUntil([&] { return delegate->finished.size() > before; })) << path;
        ASSERT_EQ(address(), server.url(path));
    }

    [[nodiscard]] std::string address() const { return webView->url() ? webView->url()->absoluteString() : ""; }

    /// What the script comes to, as text; none where it fails.
    [[nodiscard]] std::optional<std::string> valueOf(std::string_view script)
    {
        auto answer = std::make_shared<std::optional<std::optional<std::string>>>();
        webView->evaluateJavaScript(script, [answer](std::optional<std::string> value) { *answer = std::move(value); });
        EXPECT_TRUE(perchly::test::waitUntil([&] { return answer->has_value(); })) << script;
        return answer->value_or(std::nullopt);
    }

    /// Waits until the script comes to that text.
    [[nodiscard]] bool waitForValue(std::string_view script, std::string_view text)
    {
        return perchly::test::waitUntil([&] { return valueOf(script) == text; });
    }

    perchly::test::UserFolders folders;
    perchly::test::TestServer server;
    std::shared_ptr<RecordingWebViewDelegate> delegate = std::make_shared<RecordingWebViewDelegate>();
    std::shared_ptr<webkit::WebView> webView = std::make_shared<webkit::WebView>(
        webkit::WebViewConfiguration { webkit::WebsiteDataStore::defaultDataStore() });
};
