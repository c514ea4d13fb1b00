#include "platform/webkit/WebsiteDataStore.h"

#include "platform/linux/desktop/LateBinding.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/UnfinishedWork.h"
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

unsigned loadCount = 0;

/// A removal, until nothing comes late any more. Whoever calls it back keeps it.
class Removal : public std::enable_shared_from_this<Removal> {
public:
    Removal(WebKitNetworkSession* session, Work completionHandler)
        : session_(session)
        , completionHandler_(std::move(completionHandler))
    {
    }

    void begin()
    {
        work_.emplace([self = weak_from_this()] {
            if (const auto removal = self.lock())
                removal->hurry();
        });
        clear(session_, WEBKIT_WEBSITE_DATA_ALL, [self = shared_from_this()] { self->removeLate(); });
    }

private:
    void removeLate()
    {
        removeLeftovers(session_);
        responses_ = desktop::callAfter(responsesAreWritten, [self = shared_from_this()] {
            self->clearCaches([self] {
                self->responses_.reset();
                self->completionHandler_();
                if (self->isHurried_)
                    self->end();
            });
        });
        lists_ = desktop::callAfter(
            listsAreWritten, [self = shared_from_this()] { self->clearCaches([self] { self->end(); }); });
    }

    /// The lists that are not written yet are not written at all then.
    void hurry()
    {
        const auto waitsForListsAlone = lists_ && !responses_;
        if (!std::exchange(isHurried_, true) && waitsForListsAlone)
            clearCaches([self = shared_from_this()] { self->end(); });
    }

    /// The engine can't tell what is new in them, so a page that was loaded since keeps all.
    void clearCaches(Work done)
    {
        if (loadCount == loadCountAtBegin_)
            clear(session_, caches, std::move(done));
        else
            done();
    }

    void end()
    {
        const auto kept = shared_from_this();
        responses_.reset();
        lists_.reset();
        work_.reset();
    }

    WebKitNetworkSession* session_; // the store's, which is never destroyed
    Work completionHandler_;
    unsigned loadCountAtBegin_ = loadCount;
    bool isHurried_ = false;
    std::optional<desktop::UnfinishedWork> work_;
    desktop::SourceHandle responses_;
    desktop::SourceHandle lists_;
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
    std::make_shared<Removal>(native_->session.get(), std::move(completionHandler))->begin();
}

void keepWhatIsLoaded()
{
    ++loadCount;
}

} // namespace webkit
