#include "platform/linux/popover/PopoverWindow.h"

#include "platform/linux/desktop/Monitors.h"
#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/desktop/X11Pointer.h"
#include "platform/linux/desktop/X11Window.h"
#include "platform/linux/popover/PopoverBackground.h"

namespace desktop {
namespace {

PopoverDismissal::Time now()
{
    return PopoverDismissal::Time(g_get_monotonic_time() / 1000);
}

bool hasOpenMenu(GtkWidget* widget)
{
    if (GTK_IS_POPOVER(widget) && gtk_widget_get_mapped(widget) && gtk_popover_get_autohide(GTK_POPOVER(widget)))
        return true;
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (hasOpenMenu(child))
            return true;
    }
    return false;
}

} // namespace

PopoverWindow::PopoverWindow(std::function<void()> closes)
    : closes_(std::move(closes))
    , window_(gtk_window_new())
    , background_(makePopoverBackground())
    , content_(window(),
          {
              .current = [this] { return popoverContent(background_); },
              .put = [this](GtkWidget* content) { setPopoverContent(background_, content); },
          })
{
    gtk_window_set_title(window(), "Perchly");
    gtk_window_set_decorated(window(), FALSE);
    // The content's size is the window's: the window manager is told that no other will do.
    gtk_window_set_resizable(window(), FALSE);
    gtk_widget_add_css_class(window_, "perchly-popover");
    gtk_window_set_child(window(), background_);
    connectSignals();
}

PopoverWindow::~PopoverWindow()
{
    stopWatching();
    connections_ = {};
    gtk_window_destroy(window());
}

void PopoverWindow::connectSignals()
{
    auto* keys = gtk_event_controller_key_new();
    gtk_widget_add_controller(window_, keys);
    connections_ = {
        connect<gboolean(guint, guint, GdkModifierType)>(keys, "key-pressed",
            [this](guint key, guint, GdkModifierType) -> gboolean {
                const auto decision
                    = key == GDK_KEY_Escape ? dismissal_.escapePressed() : PopoverDismissal::Decision {};
                apply(decision);
                return decision.closes;
            }),
        connect<gboolean()>(window_, "close-request",
            [this]() -> gboolean {
                closes_();
                return GDK_EVENT_STOP;
            }),
        connect<void(GParamSpec*)>(window_, "notify::is-active", [this](GParamSpec*) { activeChanged(); }),
        connect<void(GParamSpec*)>(gtk_widget_get_display(window_), "notify::composited",
            [this](GParamSpec*) {
                if (isShown_)
                    layOut();
            }),
    };
}

void PopoverWindow::setAnimates(bool animates)
{
    if (animates)
        gtk_widget_add_css_class(background_, "animated");
    else
        gtk_widget_remove_css_class(background_, "animated");
}

void PopoverWindow::setContentSize(int width, int height)
{
    if (width == contentWidth_ && height == contentHeight_)
        return;
    contentWidth_ = width;
    contentHeight_ = height;
    if (isShown_)
        layOut();
}

void PopoverWindow::show(std::optional<PixelPoint> anchor)
{
    const auto wasShown = std::exchange(isShown_, true);
    anchor_ = anchor;
    if (!gtk_widget_get_realized(window_)) {
        gtk_widget_realize(window_);
        if (isX11())
            X11Window(window_).setAuxiliary();
    }
    layOut();
    content_.restoreFirstResponder();
    if (!wasShown) {
        dismissal_.shown();
        isPlaceChecked_ = false;
    }
    present();
    // While the window manager is busy with it: not before.
    if (!wasShown)
        startWatching();
}

void PopoverWindow::hide()
{
    if (!std::exchange(isShown_, false))
        return;
    stopWatching();
    dismissal_.closed(now());
    content_.rememberFirstResponder();
    gtk_widget_set_visible(window_, FALSE);
    gdk_display_flush(gtk_widget_get_display(window_));
}

bool PopoverWindow::wasClosedByClick() const
{
    return dismissal_.wasClosedByClick(now());
}

void PopoverWindow::present()
{
    if (!isX11())
        return gtk_window_present(window());
    X11Window x11(window_);
    gtk_window_present_with_time(window(), x11.takeUserTime());
    // Showing it, the toolkit has written its own hints over ours.
    x11.place(frame_);
    x11.setAbove(true);
}

bool PopoverWindow::isPlain() const
{
    return !gdk_display_is_composited(gtk_widget_get_display(window_));
}

void PopoverWindow::layOut()
{
    auto* display = gtk_widget_get_display(window_);
    const auto scale = isX11() ? gtk_widget_get_scale_factor(window_) : 1;
    const PopoverScene scene { monitorAreas(display), anchor_, gtk_widget_get_default_direction() == GTK_TEXT_DIR_RTL };
    const auto placement = placePopover(scene, bubbleShape(contentWidth_, contentHeight_, scale, isPlain()));
    const auto content = contentSizeIn({ placement.box.width, placement.box.height }, scale);
    PopoverBackgroundShape shape {
        .contentWidth = content.width, .contentHeight = content.height, .isPlain = isPlain()
    };
    // Elsewhere the place is not ours to choose.
    if (isX11()) {
        shape.side = placement.side;
        if (placement.arrow && !shape.isPlain)
            shape.arrow = static_cast<double>(*placement.arrow) / scale;
        X11Window(window_).keepPicture(frame_, placement.window);
        frame_ = placement.window;
    }
    setPopoverShape(background_, shape);
    setInputRegion();
    if (isX11())
        X11Window(window_).place(frame_);
}

/// Clicks on the shadow go to what is seen through it.
void PopoverWindow::setInputRegion()
{
    const auto box = popoverBox(background_);
    auto* region = cairo_region_create_rectangle(&box);
    gdk_surface_set_input_region(gtk_native_get_surface(GTK_NATIVE(window_)), region);
    cairo_region_destroy(region);
}

void PopoverWindow::startWatching()
{
    if (isX11())
        presses_.emplace(gtk_widget_get_display(window_), [this](const PressWatch::Press& press) { pressed(press); });
}

void PopoverWindow::stopWatching()
{
    presses_.reset();
    waking_.reset();
}

void PopoverWindow::activeChanged()
{
    const auto isActive = gtk_window_is_active(window()) != FALSE;
    // Some window managers place a new window by their own lights.
    if (isShown_ && isActive && isX11() && !std::exchange(isPlaceChecked_, true)) {
        X11Window x11(window_);
        if (x11.position() != PixelPoint { frame_.x, frame_.y })
            x11.place(frame_);
    }
    apply(dismissal_.activeChanged(isActive));
}

void PopoverWindow::pressed(const PressWatch::Press& press)
{
    using Press = PopoverDismissal::Press;
    auto where = Press::Elsewhere;
    if (isOurs(press) || press.under == PressWatch::Under::ForeignMenu)
        where = Press::Inside;
    else if (anchor_ && isInSameIcon(monitorAreas(gtk_widget_get_display(window_)), *anchor_, press.point))
        where = Press::OnItem;
    apply(dismissal_.pressed(where, hasDialog()));
}

bool PopoverWindow::isOurs(const PressWatch::Press& press) const
{
    auto* native = press.surface ? gtk_native_get_for_surface(press.surface) : nullptr;
    return native && GTK_WIDGET(gtk_widget_get_root(GTK_WIDGET(native))) == window_;
}

bool PopoverWindow::hasDialog() const
{
    auto hasOne = hasOpenMenu(background_);
    auto* windows = gtk_window_list_toplevels();
    for (auto* link = windows; link; link = link->next) {
        auto* other = GTK_WINDOW(link->data);
        if (other != window() && gtk_widget_get_mapped(GTK_WIDGET(other)))
            hasOne = hasOne || gtk_window_get_modal(other) || gtk_window_get_transient_for(other) == window();
    }
    g_list_free(windows);
    return hasOne;
}

PopoverDismissal::Surroundings PopoverWindow::surroundings() const
{
    PopoverDismissal::Surroundings found { .isActive = gtk_window_is_active(window()) != FALSE,
        .hasDialog = hasDialog() };
    if (isX11()) {
        found.isActiveWindow = X11Window(window_).isActiveWindow();
        found.isButtonDown = queryPointer(gtk_widget_get_display(window_)).isButtonDown;
    }
    return found;
}

void PopoverWindow::apply(const PopoverDismissal::Decision& decision)
{
    if (decision.wakesAfter)
        waking_ = callAfter(
            static_cast<unsigned>(decision.wakesAfter->count()), [this] { apply(dismissal_.woken(surroundings())); });
    if (decision.takesKeyboard)
        present();
    if (decision.closes)
        closes_(); // last: the owner may let go of us
}

} // namespace desktop
