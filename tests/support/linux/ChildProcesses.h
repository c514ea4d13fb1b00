#pragma once

#include <sys/types.h>

#include <set>
#include <string_view>

namespace perchly::test {

/// The living processes of that name (its first fifteen characters) that this process has started, or those have.
[[nodiscard]] std::set<pid_t> childProcesses(std::string_view name);

} // namespace perchly::test
