#pragma once

#include <chrono>
#include <functional>

namespace perchly::test {

/// Handles events until the condition holds; false when it did not within the time allowed.
[[nodiscard]] bool waitUntil(
    const std::function<bool()>& condition, std::chrono::milliseconds deadline = std::chrono::seconds(15));

/// Handles every event that is due already, and those that they cause at once.
void handlePendingEvents();

} // namespace perchly::test
