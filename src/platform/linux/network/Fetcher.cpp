// perchly-fetch CACHE-FOLDER
// Downloads what it is asked for on its standard input and answers on its standard output, in the order of arrival,
// until the input ends. A program of its own, so that an idle Perchly holds neither HTTP nor TLS, and an answer from
// outside can hurt nothing there.
#include "platform/linux/network/Messages.h"

#include <gio/gunixinputstream.h>
#include <gio/gunixoutputstream.h>
#include <libsoup/soup.h>

#include <array>
#include <cstdio>
#include <map>

namespace {

using desktop::ErrorPointer;
using desktop::ObjectPointer;
using namespace desktop::fetching;

constexpr gsize chunkSize = gsize { 64 } << 10U;
/// However slowly a server drips.
constexpr unsigned longestDownload = 5U * 60U * 1000U;
constexpr unsigned cacheSize = 10U << 20U;
/// Some hosts that never answer must not hold up all the others.
constexpr int mostConnections = 32;
constexpr int mostOfOneHost = 6;

struct FreeUri {
    void operator()(GUri* uri) const { g_uri_unref(uri); }
};

class Fetcher;

/// One download, from the request to the answer.
class Download {
public:
    Download(Fetcher& fetcher, GVariant* request);
    ~Download() { g_cancellable_cancel(cancellable_.get()); }
    Download(const Download&) = delete;
    Download& operator=(const Download&) = delete;

    void start(SoupSession* session);

private:
    void startHttp(SoupSession* session, GUri* uri);
    void startFile(const std::string& address);
    void startData(const std::string& address);
    void takeStream(GInputStream* stream);
    void readOn();
    void takeChunk(GBytes* chunk);
    [[nodiscard]] bool isCutShort() const;
    void begin();
    void wait();
    void finish(const std::string& error);

    Fetcher& fetcher_;
    std::uint64_t number_ = 0;
    std::string address_;
    unsigned patience_ = 0;
    desktop::VariantPointer headers_;
    ObjectPointer<GCancellable> cancellable_ = desktop::adopt(g_cancellable_new());
    ObjectPointer<SoupMessage> message_; // null where HTTP has no part in it
    ObjectPointer<GInputStream> stream_;
    std::string data_;
    desktop::SourceHandle silence_;
    desktop::SourceHandle deadline_;
    std::array<desktop::SignalConnection, 2> signsOfLife_;
};

class Fetcher {
public:
    explicit Fetcher(const char* cacheFolder);
    ~Fetcher();
    Fetcher(const Fetcher&) = delete;
    Fetcher& operator=(const Fetcher&) = delete;

    void run() { g_main_loop_run(loop_); }
    /// Ends the download.
    void answer(std::uint64_t number, const std::string& error, const std::string& data);

private:
    void take(desktop::VariantPointer request);

    GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
    ObjectPointer<SoupSession> session_;
    ObjectPointer<SoupCache> cache_;
    std::map<std::uint64_t, std::unique_ptr<Download>> downloads_;
    std::unique_ptr<MessageReader> reader_;
};

Download::Download(Fetcher& fetcher, GVariant* request)
    : fetcher_(fetcher)
{
    const char* address = nullptr;
    GVariant* headers = nullptr;
    g_variant_get(request, "(t&su@a(ss))", &number_, &address, &patience_, &headers);
    address_ = address;
    headers_.reset(headers);
}

void Download::start(SoupSession* session)
{
    ErrorPointer error;
    const std::unique_ptr<GUri, FreeUri> uri(
        g_uri_parse(address_.c_str(), static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS), error.out()));
    if (!uri)
        return finish(error.message());
    const std::string_view scheme = g_uri_get_scheme(uri.get());
    if (scheme == "http" || scheme == "https")
        return startHttp(session, uri.get());
    begin();
    if (scheme == "file")
        return startFile(address_);
    if (scheme == "data")
        return startData(address_);
    finish("unsupported URL");
}

void Download::startHttp(SoupSession* session, GUri* uri)
{
    message_ = desktop::adopt(soup_message_new_from_uri(SOUP_METHOD_GET, uri));
    auto* message = message_.get();
    soup_message_add_flags(message, SOUP_MESSAGE_COLLECT_METRICS);
    // Not the session's, which would take the place of any that was asked for.
    soup_message_headers_replace(soup_message_get_request_headers(message), "User-Agent", "Perchly");
    GVariantIter iterator;
    g_variant_iter_init(&iterator, headers_.get());
    const char* name = nullptr;
    const char* value = nullptr;
    while (g_variant_iter_next(&iterator, "(&s&s)", &name, &value))
        soup_message_headers_replace(soup_message_get_request_headers(message), name, value);
    // The first one comes when it is the message's turn: until then it waits for others, and not for its server.
    signsOfLife_ = {
        desktop::connect<void(GSocketClientEvent, GIOStream*)>(
            message, "network-event", [this](auto, auto*) { begin(); }),
        desktop::connect<void()>(message, "starting", [this] { begin(); }),
    };
    const auto sent = +[](GObject* source, GAsyncResult* result, gpointer data) {
        ErrorPointer error;
        auto* stream = soup_session_send_finish(SOUP_SESSION(source), result, error.out());
        // Cancelled: the download is over.
        if (error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        auto* self = static_cast<Download*>(data);
        if (!stream)
            return self->finish(error.message());
        self->takeStream(stream);
    };
    soup_session_send_async(session, message, G_PRIORITY_DEFAULT, cancellable_.get(), sent, this);
}

void Download::startFile(const std::string& address)
{
    const auto file = desktop::adopt(g_file_new_for_uri(address.c_str()));
    ErrorPointer error;
    const auto information = desktop::ObjectPointer<GFileInfo>(
        g_file_query_info(file.get(), G_FILE_ATTRIBUTE_STANDARD_TYPE, G_FILE_QUERY_INFO_NONE, nullptr, error.out()));
    if (!information)
        return finish(error.message());
    // A pipe or a device might keep us waiting.
    if (g_file_info_get_file_type(information.get()) != G_FILE_TYPE_REGULAR)
        return finish("That is not a file");
    auto* stream = g_file_read(file.get(), nullptr, error.out());
    if (!stream)
        return finish(error.message());
    takeStream(G_INPUT_STREAM(stream));
}

void Download::startData(const std::string& address)
{
    auto* bytes = soup_uri_decode_data_uri(address.c_str(), nullptr);
    if (!bytes)
        return finish("bad URL");
    takeStream(g_memory_input_stream_new_from_bytes(bytes));
    g_bytes_unref(bytes);
}

void Download::takeStream(GInputStream* stream)
{
    stream_ = desktop::adopt(stream);
    readOn();
}

void Download::readOn()
{
    wait();
    const auto read = +[](GObject* source, GAsyncResult* result, gpointer data) {
        ErrorPointer error;
        auto* chunk = g_input_stream_read_bytes_finish(G_INPUT_STREAM(source), result, error.out());
        // Cancelled: the download is over.
        if (error.matches(G_IO_ERROR, G_IO_ERROR_CANCELLED))
            return;
        auto* self = static_cast<Download*>(data);
        if (!chunk)
            return self->finish(error.message());
        self->takeChunk(chunk);
        g_bytes_unref(chunk);
    };
    g_input_stream_read_bytes_async(stream_.get(), chunkSize, G_PRIORITY_DEFAULT, cancellable_.get(), read, this);
}

void Download::takeChunk(GBytes* chunk)
{
    gsize size = 0;
    const auto* bytes = static_cast<const char*>(g_bytes_get_data(chunk, &size));
    if (size == 0)
        return finish(isCutShort() ? "The connection was lost" : "");
    if (data_.size() + size > largestDownload)
        return finish("The download is too large");
    data_.append(bytes, size);
    readOn();
}

/// A server that goes in the middle looks like one that has come to its end.
bool Download::isCutShort() const
{
    if (!message_)
        return false;
    auto* headers = soup_message_get_response_headers(message_.get());
    if (soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH)
        return false;
    const auto received
        = soup_message_metrics_get_response_body_bytes_received(soup_message_get_metrics(message_.get()));
    const auto isFromCache = received == 0 && !data_.empty();
    return !isFromCache && received < static_cast<guint64>(soup_message_headers_get_content_length(headers));
}

/// What has begun must go on, and come to its end.
void Download::begin()
{
    wait();
    if (!deadline_)
        deadline_ = desktop::callAfter(longestDownload, [this] { finish("The download takes too long"); });
}

/// For the next sign of life.
void Download::wait()
{
    silence_ = desktop::callAfter(patience_, [this] { finish("The request timed out."); });
}

void Download::finish(const std::string& error)
{
    fetcher_.answer(number_, error, error.empty() ? data_ : std::string());
}

Fetcher::Fetcher(const char* cacheFolder)
    : session_(desktop::adopt(
        soup_session_new_with_options("max-conns", mostConnections, "max-conns-per-host", mostOfOneHost, nullptr)))
    , cache_(desktop::adopt(soup_cache_new(cacheFolder, SOUP_CACHE_SINGLE_USER)))
{
    soup_session_add_feature(session_.get(), SOUP_SESSION_FEATURE(cache_.get()));
    soup_cache_set_max_size(cache_.get(), cacheSize);
    soup_cache_load(cache_.get());
    const auto input = desktop::adopt(g_unix_input_stream_new(0, FALSE));
    reader_ = std::make_unique<MessageReader>(
        input.get(), requestType, [this](desktop::VariantPointer request) { take(std::move(request)); });
}

Fetcher::~Fetcher()
{
    reader_.reset();
    downloads_.clear();
    soup_cache_flush(cache_.get());
    soup_cache_dump(cache_.get());
    g_main_loop_unref(loop_);
}

void Fetcher::take(desktop::VariantPointer request)
{
    if (!request)
        return g_main_loop_quit(loop_);
    std::uint64_t number = 0;
    g_variant_get_child(request.get(), 0, "t", &number);
    auto download = std::make_unique<Download>(*this, request.get());
    auto* starting = download.get();
    downloads_.insert_or_assign(number, std::move(download));
    starting->start(session_.get());
}

void Fetcher::answer(std::uint64_t number, const std::string& error, const std::string& data)
{
    auto* bytes = g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, data.data(), data.size(), 1);
    auto* message = packed(g_variant_new("(ts@ay)", number, error.c_str(), bytes));
    gsize size = 0;
    const auto* contents = g_bytes_get_data(message, &size);
    const auto isWritten = std::fwrite(contents, 1, size, stdout) == size && std::fflush(stdout) == 0;
    g_bytes_unref(message);
    // The one who asked has gone.
    if (!isWritten)
        g_main_loop_quit(loop_);
    downloads_.erase(number);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: perchly-fetch CACHE-FOLDER\n", stderr);
        return 2;
    }
    Fetcher fetcher(arguments[1]);
    fetcher.run();
}
