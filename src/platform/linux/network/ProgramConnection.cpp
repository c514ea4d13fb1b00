#include "platform/linux/network/ProgramConnection.h"

#include "platform/linux/network/Messages.h"

#include <fcntl.h>
#include <sys/socket.h>

namespace desktop {

ProgramConnection startProgram(
    const std::filesystem::path& program, const std::vector<std::string>& arguments, GSubprocessFlags flags)
{
    // A socket, because writing to a pipe whose reader has ended would end us.
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return {};
    const auto socket = adopt(g_socket_new_from_fd(ends[0], nullptr));
    const auto launcher = adopt(g_subprocess_launcher_new(flags));
    g_subprocess_launcher_take_stdin_fd(launcher.get(), ends[1]);
    g_subprocess_launcher_take_stdout_fd(launcher.get(), fcntl(ends[1], F_DUPFD_CLOEXEC, 0));
    std::vector<const char*> words { program.c_str() };
    for (const auto& argument : arguments)
        words.push_back(argument.c_str());
    words.push_back(nullptr);
    ObjectPointer<GSubprocess> process(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr));
    if (!process)
        return {};
    return { adopt(G_IO_STREAM(g_socket_connection_factory_create_connection(socket.get()))), std::move(process) };
}

bool send(const ProgramConnection& program, GVariant* message)
{
    auto* bytes = fetching::packed(message);
    gsize size = 0;
    const auto* contents = g_bytes_get_data(bytes, &size);
    auto* output = g_io_stream_get_output_stream(program.stream.get());
    const bool isSent = g_output_stream_write_all(output, contents, size, nullptr, nullptr, nullptr);
    g_bytes_unref(bytes);
    return isSent;
}

} // namespace desktop
