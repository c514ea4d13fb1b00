#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace drawing {

/// A picture from outside gets no more of the machine than this, however it is made.
inline constexpr rlim_t mostMemory = rlim_t { 512 } << 20U;
inline constexpr rlim_t mostProcessorSeconds = 5;
inline constexpr unsigned mostSeconds = 10;

/// From here on the process ends where it wants more: an allocation fails, or the system ends it.
inline void limitResources()
{
    const auto limit = [](auto resource, rlim_t most) {
        const rlimit both { most, most };
        setrlimit(resource, &both);
    };
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, mostProcessorSeconds);
    alarm(mostSeconds);
// The sanitizer reserves more address space than any machine has memory.
#ifndef __SANITIZE_ADDRESS__
    limit(RLIMIT_AS, mostMemory);
#endif
}

} // namespace drawing
