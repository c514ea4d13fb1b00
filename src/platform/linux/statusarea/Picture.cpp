#include "platform/linux/statusarea/Picture.h"

#include "platform/foundation/Log.h"
#include "platform/linux/foundation/ProgramFolder.h"

#include <map>
#include <optional>

namespace desktop {
namespace {

constexpr unsigned drawingTimeoutMilliseconds = 5000;

std::optional<std::string> findDrawingProgram()
{
    const auto program = foundation::findWithProgram("libexec/perchly/perchly-draw");
    if (program)
        return program->string();
    foundation::log("StatusBar - perchly-draw is missing; there will be no pictures");
    return std::nullopt;
}

using Finish = std::function<void(GBytes*)>;

/// A run of the drawing program.
struct Run {
    ObjectPointer<GSubprocess> process;
    SourceHandle deadline;
    Finish finish;
};

void runEnded(GObject* source, GAsyncResult* result, gpointer data)
{
    std::unique_ptr<Run> run(static_cast<Run*>(data));
    GBytes* output = nullptr;
    auto* process = G_SUBPROCESS(source);
    const bool communicated = g_subprocess_communicate_finish(process, result, &output, nullptr, nullptr);
    const bool succeeded = communicated && g_subprocess_get_successful(process);
    run->finish(succeeded ? output : nullptr);
    g_bytes_unref(output);
}

void start(const std::vector<const char*>& arguments, Finish finish)
{
    ErrorPointer error;
    auto* process = g_subprocess_newv(arguments.data(),
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE), error.out());
    if (!process) {
        foundation::log("StatusBar - cannot draw: " + error.message());
        return finish(nullptr);
    }
    auto run = std::make_unique<Run>();
    run->process = adopt(process);
    run->finish = std::move(finish);
    run->deadline = callAfter(drawingTimeoutMilliseconds, [process] { g_subprocess_force_exit(process); });
    g_subprocess_communicate_async(process, nullptr, nullptr, runEnded, run.release());
}

/// What the build has drawn already, beside the file: a picture that every status area asks for at every start.
GBytes* preparedDrawing(const Picture::Subject& subject, const char* format)
{
    if (subject.kind != Picture::Subject::Kind::File || subject.colour.empty())
        return nullptr;
    const auto path = subject.value + "." + subject.colour.substr(1) + "." + format;
    char* contents = nullptr;
    gsize size = 0;
    if (!g_file_get_contents(path.c_str(), &contents, &size, nullptr))
        return nullptr;
    return g_bytes_new_take(contents, size);
}

} // namespace

std::shared_ptr<Picture> Picture::of(const Subject& subject)
{
    static std::map<Subject, std::weak_ptr<Picture>> pictures;
    std::erase_if(pictures, [](const auto& entry) { return entry.second.expired(); });
    auto& known = pictures[subject];
    auto picture = known.lock();
    if (!picture) {
        picture = std::shared_ptr<Picture>(new Picture(subject));
        known = picture;
    }
    return picture;
}

Picture::Picture(Subject subject)
    : subject_(std::move(subject))
    , pixmaps_ { "pixmaps", G_VARIANT_TYPE("a(iiay)"), { "16", "22", "24", "32", "48", "64" }, nullptr, {} }
    , icon_ { "png", G_VARIANT_TYPE_BYTESTRING, { "16" }, nullptr, {} }
{
}

void Picture::with(Rendition& rendition, Receiver receiver)
{
    if (rendition.value)
        return receiver(rendition.value.get());
    rendition.waiting.push_back(std::move(receiver));
    if (rendition.waiting.size() == 1)
        draw(rendition);
}

void Picture::draw(Rendition& rendition)
{
    if (auto* prepared = preparedDrawing(subject_, rendition.format)) {
        finish(rendition, prepared);
        return g_bytes_unref(prepared);
    }
    static const auto program = findDrawingProgram();
    if (!program)
        return finish(rendition, nullptr);
    const auto* kind = subject_.kind == Subject::Kind::File ? "file" : "text";
    const auto* colour = subject_.colour.empty() ? "own" : subject_.colour.c_str();
    std::vector<const char*> arguments { program->c_str(), rendition.format, kind, subject_.value.c_str(), colour };
    arguments.insert(arguments.end(), rendition.sizes.begin(), rendition.sizes.end());
    arguments.push_back(nullptr);
    start(arguments, [self = shared_from_this(), &rendition](GBytes* drawn) { finish(rendition, drawn); });
}

void Picture::finish(Rendition& rendition, GBytes* drawn)
{
    auto* empty = g_bytes_new(nullptr, 0);
    rendition.value = adoptVariant(g_variant_new_from_bytes(rendition.type, drawn ? drawn : empty, FALSE));
    g_bytes_unref(empty);
    for (const auto& receiver : std::exchange(rendition.waiting, {}))
        receiver(rendition.value.get());
}

} // namespace desktop
