#pragma once

#include "platform/linux/desktop/GObject.h"

#include <webkit/webkit.h>

#include <memory>
#include <vector>

namespace webkit {

/// Pauses what plays in a page, in every frame of it, which the engine has no function for.
/// A script in a world of its own, which pages can't see, waits in each frame for the answer to a question that it
/// asked; the answer is the order to pause. Elements that are in no document are found by a second script in the
/// page's own world. What can't be found (Web Audio, an element in no document that began by its attribute alone)
/// is muted until the view is shown again.
class MediaSilencer {
public:
    explicit MediaSilencer(WebKitWebView* page);

    void pauseAll();

private:
    struct Unref {
        void operator()(WebKitScriptMessageReply* reply) const { webkit_script_message_reply_unref(reply); }
    };
    using Reply = std::unique_ptr<WebKitScriptMessageReply, Unref>;

    void addScripts(WebKitUserContentManager* manager);
    void waitForOrder(WebKitScriptMessageReply* reply);
    void answerAll(const char* order);
    void unmute();

    WebKitWebView* page_;
    /// One for each frame, and some of frames that are gone.
    std::vector<Reply> waiting_;
    std::vector<desktop::SignalConnection> connections_;
};

} // namespace webkit
