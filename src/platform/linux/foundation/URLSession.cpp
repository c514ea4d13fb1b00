#include "platform/foundation/URLSession.h"

#include "platform/foundation/FatalError.h"
#include "platform/linux/foundation/ProgramFolder.h"
#include "platform/linux/foundation/UserDirectory.h"
#include "platform/linux/network/ProgramConnection.h"

#include <map>

namespace foundation {
namespace {

using namespace desktop::fetching;

/// How long the fetching program stays for more when all is done.
constexpr unsigned restMilliseconds = 3000;

/// The handler may take its time, so it does not run on the main thread.
void callInBackground(const URLSession::CompletionHandler& handler, Result<std::string> result)
{
    using Call = std::function<void()>;
    auto* call = new Call([handler, result = std::move(result)] { handler(result); });
    const auto task = desktop::adopt(g_task_new(nullptr, nullptr, nullptr, nullptr));
    g_task_set_task_data(task.get(), call, [](gpointer data) { delete static_cast<Call*>(data); });
    g_task_run_in_thread(task.get(), [](GTask* running, gpointer, gpointer data, GCancellable*) {
        (*static_cast<Call*>(data))();
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
    void rest();

    /// None while it does not run.
    std::unique_ptr<desktop::ProgramConnection> program;
    std::map<std::uint64_t, CompletionHandler> handlers;
    std::uint64_t latest = 0;
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
    native_->send(request, std::move(completionHandler));
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
            callInBackground(handler, Error { "The program that downloads has ended" });
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
        callInBackground(waiting.mapped(), std::move(result));
    if (handlers.empty())
        resting = desktop::callAfter(restMilliseconds, [this] { rest(); });
}

/// The program then writes its cache and ends.
void URLSession::Native::rest()
{
    resting.reset();
    program.reset();
}

} // namespace foundation
