#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace bench {

/// All processes that descend from this one, also those whose parents have ended. (This one adopts orphans.)
class ProcessTree {
public:
    [[nodiscard]] static std::vector<pid_t> members();

    /// Whether all have ended.
    [[nodiscard]] static bool isEmpty();

    /// Makes this process the parent of its descendants' orphans, and ends them all with it.
    static void answerForOrphans();
};

/// Processor time so far of processes that are running, without their ended children. Exact, threads included.
[[nodiscard]] double processorMilliseconds(const std::vector<pid_t>& processes);

/// Memory by each process's share of its pages, in KiB.
[[nodiscard]] std::uint64_t proportionalMemory(const std::vector<pid_t>& processes);

/// What of it belongs to no file, in KiB. Only this part is the same whatever else the machine runs: a page of a
/// library counts less the more others use it.
[[nodiscard]] std::uint64_t ownMemory(const std::vector<pid_t>& processes);

/// How often each thread has given up the processor, by its will or not: each time it must have been woken.
using ContextSwitches = std::map<pid_t, std::uint64_t>;
[[nodiscard]] ContextSwitches contextSwitches(const std::vector<pid_t>& processes);

/// Those of all threads since then. A thread that ended meanwhile counts once: it must have been woken for that.
[[nodiscard]] double switchesBetween(const ContextSwitches& before, const ContextSwitches& after);

/// Open files, sockets and the like. Not those of /proc and /sys: some seconds after its start each process of the
/// engine opens seven of them, to watch over the memory, and keeps them.
[[nodiscard]] std::uint64_t openDescriptors(const std::vector<pid_t>& processes);

/// The programs, by name, that carry one of the words in their name.
[[nodiscard]] std::vector<std::string> namesWith(
    const std::vector<pid_t>& processes, const std::vector<std::string>& words);

/// The mapped files that carry one of the words in their name.
[[nodiscard]] std::vector<std::string> mappingsWith(
    const std::vector<pid_t>& processes, const std::vector<std::string>& words);

} // namespace bench
