#pragma once

namespace perchly::test {

/// Kills the processes of this process's pages, as a fault in them would; how many there were.
[[nodiscard]] int killPageProcesses();

} // namespace perchly::test
