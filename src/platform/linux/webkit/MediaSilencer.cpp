#include "platform/linux/webkit/MediaSilencer.h"

#include "platform/linux/webkit/MediaScripts.h"

#include <string>

namespace webkit {
namespace {

constexpr auto worldName = "perchly";
constexpr auto handlerName = "silence";
constexpr auto pauseOrder = "pause";
constexpr auto askAgainOrder = "again";
/// More frames than a page has: beyond it the frames are asked who is still there.
constexpr std::size_t tidyLimit = 256;

struct UnrefScript {
    void operator()(WebKitUserScript* script) const { webkit_user_script_unref(script); }
};

using Script = std::unique_ptr<WebKitUserScript, UnrefScript>;

std::string withSecret(const char* script, const std::string& secret)
{
    return "(" + std::string(script) + ")(\"" + secret + "\");";
}

} // namespace

MediaSilencer::MediaSilencer(WebKitWebView* page)
    : page_(page)
{
    auto* manager = webkit_web_view_get_user_content_manager(page_);
    addScripts(manager);
    connections_.push_back(desktop::connect<gboolean(JSCValue*, WebKitScriptMessageReply*)>(manager,
        "script-message-with-reply-received::silence", [this](JSCValue*, WebKitScriptMessageReply* reply) -> gboolean {
            waitForOrder(reply);
            return TRUE;
        }));
    connections_.push_back(desktop::connect<void()>(page_, "map", [this] { shown(); }));
    connections_.push_back(desktop::connect<void()>(page_, "unmap", [this] { hidden(); }));
    connections_.push_back(desktop::connect<void(GParamSpec*)>(
        page_, "notify::is-playing-audio", [this](GParamSpec*) { playingChanged(); }));
    connections_.push_back(desktop::connect<void(WebKitWebProcessTerminationReason)>(
        page_, "web-process-terminated", [this](WebKitWebProcessTerminationReason) { waiting_.clear(); }));
}

void MediaSilencer::addScripts(WebKitUserContentManager* manager)
{
    const desktop::GLibPointer<> random(g_uuid_string_random());
    const std::string secret = random.get();
    webkit_user_content_manager_register_script_message_handler_with_reply(manager, handlerName, worldName);
    const Script inPage(webkit_user_script_new(withSecret(scripts::pageScript, secret).c_str(),
        WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr));
    const Script inFrame(webkit_user_script_new_for_world(withSecret(scripts::frameScript, secret).c_str(),
        WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, worldName, nullptr,
        nullptr));
    webkit_user_content_manager_add_script(manager, inPage.get());
    webkit_user_content_manager_add_script(manager, inFrame.get());
}

void MediaSilencer::waitForOrder(WebKitScriptMessageReply* reply)
{
    if (waiting_.size() >= tidyLimit)
        answerAll(askAgainOrder);
    waiting_.emplace_back(webkit_script_message_reply_ref(reply));
}

void MediaSilencer::answerAll(const char* order)
{
    // As an error, which is a mere text: a script's value takes a machine of its own here, and to end such a machine
    // beside the engine's has crashed it.
    for (const auto& reply : std::exchange(waiting_, {}))
        webkit_script_message_reply_return_error_message(reply.get(), order);
}

void MediaSilencer::pauseAll()
{
    isSilenced_ = true;
    if (!isShown() || webkit_web_view_is_playing_audio(page_))
        setMuted(true);
    answerAll(pauseOrder);
}

void MediaSilencer::shown()
{
    isSilenced_ = false;
    setMuted(false);
}

void MediaSilencer::hidden()
{
    if (isSilenced_)
        setMuted(true);
}

void MediaSilencer::playingChanged()
{
    if (isShown() && !webkit_web_view_is_playing_audio(page_))
        setMuted(false);
}

bool MediaSilencer::isShown() const
{
    return gtk_widget_get_mapped(GTK_WIDGET(page_));
}

void MediaSilencer::setMuted(bool isMuted)
{
    if (static_cast<bool>(webkit_web_view_get_is_muted(page_)) != isMuted)
        webkit_web_view_set_is_muted(page_, isMuted);
}

} // namespace webkit
