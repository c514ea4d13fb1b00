// perchly-fetch CACHE-FOLDER
// Downloads what it is asked for on its standard input and answers on its standard output, which must be the same
// socket, in the order of arrival, until the input ends. A program of its own, so that an idle Perchly holds neither
// HTTP nor TLS, and an answer from outside can hurt nothing there.
#include "platform/linux/network/Messages.h"

#include <libsoup/soup.h>

#include <array>
#include <cstdio>
#include <malloc.h>
#include <map>
#include <unistd.h>
#include <vector>

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
/// Bytes in memory, of downloads under way and of answers that nobody has taken yet.
constexpr std::size_t mostHeld = std::size_t { 64 } << 20U;

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
    /// After a pause.
    void resume();

    [[nodiscard]] bool isPaused() const { return isPaused_; }
    [[nodiscard]] std::size_t size() const { return data_.capacity(); }

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
    bool isPaused_ = false;
    desktop::SourceHandle silence_;
    desktop::SourceHandle deadline_;
    std::array<desktop::SignalConnection, 2> signsOfLife_;
};

class Fetcher {
public:
    Fetcher(ObjectPointer<GSocket> socket, const char* cacheFolder);
    ~Fetcher();
    Fetcher(const Fetcher&) = delete;
    Fetcher& operator=(const Fetcher&) = delete;

    void run() { g_main_loop_run(loop_); }
    /// Ends the download.
    void answer(std::uint64_t number, const std::string& error, std::string data);
    /// Whether more of the download may be taken into memory; if not, it is resumed later.
    [[nodiscard]] bool hasRoomFor(const Download& download) const;

private:
    void take(desktop::VariantPointer request);
    void resumeDownloads();

    GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
    ObjectPointer<SoupSession> session_;
    ObjectPointer<SoupCache> cache_;
    std::map<std::uint64_t, std::unique_ptr<Download>> downloads_;
    ObjectPointer<GSocketConnection> connection_;
    std::unique_ptr<MessageReader> reader_;
    std::unique_ptr<MessageWriter> writer_;
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
    isPaused_ = !fetcher_.hasRoomFor(*this);
    if (isPaused_) {
        // It is our turn, not the server's.
        silence_.reset();
        deadline_.reset();
        return;
    }
    begin();
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

void Download::resume()
{
    if (isPaused_)
        readOn();
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
    fetcher_.answer(number_, error, error.empty() ? std::move(data_) : std::string());
}

Fetcher::Fetcher(ObjectPointer<GSocket> socket, const char* cacheFolder)
    : session_(desktop::adopt(
        soup_session_new_with_options("max-conns", mostConnections, "max-conns-per-host", mostOfOneHost, nullptr)))
    , cache_(desktop::adopt(soup_cache_new(cacheFolder, SOUP_CACHE_SINGLE_USER)))
    , connection_(desktop::adopt(g_socket_connection_factory_create_connection(socket.get())))
{
    soup_session_add_feature(session_.get(), SOUP_SESSION_FEATURE(cache_.get()));
    soup_cache_set_max_size(cache_.get(), cacheSize);
    soup_cache_load(cache_.get());
    auto* streams = G_IO_STREAM(connection_.get());
    reader_ = std::make_unique<MessageReader>(g_io_stream_get_input_stream(streams), requestType,
        [this](desktop::VariantPointer request) { take(std::move(request)); });
    // Failed: the one who asked has gone.
    writer_ = std::make_unique<MessageWriter>(
        g_io_stream_get_output_stream(streams), [this] { g_main_loop_quit(loop_); }, [this] { resumeDownloads(); });
}

Fetcher::~Fetcher()
{
    reader_.reset();
    writer_.reset();
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

void Fetcher::answer(std::uint64_t number, const std::string& error, std::string data)
{
    // The variant takes the data over: there may be much of it.
    auto* kept = new std::string(std::move(data));
    auto* bytes = g_variant_new_from_data(
        G_VARIANT_TYPE_BYTESTRING, kept->data(), kept->size(), TRUE,
        [](gpointer text) { delete static_cast<std::string*>(text); }, kept);
    writer_->write(Bytes(packed(g_variant_new("(ts@ay)", number, error.c_str(), bytes))));
    downloads_.erase(number);
    resumeDownloads();
}

/// One download always goes on once all answers are taken, or none would ever come to its end.
bool Fetcher::hasRoomFor(const Download& download) const
{
    auto held = writer_->waitingSize();
    const Download* fullest = nullptr;
    for (const auto& [number, other] : downloads_) {
        held += other->size();
        if (!fullest || other->size() > fullest->size())
            fullest = other.get();
    }
    return held < mostHeld || (writer_->waitingSize() == 0 && fullest == &download);
}

void Fetcher::resumeDownloads()
{
    std::vector<std::uint64_t> paused;
    for (const auto& [number, download] : downloads_) {
        if (download->isPaused())
            paused.push_back(number);
    }
    for (const auto number : paused)
        downloads_.at(number)->resume();
}

} // namespace

int main(int count, char** arguments)
{
    auto socket = ObjectPointer<GSocket>(g_socket_new_from_fd(STDIN_FILENO, nullptr));
    if (count != 2 || !socket) {
        std::fputs("usage: perchly-fetch CACHE-FOLDER, with a socket for the standard input and output\n", stderr);
        return 2;
    }
    // Whole downloads come and go: what they took must not stay with us in pieces.
    mallopt(M_MMAP_THRESHOLD, 256 << 10);
    Fetcher fetcher(std::move(socket), arguments[1]);
    fetcher.run();
}
