#include "platform/linux/desktop/ActivationWatch.h"

namespace desktop {

ActivationWatch::ActivationWatch(std::function<void(GtkWindow*)> activated)
    : activated_(std::move(activated))
    , windows_(gtk_window_get_toplevels())
    , change_(connect<void(guint, guint, guint)>(
          windows_, "items-changed", [this](guint, guint, guint) { connectToWindows(); }))
{
    connectToWindows();
}

void ActivationWatch::connectToWindows()
{
    connections_.clear();
    for (guint index = 0; index < g_list_model_get_n_items(windows_); ++index) {
        const auto window = adopt(GTK_WINDOW(g_list_model_get_item(windows_, index)));
        connections_.push_back(
            connect<void(GParamSpec*)>(window.get(), "notify::is-active", [this, raw = window.get()](GParamSpec*) {
                if (gtk_window_is_active(raw))
                    activated_(raw);
            }));
    }
}

} // namespace desktop
