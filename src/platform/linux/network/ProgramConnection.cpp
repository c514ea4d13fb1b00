#include "platform/linux/network/ProgramConnection.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace desktop {
namespace {

ObjectPointer<GSubprocess> spawn(const ProgramConnection::Program& program, int standardStreams)
{
    const auto launcher = adopt(g_subprocess_launcher_new(program.flags));
    g_subprocess_launcher_take_stdin_fd(launcher.get(), standardStreams);
    g_subprocess_launcher_take_stdout_fd(launcher.get(), fcntl(standardStreams, F_DUPFD_CLOEXEC, 0));
    std::vector<const char*> words;
    words.reserve(program.arguments.size() + 2);
    words.push_back(program.path.c_str());
    for (const auto& argument : program.arguments)
        words.push_back(argument.c_str());
    words.push_back(nullptr);
    return ObjectPointer<GSubprocess>(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr));
}

} // namespace

std::unique_ptr<ProgramConnection> ProgramConnection::start(const Program& program, const Receiver& receiver)
{
    // A socket, because writing to a pipe whose reader has ended would end us.
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return nullptr;
    const auto socket = adopt(g_socket_new_from_fd(ends[0], nullptr));
    auto process = spawn(program, ends[1]);
    if (!process)
        return nullptr;
    auto stream = adopt(G_IO_STREAM(g_socket_connection_factory_create_connection(socket.get())));
    return std::unique_ptr<ProgramConnection>(
        new ProgramConnection(std::move(stream), std::move(process), program.answerType, receiver));
}

ProgramConnection::ProgramConnection(ObjectPointer<GIOStream> stream, ObjectPointer<GSubprocess> process,
    const char* answerType, const Receiver& receiver)
    : stream_(std::move(stream))
    , process_(std::move(process))
    , reader_(g_io_stream_get_input_stream(stream_.get()), answerType, receiver)
    , writer_(g_io_stream_get_output_stream(stream_.get()), [receiver] { receiver(nullptr); })
{
}

bool ProgramConnection::send(GVariant* message)
{
    fetching::Bytes bytes(fetching::packed(message));
    if (g_bytes_get_size(bytes.get()) > fetching::largestMessage)
        return false;
    writer_.write(std::move(bytes));
    return true;
}

void ProgramConnection::forceExit()
{
    g_subprocess_force_exit(process_.get());
}

} // namespace desktop
