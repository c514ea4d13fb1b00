#include "ui/WebViewTest.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using webkit::WebsiteDataStore;

/// What the pages below keep, so that it can be found on disk.
const std::string trace = "perchly-was-here";

/// Another name of the server, and so another site.
const std::string embedded = "localhost";

/// As the engine keeps the texts of scripts.
std::string inTwoBytes(const std::string& text)
{
    std::string wide;
    for (const auto letter : text)
        wide.append({ letter, '\0' });
    return wide;
}

bool isIn(const std::filesystem::directory_entry& entry, const std::string& text)
{
    if (entry.path().string().find(text) != std::string::npos)
        return true;
    if (!entry.is_regular_file())
        return false;
    std::ifstream file(entry.path());
    const std::string content { std::istreambuf_iterator<char>(file), {} };
    return content.find(text) != std::string::npos || content.find(inTwoBytes(text)) != std::string::npos;
}

/// The files of the user's that have the text in them or in their name.
std::vector<std::string> filesWith(const std::string& text)
{
    std::vector<std::string> found;
    for (const auto* variable : { "XDG_DATA_HOME", "XDG_CACHE_HOME" }) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(std::getenv(variable))) {
            if (isIn(entry, text))
                found.push_back(entry.path().string());
        }
    }
    return found;
}

/// Runs the code and then adds the mark to the page's title.
std::string thenMark(const std::string& promise, const std::string& mark)
{
    return promise + ".then(() => document.title += '" + mark + "'); 0";
}

/// A user who has been on a site that keeps things wherever a site can.
class WebsiteDataTest : public WebViewTest {
protected:
    WebsiteDataTest()
    {
        const std::pair<std::string, std::string> maximumAge { "Cache-Control", "max-age=3600" };
        server.serve("/",
            { .body = "<title>First</title>",
                .headers = { maximumAge, { "Set-Cookie", "kept=" + trace + "; Max-Age=3600" } } });
        server.serve("/worker.js",
            { .body = "// " + trace + "\nself.addEventListener('fetch', () => {});",
                .contentType = "text/javascript" });
        // Large enough to have a file of its own.
        server.serve("/cached",
            { .body = trace + std::string(100'000, '.'), .contentType = "text/plain", .headers = { maximumAge } });
    }

    /// Runs the script and waits until it has marked the page.
    void run(const std::string& script, const std::string& mark)
    {
        (void)valueOf(script);
        EXPECT_TRUE(waitForValue("String(document.title.includes('" + mark + "'))", "true")) << script;
    }

    void keepEverywhere()
    {
        open("/");
        const auto text = "'" + trace + "'";
        run("localStorage.setItem('kept', " + text + "); sessionStorage.setItem('kept', " + text
                + "); document.title += ' storage'",
            " storage");
        run("opening = indexedDB.open('kept', 1);"
            "opening.onupgradeneeded = () => opening.result.createObjectStore('kept').put("
                + text + ", 'kept'); opening.onsuccess = () => document.title += ' database'; 0",
            " database");
        run(thenMark(
                "navigator.serviceWorker.register('/worker.js').then(() => navigator.serviceWorker.ready)", " worker"),
            " worker");
        run(thenMark("caches.open('kept').then(cache => cache.add('/cached'))", " copy"), " copy");
        run(thenMark("fetch('/cached').then(response => response.text())", " fetched"), " fetched");
        // Tracking prevention takes notes of who is asked from whose pages.
        const auto elsewhere = "http://" + embedded + ":" + std::to_string(server.port()) + "/cached";
        run(thenMark("fetch('" + elsewhere + "', { mode: 'no-cors' })", " embedded"), " embedded");
    }

    /// All that is written late, too.
    [[nodiscard]] bool isAllOnDisk() const
    {
        constexpr const char* places[]
            = { "cookies", "serviceworkers", "LocalStorage", "IndexedDB", "CacheStorage", "/Blobs/" };
        return perchly::test::waitUntil([&] {
            const auto notes = filesWith(embedded);
            if (std::ranges::none_of(notes, [](const auto& file) { return file.find("/itp/") != file.npos; }))
                return false;
            const auto files = filesWith(trace);
            return std::ranges::all_of(places, [&](const auto* place) {
                return std::ranges::any_of(files, [&](const auto& file) { return file.find(place) != file.npos; });
            });
        });
    }

    void removeAllData()
    {
        auto calls = std::make_shared<int>(0);
        WebsiteDataStore::defaultDataStore()->removeAllData([calls] { ++*calls; });
        EXPECT_EQ(*calls, 0);
        EXPECT_TRUE(perchly::test::waitUntil([&] { return *calls > 0; }));
        perchly::test::handlePendingEvents();
        EXPECT_EQ(*calls, 1);
    }

    void openAFreshView()
    {
        webView
            = std::make_shared<webkit::WebView>(webkit::WebViewConfiguration { WebsiteDataStore::defaultDataStore() });
        webView->setNavigationDelegate(delegate);
        open("/");
    }

    /// The result of a promise.
    [[nodiscard]] std::string settled(const std::string& promise)
    {
        run("document.title = 'Promise'; "
                + thenMark(promise + ".then(value => { settledValue = String(value); })", " settled"),
            " settled");
        return valueOf("settledValue").value_or("");
    }
};

TEST_F(WebsiteDataTest, NothingOfASiteStaysOnDisk)
{
    keepEverywhere();
    ASSERT_TRUE(isAllOnDisk());

    removeAllData();

    EXPECT_THAT(filesWith(trace), IsEmpty());
    EXPECT_THAT(filesWith("127.0.0.1"), IsEmpty());
    EXPECT_THAT(filesWith(embedded), IsEmpty());
}

TEST_F(WebsiteDataTest, AFreshViewFindsNothing)
{
    keepEverywhere();

    removeAllData();

    server.clearRequests();
    openAFreshView();
    EXPECT_EQ(server.requestCount("/"), 1U);
    EXPECT_EQ(server.requests().front().header("Cookie"), "");
    EXPECT_EQ(valueOf("String(localStorage.getItem('kept'))"), "null");
    EXPECT_EQ(valueOf("String(sessionStorage.getItem('kept'))"), "null");
    EXPECT_EQ(settled("indexedDB.databases().then(all => all.length)"), "0");
    EXPECT_EQ(settled("navigator.serviceWorker.getRegistrations().then(all => all.length)"), "0");
    EXPECT_EQ(settled("caches.keys().then(all => all.length)"), "0");
    EXPECT_EQ(settled("fetch('/cached').then(response => response.text()).then(text => text.length)"),
        std::to_string(trace.size() + 100'000));
    EXPECT_EQ(server.requestCount("/cached"), 1U);
}

TEST_F(WebsiteDataTest, WhatIsWrittenLateGoesToo)
{
    keepEverywhere();
    const auto findsList = [] { return !filesWith("127.0.0.1").empty(); };

    removeAllData();

    EXPECT_TRUE(perchly::test::waitUntil(findsList));
    EXPECT_TRUE(perchly::test::waitUntil([&] { return !findsList(); }));
}

TEST_F(WebsiteDataTest, WhatIsLoadedSinceStays)
{
    keepEverywhere();
    removeAllData();
    openAFreshView();
    run(thenMark("fetch('/cached').then(response => response.text())", " fetched"), " fetched");
    const auto hasCopy = [] {
        const auto files = filesWith(trace);
        return std::ranges::any_of(files, [](const auto& file) { return file.find("WebKitCache") != file.npos; });
    };
    ASSERT_TRUE(perchly::test::waitUntil(hasCopy));

    // Until the last of what was loaded before would have been written.
    EXPECT_FALSE(perchly::test::waitUntil([&] { return !hasCopy(); }, std::chrono::seconds(9)));
}

TEST_F(WebsiteDataTest, AnOpenPageLosesWhatItHasKept)
{
    keepEverywhere();

    removeAllData();

    EXPECT_TRUE(waitForValue("String(localStorage.getItem('kept'))", "null"));
    EXPECT_EQ(valueOf("document.cookie"), "");
}

TEST_F(WebsiteDataTest, WhatIsKeptAfterwardsStaysAndCanBeRemovedAgain)
{
    keepEverywhere();
    removeAllData();

    (void)valueOf("localStorage.setItem('kept', '" + trace + "'); 0");
    ASSERT_TRUE(perchly::test::waitUntil([] { return !filesWith(trace).empty(); }));
    openAFreshView();
    EXPECT_EQ(valueOf("localStorage.getItem('kept')"), trace);
    removeAllData();

    EXPECT_THAT(filesWith(trace), Not(Contains(HasSubstr("LocalStorage"))));
    EXPECT_TRUE(waitForValue("String(localStorage.getItem('kept'))", "null"));
}

} // namespace
