#include "support/linux/PageProcess.h"

#include "support/linux/ChildProcesses.h"

#include <csignal>

namespace perchly::test {

std::set<pid_t> pageProcesses()
{
    return childProcesses("WebKitWebProcess");
}

int killPageProcesses()
{
    int killed = 0;
    for (const auto id : pageProcesses())
        killed += kill(id, SIGKILL) == 0 ? 1 : 0;
    return killed;
}

} // namespace perchly::test
