#pragma once

#include <string_view>

namespace foundation {

/// Ends the process for a programming error, after printing the reason on standard error.
[[noreturn]] void fatalError(std::string_view reason);

/// Ends the process unless called on the main thread, the one that started it.
void assertMainThread();

} // namespace foundation
