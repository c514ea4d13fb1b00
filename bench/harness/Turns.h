#pragma once

#include <chrono>
#include <functional>

namespace bench {

/// Takes turns, so that what else the machine does meets both alike; the first round only warms the caches.
void interleave(int runs, const std::function<void(bool counts)>& bare, const std::function<void(bool counts)>& ours);

/// Waits until none of our processes has used any processor time for so long. What they may use nevertheless is for
/// programs that are never quite at rest, in milliseconds.
void waitForRest(std::chrono::milliseconds span, double tolerance = 0);

} // namespace bench
