#pragma once

#include "platform/linux/desktop/GObject.h"

#include <webkit/webkit.h>

#include <memory>
#include <vector>

namespace webkit {

/// Pauses what plays in a page, in every frame of it, which the engine has no function for, and keeps the page mute
/// from then on until it is shown again.
/// A script in a world of its own, which pages can't see, waits in each frame for the answer to a question that it
/// asked; the answer is the order to pause. Elements that are in no document, and trees that are closed to that
/// world, are found by a second script in the page's own world. What can't be found or isn't an element (Web Audio)
/// is mute only; so is what a page starts out of sight.
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
    void shown();
    void hidden();
    void playingChanged();
    [[nodiscard]] bool isShown() const;
    void setMuted(bool isMuted);

    WebKitWebView* page_;
    /// From the order until the view is shown again.
    bool isSilenced_ = false;
    /// One for each frame, and some of frames that are gone.
    std::vector<Reply> waiting_;
    std::vector<desktop::SignalConnection> connections_;
};

} // namespace webkit
