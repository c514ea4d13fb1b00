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

/// One that is under way.
struct Removal {
    desktop::ObjectPointer<WebKitNetworkSession> session;
    std::function<void()> completionHandler;
};

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
    auto* session = native_->session.get();
    // The notes that tracking prevention takes of each site go only with their database.
    webkit_network_session_set_itp_enabled(session, FALSE);
    constexpr GTimeSpan ofWhateverTime = 0;
    const auto finish = +[](GObject* manager, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Removal> removal(static_cast<Removal*>(data));
        webkit_website_data_manager_clear_finish(WEBKIT_WEBSITE_DATA_MANAGER(manager), result, nullptr);
        webkit_network_session_set_itp_enabled(removal->session.get(), TRUE);
        if (const auto* folder
            = webkit_website_data_manager_get_base_data_directory(WEBKIT_WEBSITE_DATA_MANAGER(manager)))
            removeEmptyStorage(folder);
        removal->completionHandler();
    };
    webkit_website_data_manager_clear(webkit_network_session_get_website_data_manager(session), WEBKIT_WEBSITE_DATA_ALL,
        ofWhateverTime, nullptr, finish, new Removal { desktop::retain(session), std::move(completionHandler) });
}

} // namespace webkit
