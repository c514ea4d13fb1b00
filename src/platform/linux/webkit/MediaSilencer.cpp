#include "platform/linux/webkit/MediaSilencer.h"

#include <string>

namespace webkit {
namespace {

constexpr auto worldName = "perchly";
constexpr auto handlerName = "silence";
constexpr auto pauseOrder = "pause";
constexpr auto askAgainOrder = "again";
/// More frames than a page has: beyond it the frames are asked who is still there.
constexpr std::size_t tidyLimit = 256;

// Runs in every frame, in our world. A frame out of the page cache may have lost its question and asks anew; the
// former one may still be answered first.
constexpr auto frameScript = R"js((secret) => {
    const handler = window.webkit.messageHandlers.silence;
    const pauseIn = (root) => {
        for (const media of root.querySelectorAll("audio, video"))
            media.pause();
        for (const element of root.querySelectorAll("*")) {
            if (element.shadowRoot)
                pauseIn(element.shadowRoot);
        }
    };
    let question = 0;
    const ask = () => {
        const mine = ++question;
        handler.postMessage(null).then((order) => {
            if (order === "pause") {
                pauseIn(document);
                window.dispatchEvent(new Event(secret));
            }
            if (mine === question)
                ask();
        }, () => {});
    };
    window.addEventListener("pageshow", (event) => event.persisted && ask());
    ask();
})js";

// Runs in every frame, in the page's world, before the page's own scripts. Proxies keep names, lengths and looks.
constexpr auto pageScript = R"js((secret) => {
    const { apply, defineProperty, getOwnPropertyDescriptor } = Reflect;
    const prototype = HTMLMediaElement.prototype;
    const { pause } = prototype;
    const known = new WeakSet();
    let players = [];
    const remember = (media) => {
        if (!(media instanceof HTMLMediaElement) || known.has(media))
            return;
        known.add(media);
        if (players.length % 64 === 63)
            players = players.filter((player) => player.deref());
        players[players.length] = new WeakRef(media);
    };
    const watch = (name, kind) => {
        const property = getOwnPropertyDescriptor(prototype, name);
        property[kind] = new Proxy(property[kind], {
            apply(original, media, values) {
                remember(media);
                return apply(original, media, values);
            },
        });
        defineProperty(prototype, name, property);
    };
    watch("play", "value");
    watch("autoplay", "set");
    window.addEventListener(secret, (event) => {
        event.stopImmediatePropagation();
        for (const player of players) {
            const media = player.deref();
            if (media)
                apply(pause, media, []);
        }
    });
})js";

struct UnrefScript {
    void operator()(WebKitUserScript* script) const { webkit_user_script_unref(script); }
};

using Script = std::unique_ptr<WebKitUserScript, UnrefScript>;

/// The script as a call with the name of the event by which our world tells the page's: no page can guess it.
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
    connections_.push_back(desktop::connect<void()>(page_, "map", [this] { unmute(); }));
    connections_.push_back(desktop::connect<void(GParamSpec*)>(page_, "notify::is-playing-audio", [this](GParamSpec*) {
        if (!webkit_web_view_is_playing_audio(page_))
            unmute();
    }));
    connections_.push_back(desktop::connect<void(WebKitWebProcessTerminationReason)>(
        page_, "web-process-terminated", [this](WebKitWebProcessTerminationReason) { waiting_.clear(); }));
}

void MediaSilencer::addScripts(WebKitUserContentManager* manager)
{
    const desktop::GLibPointer<> random(g_uuid_string_random());
    const std::string secret = random.get();
    webkit_user_content_manager_register_script_message_handler_with_reply(manager, handlerName, worldName);
    const Script inPage(webkit_user_script_new(withSecret(pageScript, secret).c_str(),
        WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES, WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr));
    const Script inFrame(
        webkit_user_script_new_for_world(withSecret(frameScript, secret).c_str(), WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
            WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, worldName, nullptr, nullptr));
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
    if (waiting_.empty())
        return;
    const auto context = desktop::adopt(jsc_context_new());
    const auto value = desktop::adopt(jsc_value_new_string(context.get(), order));
    const auto answered = std::exchange(waiting_, {});
    for (const auto& reply : answered)
        webkit_script_message_reply_return_value(reply.get(), value.get());
}

void MediaSilencer::pauseAll()
{
    if (webkit_web_view_is_playing_audio(page_))
        webkit_web_view_set_is_muted(page_, TRUE);
    answerAll(pauseOrder);
}

void MediaSilencer::unmute()
{
    if (webkit_web_view_get_is_muted(page_))
        webkit_web_view_set_is_muted(page_, FALSE);
}

} // namespace webkit
