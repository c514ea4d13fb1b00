#include "platform/linux/desktop/WindowIcon.h"

#include "platform/foundation/Bundle.h"
#include "platform/linux/desktop/GObject.h"

#include <string>
#include <vector>

namespace desktop {
namespace {

struct FreeList {
    void operator()(GList* list) const { g_list_free(list); }
};

/// Drawn when the program was built.
std::vector<ObjectPointer<GdkTexture>> loadIcons()
{
    std::vector<ObjectPointer<GdkTexture>> icons;
    for (const auto size : { 16, 32, 64 }) {
        const auto name = "org.perchly.Perchly." + std::to_string(size) + ".png";
        const auto path = foundation::Bundle::mainBundle().pathForResource(name);
        if (auto* icon = path ? gdk_texture_new_from_filename(path->c_str(), nullptr) : nullptr)
            icons.push_back(adopt(icon));
    }
    return icons;
}

} // namespace

void setWindowIcon(GtkWidget* toplevel)
{
    static const auto icons = loadIcons();
    GList* list = nullptr;
    for (const auto& icon : icons)
        list = g_list_prepend(list, icon.get());
    const std::unique_ptr<GList, FreeList> owned(list);
    gdk_toplevel_set_icon_list(GDK_TOPLEVEL(gtk_native_get_surface(GTK_NATIVE(toplevel))), list);
}

} // namespace desktop
