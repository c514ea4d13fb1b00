#include "platform/linux/webkit/PageDialogs.h"

#include <string_view>
#include <utility>

namespace webkit {
namespace {

constexpr std::size_t floodLength = 5;
constexpr gint64 floodMicroseconds = gint64 { 10 } * G_USEC_PER_SEC;
/// An unseen dialog answered at once would be a loop of messages that takes two processors.
constexpr unsigned holdMilliseconds = 250;

template <class Matches>
GtkWidget* findDescendant(GtkWidget* widget, const Matches& matches)
{
    for (auto* child = gtk_widget_get_first_child(widget); child; child = gtk_widget_get_next_sibling(child)) {
        if (matches(child))
            return child;
        if (auto* found = findDescendant(child, matches))
            return found;
    }
    return nullptr;
}

/// The dialog that the engine shows in the view, or null. It tells nobody when that is answered, but then it goes.
GtkWidget* shownDialog(WebKitWebView* page)
{
    return findDescendant(GTK_WIDGET(page), [](GtkWidget* widget) {
        return std::string_view(G_OBJECT_TYPE_NAME(widget)).find("ScriptDialog") != std::string_view::npos;
    });
}

} // namespace

PageDialogs::PageDialogs(WebKitWebView* page, std::function<void()> pageDoesNotLetGo)
    : page_(page)
    , pageDoesNotLetGo_(std::move(pageDoesNotLetGo))
{
    connections_.push_back(desktop::connect<gboolean(WebKitScriptDialog*)>(
        page_, "script-dialog", [this](WebKitScriptDialog* dialog) -> gboolean { return answer(dialog); }));
    connections_.push_back(
        desktop::connect<void(WebKitLoadEvent)>(page_, "load-changed", [this](WebKitLoadEvent event) {
            if (event != WEBKIT_LOAD_COMMITTED)
                return;
            isFlooding_ = false;
            latest_.clear();
        }));
    connections_.push_back(desktop::connect<void()>(page_, "map", [this] { release(); }));
}

void PageDialogs::setLeaving(Leaving leaving)
{
    isLeaving_ = leaving == Leaving::Away || (leaving == Leaving::AlongHistory && isFlooding_);
    askedWhileLeaving_ = 0;
}

bool PageDialogs::isPageWaiting() const
{
    return held_ || shownDialog(page_);
}

void PageDialogs::dismiss()
{
    release();
    // The engine would leave its dialog up, even over the next page.
    if (auto* dialog = shownDialog(page_)) {
        if (auto* button = findDescendant(dialog, [](GtkWidget* widget) { return GTK_IS_BUTTON(widget); }))
            g_signal_emit_by_name(button, "clicked");
    }
}

/// True for a dialog that the engine need not show.
bool PageDialogs::answer(WebKitScriptDialog* dialog)
{
    if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
        return true;
    }
    if (isLeaving_) {
        if (++askedWhileLeaving_ == floodLength)
            pageDoesNotLetGo_();
        return true;
    }
    if (!isFlood())
        return false;
    hold(dialog);
    return true;
}

bool PageDialogs::isFlood()
{
    latest_.push_back(g_get_monotonic_time());
    if (latest_.size() <= floodLength)
        return isFlooding_;
    isFlooding_ = isFlooding_ || latest_.back() - latest_.front() < floodMicroseconds;
    latest_.pop_front();
    return isFlooding_;
}

void PageDialogs::hold(WebKitScriptDialog* dialog)
{
    release();
    held_.reset(webkit_script_dialog_ref(dialog));
    releaseLater_ = desktop::callAfter(holdMilliseconds, [this] {
        // A page that nobody sees waits until it is shown, and costs nothing.
        if (gtk_widget_get_mapped(GTK_WIDGET(page_)))
            release();
    });
}

void PageDialogs::release()
{
    releaseLater_.reset();
    if (const auto dialog = std::exchange(held_, nullptr))
        webkit_script_dialog_close(dialog.get());
}

} // namespace webkit
