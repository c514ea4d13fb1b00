#include "support/linux/ChildProcesses.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <system_error>
#include <unistd.h>

namespace perchly::test {
namespace {

struct Process {
    std::string name;
    char state = 'Z';
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
    return { line.substr(open + 1, close - open - 1), line[close + 2], std::stoi(line.substr(close + 4)) };
}

/// Has left all that it shared, such as open files: its first thread may have ended before the others.
bool hasEnded(pid_t id, const Process& process)
{
    std::error_code isGone;
    const std::filesystem::directory_iterator threads("/proc/" + std::to_string(id) + "/task", isGone);
    return isGone || (process.state == 'Z' && std::distance(begin(threads), end(threads)) <= 1);
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

/// Another program may stand between us and it.
bool isOurs(pid_t id, std::map<pid_t, Process>& processes)
{
    while (id > 1 && id != getpid())
        id = processes[id].parent;
    return id == getpid();
}

} // namespace

std::set<pid_t> childProcesses(std::string_view name)
{
    constexpr std::size_t keptByTheKernel = 15;
    auto processes = allProcesses();
    const auto snapshot = processes;
    std::set<pid_t> found;
    for (const auto& [id, process] : snapshot) {
        if (process.name == name.substr(0, keptByTheKernel) && isOurs(id, processes) && !hasEnded(id, process))
            found.insert(id);
    }
    return found;
}

} // namespace perchly::test
