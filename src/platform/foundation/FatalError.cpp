#include "platform/foundation/FatalError.h"

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace foundation {

namespace {

// Taken before main() runs, hence on the thread that started the process.
const std::thread::id mainThread = std::this_thread::get_id();

} // namespace

void fatalError(std::string_view reason)
{
    std::fprintf(stderr, "Fatal error: %.*s\n", static_cast<int>(reason.size()), reason.data());
    std::abort();
}

void assertMainThread()
{
    if (std::this_thread::get_id() != mainThread)
        fatalError("called off the main thread");
}

} // namespace foundation
