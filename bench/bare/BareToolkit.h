// The toolkit as Perchly starts it: the same drawing, and its backend.
#pragma once

#include <gtk/gtk.h>

#include <filesystem>

namespace bare {

inline bool isSoftwareDrawn()
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", ignored)) {
        if (entry.path().filename().string().starts_with("renderD"))
            return false;
    }
    return true;
}

inline void startToolkit()
{
    if (isSoftwareDrawn()) {
        g_setenv("GSK_RENDERER", "cairo", FALSE);
        g_setenv("GDK_DEBUG", "gl-disable", FALSE);
    }
    gdk_set_allowed_backends("x11,wayland,*");
    gtk_init();
}

[[noreturn]] inline void run()
{
    g_main_loop_run(g_main_loop_new(nullptr, FALSE));
    g_assert_not_reached();
}

} // namespace bare
