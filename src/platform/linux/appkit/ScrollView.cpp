#include "platform/appkit/ScrollView.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/desktop/WindowContent.h"

#include <utility>

namespace appkit {
namespace {

/// A view without a scroller can be scrolled in other ways.
constexpr auto noScroller = GTK_POLICY_EXTERNAL;

GtkWidget* makeScrollView()
{
    auto* widget = gtk_scrolled_window_new();
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(widget), noScroller, noScroller);
    return widget;
}

struct Policies {
    GtkPolicyType horizontal = noScroller;
    GtkPolicyType vertical = noScroller;
};

Policies policiesOf(GtkScrolledWindow* window)
{
    Policies policies;
    gtk_scrolled_window_get_policy(window, &policies.horizontal, &policies.vertical);
    return policies;
}

GtkPolicyType policyFor(bool hasScroller, bool autohides)
{
    if (!hasScroller)
        return noScroller;
    return autohides ? GTK_POLICY_AUTOMATIC : GTK_POLICY_ALWAYS;
}

/// Whether the view autohides its scrollers; their policies don't say it of one that has none.
constexpr auto autohidesKey = "perchly-autohides";

bool autohides(GtkScrolledWindow* window)
{
    return g_object_get_data(G_OBJECT(window), autohidesKey) != nullptr;
}

} // namespace

ScrollView::ScrollView()
    : View(makeNative(makeScrollView))
{
}

void ScrollView::setHasVerticalScroller(bool has)
{
    auto* window = GTK_SCROLLED_WINDOW(widgetOf(*this));
    gtk_scrolled_window_set_policy(window, policiesOf(window).horizontal, policyFor(has, autohides(window)));
}

void ScrollView::setHasHorizontalScroller(bool has)
{
    auto* window = GTK_SCROLLED_WINDOW(widgetOf(*this));
    gtk_scrolled_window_set_policy(window, policyFor(has, autohides(window)), policiesOf(window).vertical);
}

void ScrollView::setAutohidesScrollers(bool autohides)
{
    auto* window = GTK_SCROLLED_WINDOW(widgetOf(*this));
    const auto [horizontal, vertical] = policiesOf(window);
    g_object_set_data(G_OBJECT(window), autohidesKey, GINT_TO_POINTER(autohides));
    setHasHorizontalScroller(horizontal != noScroller);
    setHasVerticalScroller(vertical != noScroller);
}

void ScrollView::setBorderType(BorderType type)
{
    gtk_scrolled_window_set_has_frame(GTK_SCROLLED_WINDOW(widgetOf(*this)), type == BorderType::Bezel);
}

void ScrollView::setDocumentView(std::shared_ptr<View> view)
{
    // The former one must outlive its leaving.
    const auto before = std::exchange(documentView_, std::move(view));
    if (before)
        desktop::takeOut(widgetOf(*before));
    if (!documentView_)
        return;
    auto* document = widgetOf(*documentView_);
    desktop::takeOut(document);
    gtk_widget_set_hexpand(document, TRUE);
    gtk_widget_set_vexpand(document, TRUE);
    gtk_scrolled_window_set_child(GTK_SCROLLED_WINDOW(widgetOf(*this)), document);
}

} // namespace appkit
