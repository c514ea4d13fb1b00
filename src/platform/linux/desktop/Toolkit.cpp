#include "platform/linux/desktop/Toolkit.h"

#include "platform/foundation/Bundle.h"
#include "platform/foundation/FatalError.h"
#include "platform/linux/desktop/LateBinding.h"

#include <gdk/x11/gdkx.h>
#include <gtk/gtk.h>

#include <filesystem>
#include <string_view>

namespace desktop {
namespace {

void chooseBackends()
{
    // Only on X11 may a program place its windows and keep them above others; also through XWayland.
    gdk_set_allowed_backends("x11,wayland,*");
    // Without a GPU the plain renderer saves a software GL stack in each process, provided that neither the display nor
    // the engine loads it to see what it can do. A renderer of the user's own choice may need just that.
    const auto* chosen = g_getenv("GSK_RENDERER");
    if (hasRenderNode() || (chosen && std::string_view(chosen) != "cairo"))
        return;
    g_setenv("GSK_RENDERER", "cairo", TRUE);
    g_setenv("GDK_DEBUG", "gl-disable", FALSE);
    g_setenv("WEBKIT_DISABLE_COMPOSITING_MODE", "1", FALSE);
}

void addProvider(GtkCssProvider* provider)
{
    gtk_style_context_add_provider_for_display(
        gdk_display_get_default(), GTK_STYLE_PROVIDER(provider), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

void addProgramStyle()
{
    const auto style = foundation::Bundle::mainBundle().pathForResource("style.css");
    if (!style)
        return;
    auto* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_path(provider, style->c_str());
    addProvider(provider);
}

} // namespace

void addStyle(const char* style)
{
    auto* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider, style, -1);
    addProvider(provider);
}

bool hasRenderNode()
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", ignored)) {
        if (entry.path().filename().string().starts_with("renderD"))
            return true;
    }
    return false;
}

bool isToolkitLoaded()
{
    return isLibraryLoaded(LateLibrary::Toolkit);
}

void loadToolkit()
{
    if (isToolkitLoaded())
        return;
    loadLibrary(LateLibrary::Toolkit);
    chooseBackends();
    if (!gtk_init_check())
        foundation::fatalError("There is no display to show a window on");
    addProgramStyle();
}

bool isX11()
{
    return GDK_IS_X11_DISPLAY(gdk_display_get_default());
}

} // namespace desktop
