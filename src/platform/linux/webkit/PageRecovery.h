#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/linux/webkit/PageDialogs.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>
#include <vector>

namespace webkit {

/// Keeps a view usable when its page is not. A page whose process died is loaded once more; one that dies again soon
/// is explained. A page that hangs or waits for an answer can't keep the user: its process is ended to leave it.
class PageRecovery {
public:
    explicit PageRecovery(WebKitWebView* page);

    /// Does what leaves the page or reloads it.
    void leave(Leaving leaving, const std::function<void()>& navigation);

    /// True from the death of a process until its successor shows the page: the engine then forgets the address.
    [[nodiscard]] bool isRecovering() const { return isRecovering_; }

private:
    void loadChanged(WebKitLoadEvent event);
    void endLeaveAtRest();
    void endLeave();
    void responsivenessChanged();
    void endAndLeave();
    void processDied(WebKitWebProcessTerminationReason reason);
    void reloadOrExplain();
    void loadAgain();
    void explain();

    WebKitWebView* page_;
    PageDialogs dialogs_;
    std::function<void()> pending_;
    bool hasPage_ = false;
    bool isRecovering_ = false;
    /// Of the page whose process died.
    std::string address_;
    int recentDeaths_ = 0;
    gint64 lastDeath_ = 0;
    desktop::SourceHandle later_;
    std::vector<desktop::SignalConnection> connections_;
};

} // namespace webkit
