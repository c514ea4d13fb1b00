#include "platform/webkit/WebsiteDataStore.h"

#include "platform/linux/desktop/LateBinding.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/foundation/UserDirectory.h"
#include "platform/linux/webkit/EngineWidget.h"
#include "platform/linux/webkit/StorageFolders.h"
#include "platform/linux/webkit/WebsiteDataStoreNative.h"

namespace webkit {
namespace {

/// The folder of the engine's own below a user directory, for the user alone; none where it can't be made.
std::optional<std::filesystem::path> engineDirectory(const char* variable, const char* pathBelowHome)
{
    auto directory = foundation::userDirectory(variable, pathBelowHome);
    if (!directory)
        return std::nullopt;
    *directory /= "Perchly/WebKit";
    if (g_mkdir_with_parents(directory->c_str(), 0700) != 0)
        return std::nullopt;
    return directory;
}

desktop::ObjectPointer<WebKitNetworkSession> makeSession()
{
    limitNetworkMemory();
    const auto data = engineDirectory("XDG_DATA_HOME", ".local/share");
    const auto cache = engineDirectory("XDG_CACHE_HOME", ".cache");
    if (!data || !cache)
        return desktop::adopt(webkit_network_session_new_ephemeral());

    auto session = desktop::adopt(webkit_network_session_new(data->c_str(), cache->c_str()));
    // Without this cookies would live in memory alone.
    webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session.get()),
        (*data / "cookies.sqlite").c_str(), WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
    return session;
}

std::unique_ptr<WebsiteDataStore::Native> makeStore()
{
    desktop::loadToolkit();
    desktop::loadLibrary(desktop::LateLibrary::Engine);
    auto session = makeSession();
    webkit_network_session_set_itp_enabled(session.get(), TRUE);
    auto downloads = desktop::connect<void(WebKitDownload*)>(
        session.get(), "download-started", [](WebKitDownload* download) { webkit_download_cancel(download); });
    return std::make_unique<WebsiteDataStore::Native>(
        WebsiteDataStore::Native { std::move(session), std::move(downloads) });
}

using Work = std::function<void()>;

void deleteWork(gpointer work)
{
    delete static_cast<Work*>(work);
}

void runAfter(unsigned milliseconds, Work work)
{
    const auto run = +[](gpointer data) -> gboolean {
        (*static_cast<Work*>(data))();
        return G_SOURCE_REMOVE;
    };
    g_timeout_add_full(G_PRIORITY_DEFAULT, milliseconds, run, new Work(std::move(work)), deleteWork);
}

/// Removes data of those kinds, of whatever time.
void clear(WebKitNetworkSession* session, WebKitWebsiteDataTypes kinds, Work done)
{
    const auto finish = +[](GObject* manager, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Work> work(static_cast<Work*>(data));
        webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr);
        (*work)();
    };
    webkit_website_data_manager_clear(
        webkit_network_session_get_website_data_manager(session), kinds, 0, nullptr, finish, new Work(std::move(done)));
}

void removeLeftovers(WebKitNetworkSession* session)
{
    auto* manager = webkit_network_session_get_website_data_manager(session);
    const auto* folder = webkit_website_data_manager_get_base_data_directory(manager);
    if (!folder)
        return;
    removeEmptyStorage(folder);
    // What tracking prevention has noted is deleted, but stays in the log of its database. Switched off it lets go of
    // that, and on again it begins a new one.
    webkit_network_session_set_itp_enabled(session, FALSE);
    removeTrackingNotes(folder);
    webkit_network_session_set_itp_enabled(session, TRUE);
}

/// What was loaded shortly before the removal comes to the disk after it: responses a second later, lists of what a
/// page is made of some seconds later.
constexpr auto responsesAreWritten = 1500U;
constexpr auto listsAreWritten = 8000U;
constexpr auto caches
    = static_cast<WebKitWebsiteDataTypes>(WEBKIT_WEBSITE_DATA_MEMORY_CACHE | WEBKIT_WEBSITE_DATA_DISK_CACHE);

} // namespace

std::shared_ptr<WebsiteDataStore> WebsiteDataStore::defaultDataStore()
{
    // Never destroyed: at exit the engine takes its own globals down before ours.
    static auto& store = *new std::shared_ptr<WebsiteDataStore>(new WebsiteDataStore(makeStore()));
    return store;
}

WebsiteDataStore::WebsiteDataStore(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

WebsiteDataStore::~WebsiteDataStore() = default;

void WebsiteDataStore::removeAllData(std::function<void()> completionHandler)
{
    // The session is the store's, which is never destroyed.
    auto* session = native_->session.get();
    clear(session, WEBKIT_WEBSITE_DATA_ALL, [session, done = std::move(completionHandler)] {
        removeLeftovers(session);
        runAfter(responsesAreWritten, [session, done] { clear(session, caches, done); });
        runAfter(listsAreWritten, [session] { clear(session, caches, [] {}); });
    });
}

} // namespace webkit
