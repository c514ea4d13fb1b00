#include "platform/linux/webkit/PageRecovery.h"

#include <utility>

namespace webkit {
namespace {

constexpr gint64 recentMicroseconds = gint64 { 30 } * G_USEC_PER_SEC;

constexpr auto explanation = R"html(<!DOCTYPE html>
<html><head><meta charset="utf-8"><meta name="color-scheme" content="light dark"><title>This page has stopped</title>
<style>body { font: 15px/1.5 system-ui, sans-serif; margin: 20vh auto; max-width: 24em; padding: 0 1em }</style></head>
<body><h3>This page has stopped</h3><p>It ended unexpectedly twice in a row. Reload tries it once more.</p></body></html>
)html";

} // namespace

PageRecovery::PageRecovery(WebKitWebView* page)
    : page_(page)
    , dialogs_(page, [this] { endAndLeave(); })
{
    connections_.push_back(desktop::connect<void(WebKitLoadEvent)>(
        page_, "load-changed", [this](WebKitLoadEvent event) { loadChanged(event); }));
    connections_.push_back(
        desktop::connect<void(GParamSpec*)>(page_, "notify::is-loading", [this](GParamSpec*) { endLeaveAtRest(); }));
    connections_.push_back(desktop::connect<void(GParamSpec*)>(
        page_, "notify::is-web-process-responsive", [this](GParamSpec*) { responsivenessChanged(); }));
    connections_.push_back(desktop::connect<void(WebKitWebProcessTerminationReason)>(
        page_, "web-process-terminated", [this](WebKitWebProcessTerminationReason reason) { processDied(reason); }));
}

void PageRecovery::leave(Leaving leaving, const std::function<void()>& navigation)
{
    recentDeaths_ = 0;
    later_.reset();
    if (dialogs_.isPageWaiting())
        webkit_web_view_terminate_web_process(page_);
    // Kept for the case that the page turns out to hang: the engine knows after three seconds.
    pending_ = navigation;
    dialogs_.setLeaving(hasPage_ ? leaving : Leaving::No);
    navigation();
}

void PageRecovery::endLeave()
{
    pending_ = nullptr;
    dialogs_.setLeaving(Leaving::No);
}

void PageRecovery::loadChanged(WebKitLoadEvent event)
{
    if (event != WEBKIT_LOAD_COMMITTED)
        return;
    hasPage_ = true;
    isRecovering_ = false;
    endLeave();
}

/// The page was left before; or the load failed; or it led within the page, which nothing else tells.
void PageRecovery::endLeaveAtRest()
{
    if (!webkit_web_view_is_loading(page_))
        endLeave();
}

void PageRecovery::responsivenessChanged()
{
    // Without a page the process is merely slow to start.
    if (pending_ && hasPage_ && !webkit_web_view_get_is_web_process_responsive(page_))
        endAndLeave();
}

void PageRecovery::endAndLeave()
{
    // Later, because the page's request is still being handled.
    later_ = desktop::callAfter(0, [this] {
        const auto navigation = pending_;
        endLeave();
        if (!navigation)
            return;
        webkit_web_view_terminate_web_process(page_);
        navigation();
    });
}

void PageRecovery::processDied(WebKitWebProcessTerminationReason reason)
{
    hasPage_ = false;
    isRecovering_ = true;
    dialogs_.dismiss();
    if (reason == WEBKIT_WEB_PROCESS_TERMINATED_BY_API)
        return;
    const auto* address = webkit_web_view_get_uri(page_);
    address_ = address ? address : "";
    // Later, because the engine clears up after this signal.
    later_ = desktop::callAfter(0, [this] { reloadOrExplain(); });
}

void PageRecovery::reloadOrExplain()
{
    const auto now = g_get_monotonic_time();
    if (now - std::exchange(lastDeath_, now) > recentMicroseconds)
        recentDeaths_ = 0;
    ++recentDeaths_;
    if (recentDeaths_ == 1)
        loadAgain();
    else if (recentDeaths_ == 2)
        explain();
    // A third death is that of the explanation itself: nothing would help.
}

void PageRecovery::loadAgain()
{
    // A reload adds nothing to the history, but needs a page that got that far.
    if (webkit_back_forward_list_get_current_item(webkit_web_view_get_back_forward_list(page_)))
        webkit_web_view_reload(page_);
    else
        webkit_web_view_load_uri(page_, address_.c_str());
}

void PageRecovery::explain()
{
    webkit_web_view_load_alternate_html(page_, explanation, address_.c_str(), nullptr);
}

} // namespace webkit
