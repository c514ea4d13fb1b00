#pragma once

#include <functional>
#include <string>

namespace perchly::tests {

/// Runs the body in a process of its own, so that what it changes ends with it, and returns what the body returns;
/// a text that begins with "died" when it did not get that far.
[[nodiscard]] std::string inChildProcess(const std::function<std::string()>& body);

} // namespace perchly::tests
