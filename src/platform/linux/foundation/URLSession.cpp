#include "platform/foundation/URLSession.h"

#include "platform/foundation/DispatchQueue.h"
#include "platform/foundation/FatalError.h"
#include "platform/linux/desktop/ReturnedMemory.h"
#include "platform/linux/desktop/StartUp.h"
#include "platform/linux/foundation/ProgramFolder.h"
#include "platform/linux/foundation/UserDirectory.h"
#include "platform/linux/network/ProgramConnection.h"

#include <map>

namespace foundation {
namespace {

using namespace desktop::fetching;

/// How long the fetching program stays for more when all is done.
constexpr unsigned restMilliseconds = 3000;

/// Handlers of downloads of more bytes than this are never at work at the same time, but for the latest: what comes
/// meanwhile waits in the fetching program.
constexpr std::size_t mostAtWork = std::size_t { 32 } << 20U;

/// On a thread of its own; tells the main thread when it has ended.
void runInBackground(std::function<void()> work, std::function<void()> ended)
{
    struct Call {
        std::function<void()> work;
        std::function<void()> ended;
    };
    auto* call = new Call { std::move(work), std::move(ended) };
    const auto task = desktop::adopt(g_task_new(nullptr, nullptr, nullptr, nullptr));
    g_task_set_task_data(task.get(), call, [](gpointer data) { delete static_cast<Call*>(data); });
    g_task_run_in_thread(task.get(), [](GTask* running, gpointer, gpointer data, GCancellable*) {
        auto& [run, tell] = *static_cast<Call*>(data);
        std::exchange(run, nullptr)();
        dispatchMainAsync(std::move(tell));
        g_task_return_boolean(running, TRUE);
    });
}

GVariant* requestMessage(std::uint64_t number, const URLRequest& request)
{
    GVariantBuilder headers;
    g_variant_builder_init(&headers, G_VARIANT_TYPE("a(ss)"));
    for (const auto& [name, value] : request.headerFields)
        g_variant_builder_add(&headers, "(ss)", name.c_str(), value.c_str());
    return g_variant_new("(tsua(ss))", number, request.url.absoluteString().c_str(),
        static_cast<unsigned>(request.timeoutInterval.count()), &headers);
}

} // namespace

/// Downloads through perchly-fetch, which runs only while there is something to download.
struct URLSession::Native {
    void send(const URLRequest& request, CompletionHandler handler);
    bool startProgram();
    void take(desktop::VariantPointer answer);
    void finish(std::uint64_t number, Result<std::string> result);
    void hand(const CompletionHandler& handler, Result<std::string> result);
    void handled(std::size_t size);
    void rest();

    /// None while it does not run.
    std::unique_ptr<desktop::ProgramConnection> program;
    std::map<std::uint64_t, CompletionHandler> handlers;
    std::uint64_t latest = 0;
    /// The bytes of downloads whose handlers have not yet ended.
    std::size_t atWork = 0;
    desktop::SourceHandle resting;
};

URLSession::URLSession()
    : native_(std::make_unique<Native>())
{
}

URLSession::~URLSession() = default;

URLSession& URLSession::sharedSession()
{
    // Never destroyed: its threads may still be at work at exit.
    static auto& session = *new URLSession;
    return session;
}

void URLSession::dataTask(const URLRequest& request, CompletionHandler completionHandler)
{
    assertMainThread();
    desktop::afterStartUp([this, request, handler = std::move(completionHandler)]() mutable {
        native_->send(request, std::move(handler));
    });
}

bool URLSession::Native::startProgram()
{
    if (program)
        return true;
    static const auto path = findWithProgram("libexec/perchly/perchly-fetch");
    const auto caches = userDirectory("XDG_CACHE_HOME", ".cache");
    if (!path || !caches)
        return false;
    const auto cache = *caches / "Perchly" / "Downloads";
    program = desktop::ProgramConnection::start(
        { .path = *path, .arguments = { cache.string() }, .answerType = answerType },
        [this](desktop::VariantPointer answer) { take(std::move(answer)); });
    if (program)
        program->hold(atWork > mostAtWork);
    return program != nullptr;
}

void URLSession::Native::send(const URLRequest& request, CompletionHandler handler)
{
    resting.reset();
    const auto number = ++latest;
    handlers.emplace(number, std::move(handler));
    if (!startProgram())
        return finish(number, Error { "The program that downloads cannot be started" });
    if (!program->send(requestMessage(number, request)))
        finish(number, Error { "The address is too long" });
}

void URLSession::Native::take(desktop::VariantPointer answer)
{
    if (!answer) {
        program.reset();
        for (const auto& [number, handler] : std::exchange(handlers, {}))
            hand(handler, Error { "The program that downloads has ended" });
        return;
    }
    std::uint64_t number = 0;
    const char* error = nullptr;
    GVariant* bytes = nullptr;
    g_variant_get(answer.get(), "(t&s@ay)", &number, &error, &bytes);
    const desktop::VariantPointer owned(bytes);
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_variant_get_fixed_array(bytes, &size, 1));
    if (*error)
        finish(number, Error { error });
    else
        finish(number, std::string(data, size));
}

void URLSession::Native::finish(std::uint64_t number, Result<std::string> result)
{
    const auto waiting = handlers.extract(number);
    if (waiting)
        hand(waiting.mapped(), std::move(result));
    if (handlers.empty())
        resting = desktop::callAfter(restMilliseconds, [this] { rest(); });
}

/// The handler may take its time, so it does not run on the main thread.
void URLSession::Native::hand(const CompletionHandler& handler, Result<std::string> result)
{
    const auto size = result ? result.value().size() : 0;
    atWork += size;
    if (program)
        program->hold(atWork > mostAtWork);
    runInBackground([handler, result = std::move(result)]() mutable { handler(std::move(result)); },
        [this, size] { handled(size); });
}

void URLSession::Native::handled(std::size_t size)
{
    atWork -= size;
    if (program)
        program->hold(atWork > mostAtWork);
    if (size > 0)
        desktop::returnMemorySoon();
}

/// The program then writes its cache and ends.
void URLSession::Native::rest()
{
    resting.reset();
    program.reset();
}

} // namespace foundation
