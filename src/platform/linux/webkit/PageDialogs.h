#pragma once

#include "platform/linux/desktop/GObject.h"

#include <webkit/webkit.h>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace webkit {

/// How a page is being left. A step along the history may stay within it, and then it may ask something on the way.
enum class Leaving { No, AlongHistory, Away };

/// Lets a page show its dialogs, which stop its scripts until they are answered, but not one after the other without
/// end: those of a page that floods the user are answered with "cancel" unseen and slowly, until it is left. While
/// it is being left it shows none; one that asks on and on even then doesn't let go.
class PageDialogs {
public:
    PageDialogs(WebKitWebView* page, std::function<void()> pageDoesNotLetGo);

    void setLeaving(Leaving leaving);

    /// True while the page waits for an answer, and can't be left.
    [[nodiscard]] bool isPageWaiting() const;

    /// Takes the dialog away, seen or unseen: nobody needs the answer any more.
    void dismiss();

private:
    struct Unref {
        void operator()(WebKitScriptDialog* dialog) const { webkit_script_dialog_unref(dialog); }
    };

    bool answer(WebKitScriptDialog* dialog);
    [[nodiscard]] bool isFlood();
    void hold(WebKitScriptDialog* dialog);
    void release();

    WebKitWebView* page_;
    std::function<void()> pageDoesNotLetGo_;
    bool isLeaving_ = false;
    std::size_t askedWhileLeaving_ = 0;
    bool isFlooding_ = false;
    std::deque<gint64> latest_;
    std::unique_ptr<WebKitScriptDialog, Unref> held_;
    desktop::SourceHandle releaseLater_;
    std::vector<desktop::SignalConnection> connections_;
};

} // namespace webkit
