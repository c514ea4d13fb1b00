#include "platform/linux/statusarea/DrawingProgram.h"

#include "platform/foundation/Log.h"
#include "platform/linux/drawing/Messages.h"
#include "platform/linux/foundation/ProgramFolder.h"

namespace desktop {
namespace {

/// How long the program stays for more when all is drawn.
constexpr unsigned restMilliseconds = 3000;
constexpr unsigned drawingTimeoutMilliseconds = 5000;

/// Sent ahead, so that the program need not wait for us. No more, because all of them are lost when it ends.
constexpr std::size_t mostUnderWay = 2;

} // namespace

const std::optional<std::filesystem::path>& drawingProgramPath()
{
    static const auto path = [] {
        auto found = foundation::findWithProgram("libexec/perchly/perchly-draw");
        if (!found)
            foundation::log("StatusBar - perchly-draw is missing; there will be no pictures");
        return found;
    }();
    return path;
}

DrawingProgram& DrawingProgram::shared()
{
    // Never destroyed: pictures may be asked for until the very end.
    static auto& program = *new DrawingProgram;
    return program;
}

void DrawingProgram::draw(GVariant* request, Finish finish)
{
    waiting_.push_back({ adoptVariant(request), std::move(finish) });
    sendNext();
}

bool DrawingProgram::isRunning()
{
    if (program_)
        return true;
    if (const auto& path = drawingProgramPath()) {
        program_ = ProgramConnection::start(
            { .path = *path, .flags = G_SUBPROCESS_FLAGS_STDERR_SILENCE, .answerType = drawing::answerType },
            [this](const VariantPointer& answer) { take(answer); });
    }
    return program_ != nullptr;
}

void DrawingProgram::sendNext()
{
    while (!waiting_.empty() && maySend(waiting_.front())) {
        auto job = std::move(waiting_.front());
        waiting_.pop_front();
        if (!isRunning()) {
            job.finish(nullptr);
            continue;
        }
        if (program_->send(g_variant_ref(job.request.get())))
            underWay_.push_back(std::move(job));
        else
            job.finish(nullptr);
    }
    watch();
}

/// One that may have been too much for the program is alone with it.
bool DrawingProgram::maySend(const Job& job) const
{
    if (job.isRetried || (!underWay_.empty() && underWay_.front().isRetried))
        return underWay_.empty();
    return underWay_.size() < mostUnderWay;
}

void DrawingProgram::take(const VariantPointer& answer)
{
    if (!answer || underWay_.empty())
        return ended();
    const auto job = std::move(underWay_.front());
    underWay_.pop_front();
    sendNext();
    auto* drawn = g_variant_get_variant(answer.get());
    job.finish(adoptVariant(drawn));
}

/// One of the pictures under way was too much for it. Which one is seen when each is drawn alone, by a new program.
void DrawingProgram::ended()
{
    disconnect();
    auto lost = std::exchange(underWay_, {});
    const bool isKnown = !lost.empty() && lost.front().isRetried;
    for (; !isKnown && !lost.empty(); lost.pop_back()) {
        lost.back().isRetried = true;
        waiting_.push_front(std::move(lost.back()));
    }
    sendNext();
    for (const auto& job : lost)
        job.finish(nullptr);
}

/// Once more after every answer: all of them are quick.
void DrawingProgram::watch()
{
    deadline_.reset();
    resting_.reset();
    if (!underWay_.empty())
        deadline_ = callAfter(drawingTimeoutMilliseconds, [this] { program_->forceExit(); });
    else if (program_)
        resting_ = callAfter(restMilliseconds, [this] { disconnect(); });
}

/// The program then ends.
void DrawingProgram::disconnect()
{
    resting_.reset();
    deadline_.reset();
    program_.reset();
}

} // namespace desktop
