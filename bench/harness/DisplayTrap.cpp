#include "DisplayTrap.h"

#include "Waiting.h"

#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace bench {
namespace {

bool bindDisplay(int socket, int number)
{
    // The abstract name, without a file to leave behind, is what a client tries first.
    const auto name = "/tmp/.X11-unix/X" + std::to_string(number);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path + 1, name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    return bind(socket, reinterpret_cast<const sockaddr*>(&address), length) == 0;
}

} // namespace

DisplayTrap::DisplayTrap()
    : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    constexpr auto first = 700;
    constexpr auto last = 799;
    for (number_ = first; number_ <= last; ++number_) {
        if (bindDisplay(socket_, number_) && listen(socket_, 1) == 0)
            return;
    }
    giveUp("no display number is free");
}

DisplayTrap::~DisplayTrap()
{
    close(socket_);
}

bool DisplayTrap::wasTouched() const
{
    // A pending connection stays pending: nothing ever accepts it.
    pollfd waiting { socket_, POLLIN, 0 };
    return poll(&waiting, 1, 0) > 0;
}

} // namespace bench
