#include "platform/foundation/DispatchQueue.h"

#include <glib.h>
#include <utility>

namespace foundation {

namespace {

using Work = std::function<void()>;

gboolean run(gpointer data)
{
    (*static_cast<Work*>(data))();
    return G_SOURCE_REMOVE;
}

void release(gpointer data)
{
    delete static_cast<Work*>(data);
}

} // namespace

void dispatchMainAsync(std::function<void()> work)
{
    g_idle_add_full(G_PRIORITY_DEFAULT, run, new Work(std::move(work)), release);
}

} // namespace foundation
