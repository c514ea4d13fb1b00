#include "UserInput.h"

#include "Waiting.h"

#include <unistd.h>

namespace bench {

UserInput::UserInput()
{
    // It reads line by line: a process for each key would take longer than what the key does.
    const char* command[] = { "xdotool", "-", nullptr };
    if (!g_spawn_async_with_pipes(nullptr, const_cast<char**>(command), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr,
            nullptr, &commands_, nullptr, nullptr, nullptr))
        giveUp("xdotool is missing");
}

UserInput::~UserInput()
{
    close(commands_); // and so it ends
}

void UserInput::tell(const std::string& command)
{
    const auto line = command + "\n";
    if (write(commands_, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        giveUp("xdotool has ended");
}

} // namespace bench
