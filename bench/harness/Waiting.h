#pragma once

#include <gio/gio.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace bench {

using Clock = std::chrono::steady_clock;

[[nodiscard]] inline double millisecondsBetween(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double, std::milli>(to - from).count();
}

/// A measurement that can't be taken ends the bench: half a table would look like a whole one.
[[noreturn]] inline void giveUp(const std::string& reason)
{
    std::fprintf(stderr, "bench: %s\n", reason.c_str());
    std::exit(2);
}

/// Runs the main loop, looking at the condition after each event and every millisecond.
template <class Condition>
[[nodiscard]] bool waitUntil(Condition condition, std::chrono::milliseconds deadline)
{
    const auto end = Clock::now() + deadline;
    auto* tick = g_timeout_source_new(1);
    g_source_set_callback(
        tick, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
    g_source_attach(tick, nullptr);
    auto isMet = condition();
    while (!isMet && Clock::now() < end) {
        g_main_context_iteration(nullptr, TRUE);
        isMet = condition();
    }
    g_source_destroy(tick);
    g_source_unref(tick);
    return isMet;
}

} // namespace bench
