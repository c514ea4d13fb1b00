#include "platform/linux/desktop/Pointer.h"

#include "platform/linux/desktop/Environment.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/X11Pointer.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <string_view>

namespace desktop {
namespace {

struct CloseLibrary {
    void operator()(void* library) const { dlclose(library); }
};

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

/// The few functions that are needed of the lightest X11 library.
class Xcb {
public:
    Xcb()
        : library_(dlopen("libxcb.so.1", RTLD_LAZY | RTLD_LOCAL))
    {
        if (!library_)
            return;
        complete_ = find(connect, "xcb_connect") && find(disconnect, "xcb_disconnect")
            && find(hasError, "xcb_connection_has_error") && find(getSetup, "xcb_get_setup")
            && find(roots, "xcb_setup_roots_iterator") && find(queryPointer, "xcb_query_pointer")
            && find(pointerReply, "xcb_query_pointer_reply") && find(queryExtension, "xcb_query_extension")
            && find(extensionReply, "xcb_query_extension_reply");
    }

    explicit operator bool() const { return complete_; }

    decltype(&xcb_connect) connect = nullptr;
    decltype(&xcb_disconnect) disconnect = nullptr;
    decltype(&xcb_connection_has_error) hasError = nullptr;
    decltype(&xcb_get_setup) getSetup = nullptr;
    decltype(&xcb_setup_roots_iterator) roots = nullptr;
    decltype(&xcb_query_pointer) queryPointer = nullptr;
    decltype(&xcb_query_pointer_reply) pointerReply = nullptr;
    decltype(&xcb_query_extension) queryExtension = nullptr;
    decltype(&xcb_query_extension_reply) extensionReply = nullptr;

private:
    template <class Function>
    bool find(Function& function, const char* name)
    {
        function = reinterpret_cast<Function>(dlsym(library_.get(), name));
        return function != nullptr;
    }

    std::unique_ptr<void, CloseLibrary> library_;
    bool complete_ = false;
};

/// An X server inside a Wayland desktop sees the pointer only over its own windows.
bool isXwayland(const Xcb& xcb, xcb_connection_t* connection)
{
    constexpr std::string_view name = "XWAYLAND";
    const auto cookie = xcb.queryExtension(connection, static_cast<std::uint16_t>(name.size()), name.data());
    const std::unique_ptr<xcb_query_extension_reply_t, FreeMemory> reply(
        xcb.extensionReply(connection, cookie, nullptr));
    return reply && reply->present;
}

std::optional<std::pair<int, int>> askForPointer(const Xcb& xcb, xcb_connection_t* connection)
{
    if (xcb.hasError(connection) || isXwayland(xcb, connection))
        return std::nullopt;
    const auto screens = xcb.roots(xcb.getSetup(connection));
    if (screens.rem == 0)
        return std::nullopt;
    const auto cookie = xcb.queryPointer(connection, screens.data->root);
    const std::unique_ptr<xcb_query_pointer_reply_t, FreeMemory> reply(xcb.pointerReply(connection, cookie, nullptr));
    if (!reply)
        return std::nullopt;
    return std::pair { static_cast<int>(reply->root_x), static_cast<int>(reply->root_y) };
}

std::optional<std::pair<int, int>> placeOnToolkitsDisplay()
{
    auto* display = gdk_display_get_default();
    if (!seesPointerEverywhere(display))
        return std::nullopt;
    const auto place = queryPointer(display).place;
    return std::pair { place.x, place.y };
}

} // namespace

std::optional<std::pair<int, int>> pointerPosition()
{
    if (environment("DISPLAY").empty() || !environment("WAYLAND_DISPLAY").empty())
        return std::nullopt;
    // A connection of its own takes longer than all else that a click does.
    if (isToolkitLoaded() && isX11())
        return placeOnToolkitsDisplay();
    const Xcb xcb;
    if (!xcb)
        return std::nullopt;
    auto* connection = xcb.connect(nullptr, nullptr);
    const auto position = askForPointer(xcb, connection);
    xcb.disconnect(connection);
    return position;
}

} // namespace desktop
