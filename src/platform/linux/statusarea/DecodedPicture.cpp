#include "platform/linux/statusarea/DecodedPicture.h"

#include "platform/linux/drawing/Messages.h"
#include "platform/linux/statusarea/DrawingProgram.h"

#include <semaphore>
#include <sys/mman.h>
#include <unistd.h>

namespace desktop {
namespace {

constexpr std::ptrdiff_t mostAtOnce = 2;
/// Several times what a picture and its outline take.
constexpr gsize mostDecoded = gsize { 256 } << 10U;

/// Holds one of the places while it lives.
class Place {
public:
    Place() { places().acquire(); }
    ~Place() { places().release(); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

private:
    static std::counting_semaphore<mostAtOnce>& places()
    {
        static std::counting_semaphore<mostAtOnce> all(mostAtOnce);
        return all;
    }
};

/// A file in memory that begins with these bytes, at its beginning; -1 where there is no memory for it. Written to a
/// pipe they would end us if the program ended first.
int fileHolding(std::string_view bytes)
{
    const auto file = memfd_create("picture", MFD_CLOEXEC);
    if (file < 0)
        return file;
    const auto written = pwrite(file, bytes.data(), bytes.size(), 0);
    if (written == static_cast<ssize_t>(bytes.size()))
        return file;
    close(file);
    return -1;
}

std::string textIn(GVariant* tuple, gsize index)
{
    const auto array = adoptVariant(g_variant_get_child_value(tuple, index));
    gsize size = 0;
    const auto* bytes = static_cast<const char*>(g_variant_get_fixed_array(array.get(), &size, 1));
    return { bytes, size };
}

/// What the program says about the file; null where it says nothing.
VariantPointer decodedFile(int file)
{
    const auto& program = drawingProgramPath();
    const auto launcher = adopt(g_subprocess_launcher_new(
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE | G_SUBPROCESS_FLAGS_STDERR_SILENCE)));
    g_subprocess_launcher_take_stdin_fd(launcher.get(), file);
    if (!program)
        return nullptr;
    const ObjectPointer<GSubprocess> process(
        g_subprocess_launcher_spawn(launcher.get(), nullptr, program->c_str(), "decode", nullptr));
    if (!process)
        return nullptr;
    auto* output = g_malloc(mostDecoded);
    gsize size = 0;
    g_input_stream_read_all(g_subprocess_get_stdout_pipe(process.get()), output, mostDecoded, &size, nullptr, nullptr);
    // A program that says more has been taken over by what it decodes.
    if (size == mostDecoded)
        g_subprocess_force_exit(process.get());
    g_subprocess_wait(process.get(), nullptr, nullptr);
    auto* bytes = g_bytes_new_take(output, size);
    auto* answer = g_variant_new_from_bytes(G_VARIANT_TYPE(drawing::decodedType), bytes, FALSE);
    g_bytes_unref(bytes);
    auto owned = adoptVariant(answer);
    return g_subprocess_get_successful(process.get()) ? std::move(owned) : nullptr;
}

} // namespace

std::optional<DecodedPicture> decodePicture(std::string_view bytes)
{
    const Place place;
    const auto file = bytes.empty() ? -1 : fileHolding(bytes);
    const auto answer = file >= 0 ? decodedFile(file) : nullptr;
    if (!answer)
        return std::nullopt;
    DecodedPicture picture { textIn(answer.get(), 0), textIn(answer.get(), 1) };
    return picture.png.empty() ? std::nullopt : std::optional(std::move(picture));
}

} // namespace desktop
