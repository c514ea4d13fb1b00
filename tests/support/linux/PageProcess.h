#pragma once

#include <sys/types.h>

#include <set>

namespace perchly::test {

/// The processes of this process's pages.
[[nodiscard]] std::set<pid_t> pageProcesses();

/// Kills the processes of this process's pages, as a fault in them would; how many there were.
[[nodiscard]] int killPageProcesses();

} // namespace perchly::test
