#include "support/linux/PageProcess.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <unistd.h>

namespace perchly::test {
namespace {

struct Process {
    std::string name;
    pid_t parent = 0;
};

/// From a line such as "17 (name with blanks) S 16 ...".
Process readProcess(const std::filesystem::path& folder)
{
    std::ifstream file(folder / "stat");
    std::string line;
    std::getline(file, line);
    const auto open = line.find('(');
    const auto close = line.rfind(')');
    if (open == std::string::npos || close == std::string::npos || close + 4 >= line.size())
        return {};
    return { line.substr(open + 1, close - open - 1), std::stoi(line.substr(close + 4)) };
}

std::map<pid_t, Process> allProcesses()
{
    std::map<pid_t, Process> processes;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const auto name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            processes[std::stoi(name)] = readProcess(entry.path());
    }
    return processes;
}

/// The sandbox stands between us and our pages.
bool isOurs(pid_t id, std::map<pid_t, Process>& processes)
{
    while (id > 1 && id != getpid())
        id = processes[id].parent;
    return id == getpid();
}

} // namespace

std::set<pid_t> pageProcesses()
{
    auto processes = allProcesses();
    const auto snapshot = processes;
    std::set<pid_t> found;
    for (const auto& [id, process] : snapshot) {
        if (process.name == "WebKitWebProces" && isOurs(id, processes)) // the kernel keeps fifteen characters
            found.insert(id);
    }
    return found;
}

int killPageProcesses()
{
    int killed = 0;
    for (const auto id : pageProcesses())
        killed += kill(id, SIGKILL) == 0 ? 1 : 0;
    return killed;
}

} // namespace perchly::test
