#include "support/MainLoop.h"

#include <glib.h>

namespace perchly::test {

bool waitUntil(const std::function<bool()>& condition, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    // Wakes the loop, so that a condition outside of it is looked at too.
    const auto tick = g_timeout_add(
        5, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    auto holds = condition();
    while (!holds && std::chrono::steady_clock::now() < end) {
        g_main_context_iteration(nullptr, TRUE);
        holds = condition();
    }
    g_source_remove(tick);
    return holds;
}

void handlePendingEvents()
{
    while (g_main_context_iteration(nullptr, FALSE)) { }
}

} // namespace perchly::test
