#include "platform/appkit/Window.h"

#include "platform/appkit/ViewController.h"
#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/appkit/WindowKeys.h"
#include "platform/linux/appkit/WindowNative.h"
#include "platform/linux/desktop/FirstResponder.h"
#include "platform/linux/desktop/FrontWindow.h"
#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/WindowIcon.h"
#include "platform/linux/desktop/X11Window.h"

#include <algorithm>

namespace appkit {
namespace {

constexpr auto windowKey = "perchly-window";
constexpr auto willClose = "willClose";

/// More than window managers put above a window's inside.
constexpr auto titleBarHeight = 40;

/// More than window managers put around a window's inside.
constexpr auto borderWidth = 8;

/// What the toolkit itself puts above the content, where the window manager leaves that to programs.
int titleBarInside(GtkWindow* window)
{
    auto height = 0;
    auto* content = gtk_window_get_child(window);
    for (auto* part = gtk_widget_get_first_child(GTK_WIDGET(window)); part; part = gtk_widget_get_next_sibling(part)) {
        auto natural = 0;
        if (part != content && gtk_widget_get_visible(part))
            gtk_widget_measure(part, GTK_ORIENTATION_VERTICAL, -1, nullptr, &natural, nullptr, nullptr);
        height += natural;
    }
    return height;
}

/// The inside with the window manager's part around it.
desktop::PixelRect framed(const desktop::PixelRect& inside, const desktop::X11Window::Frame& around)
{
    return { inside.x - around.left, inside.y - around.top, inside.width + around.left + around.right,
        inside.height + around.top + around.bottom };
}

/// Where the window manager is to put the window's inside.
desktop::PixelRect firstPlace(GtkWindow* window, const foundation::Rect& content)
{
    auto* display = gtk_widget_get_display(GTK_WIDGET(window));
    const auto areas = desktop::monitorAreas(display);
    const auto space = desktop::screenSpace(display);
    const auto wanted = space.pixelsFrom(content);
    return areas.empty() ? wanted
                         : desktop::constrainedContent(
                             wanted, areas.front().workArea, titleBarHeight * space.scale, borderWidth * space.scale);
}

GtkWindow* makeToplevel(WindowStyleMask styleMask)
{
    desktop::loadToolkit();
    auto* window = desktop::makeWindow();
    gtk_window_set_decorated(window, contains(styleMask, WindowStyleMask::Titled));
    gtk_window_set_deletable(window, contains(styleMask, WindowStyleMask::Closable));
    gtk_window_set_resizable(window, contains(styleMask, WindowStyleMask::Resizable));
    return window;
}

} // namespace

Window::Native::Native(GtkWindow* newWindow, std::string newClassName)
    : window(newWindow)
    , className(std::move(newClassName))
{
    g_object_add_weak_pointer(G_OBJECT(window), reinterpret_cast<gpointer*>(&window));
}

bool Window::Native::isPlaced() const
{
    return isOnScreen() && desktop::isX11();
}

foundation::Size Window::Native::currentContentSize() const
{
    auto* shown = window ? gtk_window_get_child(window) : nullptr;
    if (!isOnScreen() || !shown || gtk_widget_get_width(shown) == 0)
        return contentSize;
    return requestedSize.orElse(
        { static_cast<double>(gtk_widget_get_width(shown)), static_cast<double>(gtk_widget_get_height(shown)) });
}

foundation::Size Window::Native::sizeToBeShown() const
{
    auto size = currentContentSize();
    auto* shown = window ? gtk_window_get_child(window) : nullptr;
    if (!shown || isOnScreen())
        return size;
    auto width = 0;
    auto height = 0;
    gtk_widget_measure(shown, GTK_ORIENTATION_HORIZONTAL, -1, &width, nullptr, nullptr, nullptr);
    gtk_widget_measure(shown, GTK_ORIENTATION_VERTICAL, -1, &height, nullptr, nullptr, nullptr);
    size.width = std::max(size.width, static_cast<double>(width));
    size.height = std::max(size.height, static_cast<double>(height));
    return size;
}

void Window::Native::checkFirstPlace(desktop::PixelPoint wanted)
{
    // Some window managers place a new window by their own lights.
    const auto opened = g_get_monotonic_time();
    becomingActive
        = desktop::connect<void(GParamSpec*)>(window, "notify::is-active", [this, wanted, opened](GParamSpec*) {
              becomingActive.disconnect();
              // Later it may be the user who has moved it.
              constexpr auto opening = G_TIME_SPAN_SECOND;
              desktop::X11Window x11(GTK_WIDGET(window));
              if (g_get_monotonic_time() - opened < opening && x11.position() != wanted)
                  x11.move(wanted);
          });
}

Window::Native::~Native()
{
    if (!window)
        return;
    connections.clear();
    becomingActive.disconnect();
    g_object_set_data(G_OBJECT(window), windowKey, nullptr);
    auto* former = window;
    g_clear_weak_pointer(&window);
    if (!content)
        return;
    // Its owners may want to show it elsewhere.
    content->set(nullptr);
    content.reset();
    gtk_window_destroy(former);
}

std::shared_ptr<Window> wrapWindow(GtkWindow* window, std::string className)
{
    auto wrapped = std::make_shared<Window>(std::make_unique<Window::Native>(window, std::move(className)));
    g_object_set_data(G_OBJECT(window), windowKey, wrapped.get());
    connectMenuKeys(window);
    return wrapped;
}

std::shared_ptr<Window> windowOf(GtkWidget* widget)
{
    auto* root = gtk_widget_get_root(widget);
    auto* window = root ? static_cast<Window*>(g_object_get_data(G_OBJECT(root), windowKey)) : nullptr;
    // A hidden popover's window keeps a content that is the popover's no more.
    const auto isLent = window && !window->native().content && !window->isVisible();
    return window && !isLent ? window->weak_from_this().lock() : nullptr;
}

std::shared_ptr<Window> Window::create(foundation::Rect contentRect, WindowStyleMask styleMask)
{
    auto* toplevel = makeToplevel(styleMask);
    auto window = wrapWindow(toplevel, "Window");
    auto& native = window->native();
    native.content.emplace(toplevel,
        desktop::WindowContent::Place {
            .current = [toplevel] { return gtk_window_get_child(toplevel); },
            .put = [toplevel](GtkWidget* content) { gtk_window_set_child(toplevel, content); },
        });
    native.contentOrigin = contentRect.origin;
    window->setContentSize(contentRect.size);
    if (contains(styleMask, WindowStyleMask::Closable))
        connectCloseKey(toplevel);
    native.connections.push_back(
        desktop::connect<gboolean()>(toplevel, "close-request", [self = window.get()]() -> gboolean {
            self->close();
            return GDK_EVENT_STOP;
        }));
    return window;
}

Window::Window(std::unique_ptr<Native> native)
    : native_(std::move(native))
{
}

Window::~Window()
{
    // The content must outlive its leaving the window.
    native_.reset();
}

void Window::setTitle(std::string_view title)
{
    gtk_window_set_title(native_->window, std::string(title).c_str());
}

std::string Window::title() const
{
    const auto* title = gtk_window_get_title(native_->window);
    return title ? title : "";
}

void Window::setLevel(WindowLevel level)
{
    native_->level = level;
    if (native_->isOnScreen() && desktop::isX11())
        desktop::X11Window(GTK_WIDGET(native_->window)).setAbove(level == WindowLevel::Floating);
}

WindowLevel Window::level() const
{
    return native_->level;
}

void Window::setHidesOnDeactivate(bool /*hides*/)
{
    // No window does, on these desktops.
}

void Window::setContentViewController(std::shared_ptr<ViewController> content)
{
    // The former content must outlive its leaving the window.
    const auto before = std::exchange(content_, std::move(content));
    if (!native_->content)
        return;
    if (!content_)
        return native_->content->set(nullptr);
    // One that comes back finds the window as the user has it.
    if (content_ != before)
        setContentSize(content_->view()->frame().size);
    native_->content->set(widgetOf(*content_->view()));
}

foundation::Rect Window::frame() const
{
    const auto size = native_->currentContentSize();
    if (!native_->isPlaced())
        return { native_->contentOrigin, size };
    const desktop::X11Window x11(GTK_WIDGET(native_->window));
    const auto inside = x11.position();
    const auto space = desktop::screenSpace(gtk_widget_get_display(GTK_WIDGET(native_->window)));
    const auto pixels = space.pixelsFrom({ {}, size });
    return space.rectFrom(framed({ inside.x, inside.y, pixels.width, pixels.height }, x11.frame()));
}

void Window::setFrame(foundation::Rect frame)
{
    const auto before = this->frame();
    if (frame.size != before.size) {
        const auto content = native_->currentContentSize();
        setContentSize({ content.width + frame.size.width - before.size.width,
            content.height + frame.size.height - before.size.height });
    }
    if (!native_->isPlaced()) {
        native_->contentOrigin = frame.origin;
        return;
    }
    const auto space = desktop::screenSpace(gtk_widget_get_display(GTK_WIDGET(native_->window)));
    const auto wanted = space.pixelsFrom(frame);
    const auto present = space.pixelsFrom(before);
    if (wanted.x == present.x && wanted.y == present.y)
        return;
    desktop::X11Window x11(GTK_WIDGET(native_->window));
    const auto around = x11.frame();
    x11.move({ wanted.x + around.left, wanted.y + around.top });
}

void Window::setContentSize(foundation::Size size)
{
    native_->contentSize = size;
    native_->requestedSize.request(size);
    gtk_window_set_default_size(native_->window, desktop::wholePixels(size.width),
        desktop::wholePixels(size.height) + titleBarInside(native_->window));
}

void Window::center()
{
    auto* display = gtk_widget_get_display(GTK_WIDGET(native_->window));
    const auto areas = desktop::monitorAreas(display);
    if (areas.empty())
        return;
    const auto whole = desktop::screenSpace(display).rectFrom(areas.front().workArea);
    const auto size = native_->isPlaced() ? frame().size : native_->sizeToBeShown();
    // A third of the room stays above.
    const foundation::Point origin { whole.origin.x + (whole.size.width - size.width) / 2,
        whole.origin.y + (whole.size.height - size.height) * 2 / 3 };
    if (native_->isPlaced())
        setFrame({ origin, size });
    else
        native_->contentOrigin = origin;
}

void Window::setInitialFirstResponder(const View& view)
{
    if (content_)
        desktop::setFirstResponder(widgetOf(*content_->view()), widgetOf(view));
}

void Window::makeKeyWindow()
{
    if (!native_->isOnScreen())
        return;
    // The click that led here went to a panel, so GTK knows no recent enough time of its own.
    if (desktop::isX11())
        gtk_window_present_with_time(native_->window, desktop::X11Window(GTK_WIDGET(native_->window)).takeUserTime());
    else
        gtk_window_present(native_->window);
}

bool Window::isKeyWindow() const
{
    return native_->window && gtk_window_is_active(native_->window);
}

void Window::makeKeyAndOrderFront()
{
    if (!native_->content)
        return makeKeyWindow();
    if (native_->isOnScreen())
        return makeKeyWindow();
    auto* widget = GTK_WIDGET(native_->window);
    const auto place = firstPlace(native_->window, { native_->contentOrigin, native_->contentSize });
    gtk_widget_realize(widget);
    desktop::setWindowIcon(widget);
    native_->content->restoreFirstResponder();
    if (!desktop::isX11()) {
        setContentSize(native_->contentSize);
        return gtk_window_present(native_->window);
    }
    const auto scale = static_cast<double>(gtk_widget_get_scale_factor(widget));
    setContentSize({ place.width / scale, place.height / scale });
    desktop::X11Window x11(widget);
    x11.hintPosition({ place.x, place.y });
    gtk_window_present_with_time(native_->window, x11.takeUserTime());
    // Showing it, the toolkit has written its own hints over ours.
    x11.hintPosition({ place.x, place.y });
    native_->checkFirstPlace({ place.x, place.y });
    setLevel(native_->level);
}

bool Window::isVisible() const
{
    return native_->isOnScreen();
}

void Window::close()
{
    if (!native_->isOnScreen())
        return;
    const auto keepAlive = shared_from_this();
    notifications_.post(willClose);
    if (native_->content)
        native_->content->leaveAtClose();
    gtk_widget_set_visible(GTK_WIDGET(native_->window), FALSE);
}

foundation::ObservationToken Window::observeWillClose(std::function<void()> handler)
{
    return notifications_.addObserver(willClose, std::move(handler));
}

std::string Window::className() const
{
    return native_->className;
}

} // namespace appkit
