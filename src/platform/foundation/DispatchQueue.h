#pragma once

#include <functional>

namespace foundation {

/// Runs the work on the main thread in a later turn of its loop, in the order of the calls. Any thread.
void dispatchMainAsync(std::function<void()> work);

} // namespace foundation
