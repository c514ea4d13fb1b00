#include "platform/linux/webkit/PageDialogs.h"

#include <string_view>
#include <utility>

namespace webkit {
namespace {

constexpr std::size_t floodLength = 5;
constexpr gint64 floodMicroseconds = 10 * G_USEC_PER_SEC;
/// An unseen dialog answered at once would be a loop of messages that takes two processors.
constexpr unsigned holdMilliseconds = 250;

} // namespace

PageDialogs::PageDialogs(WebKitWebView* page)
    : page_(page)
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

bool PageDialogs::isPageWaiting() const
{
    if (held_)
        return true;
    // The engine tells nobody when its dialog is answered, but then the widget goes.
    for (auto* child = gtk_widget_get_first_child(GTK_WIDGET(page_)); child;
         child = gtk_widget_get_next_sibling(child)) {
        if (std::string_view(G_OBJECT_TYPE_NAME(child)).find("ScriptDialog") != std::string_view::npos)
            return true;
    }
    return false;
}

/// True for a dialog that the engine need not show.
bool PageDialogs::answer(WebKitScriptDialog* dialog)
{
    if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
        webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
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
