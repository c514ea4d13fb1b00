#include "ProcessTree.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {
namespace {

std::filesystem::path folderOf(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

// Numbered entries of a folder of /proc; processes may end while we look.
std::vector<pid_t> numbersIn(const std::filesystem::path& folder)
{
    std::vector<pid_t> numbers;
    std::error_code gone;
    for (std::filesystem::directory_iterator entry(folder, gone), end; !gone && entry != end; entry.increment(gone)) {
        const auto name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            numbers.push_back(std::stoi(name));
    }
    return numbers;
}

std::uint64_t fieldOf(const std::filesystem::path& file, const std::string& name)
{
    std::ifstream lines(file);
    std::uint64_t sum = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name))
            sum += std::stoull(line.substr(name.size()));
    }
    return sum;
}

bool hasOneOf(const std::string& text, const std::vector<std::string>& words)
{
    return std::any_of(words.begin(), words.end(), [&](auto& word) { return text.find(word) != std::string::npos; });
}

} // namespace

void ProcessTree::answerForOrphans()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    std::atexit([] {
        for (const auto process : members())
            kill(process, SIGKILL);
    });
}

std::vector<pid_t> ProcessTree::members()
{
    std::multimap<pid_t, pid_t> children;
    for (const auto process : numbersIn("/proc"))
        children.emplace(static_cast<pid_t>(fieldOf(folderOf(process) / "status", "PPid:")), process);

    std::vector<pid_t> members;
    std::vector<pid_t> parents { getpid() };
    while (!parents.empty()) {
        const auto [begin, end] = children.equal_range(parents.back());
        parents.pop_back();
        for (auto child = begin; child != end; ++child) {
            members.push_back(child->second);
            parents.push_back(child->second);
        }
    }
    return members;
}

bool ProcessTree::isEmpty()
{
    // Those that have ended stay until someone asks for their end.
    while (waitpid(-1, nullptr, WNOHANG) > 0) { }
    return members().empty();
}

double processorMilliseconds(const std::vector<pid_t>& processes)
{
    auto sum = 0.0;
    for (const auto process : processes) {
        clockid_t clock {};
        timespec time {};
        if (clock_getcpuclockid(process, &clock) == 0 && clock_gettime(clock, &time) == 0)
            sum += static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }
    return sum;
}

std::uint64_t proportionalMemory(const std::vector<pid_t>& processes)
{
    std::uint64_t sum = 0;
    for (const auto process : processes)
        sum += fieldOf(folderOf(process) / "smaps_rollup", "Pss:");
    return sum;
}

std::uint64_t ownMemory(const std::vector<pid_t>& processes)
{
    std::uint64_t sum = 0;
    for (const auto process : processes) {
        const auto memory = folderOf(process) / "smaps_rollup";
        sum += fieldOf(memory, "Pss_Anon:") + fieldOf(memory, "Pss_Shmem:");
    }
    return sum;
}

ContextSwitches contextSwitches(const std::vector<pid_t>& processes)
{
    ContextSwitches switches;
    for (const auto process : processes) {
        const auto threads = folderOf(process) / "task";
        for (const auto thread : numbersIn(threads)) {
            const auto status = threads / std::to_string(thread) / "status";
            switches[thread]
                = fieldOf(status, "voluntary_ctxt_switches:") + fieldOf(status, "nonvoluntary_ctxt_switches:");
        }
    }
    return switches;
}

double switchesBetween(const ContextSwitches& before, const ContextSwitches& after)
{
    std::uint64_t sum = 0;
    for (const auto& [thread, count] : after) {
        const auto earlier = before.find(thread);
        sum += earlier == before.end() ? count : count - earlier->second;
    }
    for (const auto& [thread, count] : before)
        sum += after.contains(thread) ? 0 : 1;
    return static_cast<double>(sum);
}

std::uint64_t openDescriptors(const std::vector<pid_t>& processes)
{
    std::uint64_t sum = 0;
    for (const auto process : processes) {
        const auto folder = folderOf(process) / "fd";
        for (const auto descriptor : numbersIn(folder)) {
            std::error_code gone;
            const auto file = std::filesystem::read_symlink(folder / std::to_string(descriptor), gone).string();
            sum += gone || file.starts_with("/proc/") || file.starts_with("/sys/") ? 0 : 1;
        }
    }
    return sum;
}

std::vector<std::string> namesWith(const std::vector<pid_t>& processes, const std::vector<std::string>& words)
{
    std::vector<std::string> names;
    for (const auto process : processes) {
        std::string name;
        std::getline(std::ifstream(folderOf(process) / "cmdline"), name, '\0');
        if (hasOneOf(name, words))
            names.push_back(name);
    }
    return names;
}

std::vector<std::string> mappingsWith(const std::vector<pid_t>& processes, const std::vector<std::string>& words)
{
    std::set<std::string> files;
    for (const auto process : processes) {
        std::ifstream lines(folderOf(process) / "maps");
        for (std::string line; std::getline(lines, line);) {
            const auto path = line.find('/');
            if (path != std::string::npos && hasOneOf(line.substr(path), words))
                files.insert(line.substr(path));
        }
    }
    return { files.begin(), files.end() };
}

} // namespace bench
