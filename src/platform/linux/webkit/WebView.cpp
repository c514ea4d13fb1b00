#include "platform/webkit/WebView.h"

#include "platform/linux/appkit/ViewNative.h"
#include "platform/linux/webkit/EngineWidget.h"
#include "platform/linux/webkit/MediaSilencer.h"
#include "platform/linux/webkit/PageRecovery.h"
#include "platform/linux/webkit/WebsiteDataStoreNative.h"

#include <utility>

namespace webkit {
namespace {

constexpr auto urlChange = "url";
constexpr auto loadingChange = "isLoading";

std::string textOf(const char* text)
{
    return text ? text : "";
}

/// The engine's address to the letter; it is one already, however odd.
foundation::URL urlOf(const std::string& address)
{
    const auto parsed = foundation::URL::parse(address);
    return foundation::URL::verbatim(address, parsed ? parsed->host() : "");
}

/// A script of a frame must not reach the page around it, nor the user's files, by asking for a window.
bool mayOpen(const std::string& address)
{
    const desktop::GLibPointer<> scheme(g_uri_parse_scheme(address.c_str()));
    if (!scheme)
        return false;
    return g_ascii_strcasecmp(scheme.get(), "javascript") != 0 && g_ascii_strcasecmp(scheme.get(), "file") != 0;
}

} // namespace

struct WebView::Engine {
    explicit Engine(WebView& view);

    void load(const URLRequest& request);
    /// Each navigation has a deadline of its own, which ends with its first answer.
    void navigate(Leaving leaving, const std::function<void()>& navigation,
        std::chrono::milliseconds timeoutInterval = foundation::defaultTimeoutInterval);
    void addressChanged();
    void loadingChanged();
    void loadChanged(WebKitLoadEvent event);
    void stopLoading();
    void openWindow(WebKitNavigationAction* action);

    WebView& owner;
    WebKitWebView* page;
    MediaSilencer silencer;
    PageRecovery recovery;
    std::weak_ptr<NavigationDelegate> navigationDelegate;
    std::weak_ptr<UIDelegate> uiDelegate;
    foundation::NotificationCenter changes;
    std::string address;
    std::string userAgent;
    bool isLoading = false;
    bool hasFailed = false;
    /// The engine has begun what it was last sent to.
    bool hasStarted = true;
    bool stopsAtStart = false;
    desktop::SourceHandle deadline;
    std::vector<desktop::SignalConnection> connections;
};

WebView::Engine::Engine(WebView& view)
    : owner(view)
    , page(WEBKIT_WEB_VIEW(appkit::widgetOf(view)))
    , silencer(page)
    , recovery(page)
    , connections(restrictPage(page))
{
    connections.push_back(
        desktop::connect<void(GParamSpec*)>(page, "notify::uri", [this](GParamSpec*) { addressChanged(); }));
    connections.push_back(
        desktop::connect<void(GParamSpec*)>(page, "notify::is-loading", [this](GParamSpec*) { loadingChanged(); }));
    connections.push_back(desktop::connect<void(WebKitLoadEvent)>(
        page, "load-changed", [this](WebKitLoadEvent event) { loadChanged(event); }));
    // Handled here, the engine shows no page of its own, and the page that was there stays.
    connections.push_back(desktop::connect<gboolean(WebKitLoadEvent, const char*, GError*)>(
        page, "load-failed", [this](WebKitLoadEvent, const char*, GError*) -> gboolean { return hasFailed = true; }));
    connections.push_back(desktop::connect<gboolean(const char*, GTlsCertificate*, GTlsCertificateFlags)>(page,
        "load-failed-with-tls-errors",
        [this](const char*, GTlsCertificate*, GTlsCertificateFlags) -> gboolean { return hasFailed = true; }));
    connections.push_back(desktop::connect<GtkWidget*(WebKitNavigationAction*)>(
        page, "create", [this](WebKitNavigationAction* action) -> GtkWidget* {
            openWindow(action);
            return nullptr;
        }));
}

void WebView::Engine::load(const URLRequest& request)
{
    const auto loadRequest = [webView = page, text = request.url.absoluteString()] {
        const auto engineRequest = desktop::adopt(webkit_uri_request_new(text.c_str()));
        webkit_web_view_load_request(webView, engineRequest.get());
    };
    navigate(Leaving::Away, loadRequest, request.timeoutInterval);
}

void WebView::Engine::navigate(
    Leaving leaving, const std::function<void()>& navigation, std::chrono::milliseconds timeoutInterval)
{
    deadline = desktop::callAfter(
        static_cast<unsigned>(timeoutInterval.count()), [this] { webkit_web_view_stop_loading(page); });
    hasStarted = false;
    stopsAtStart = false;
    recovery.leave(leaving, navigation);
}

void WebView::Engine::addressChanged()
{
    auto current = textOf(webkit_web_view_get_uri(page));
    // The engine forgets the address with the process; the view is still about that page.
    if (current == address || (current.empty() && recovery.isRecovering()))
        return;
    address = std::move(current);
    const auto keepAlive = owner.weak_from_this().lock();
    changes.post(urlChange);
}

void WebView::Engine::loadingChanged()
{
    const bool current = webkit_web_view_is_loading(page);
    if (current == isLoading)
        return;
    isLoading = current;
    if (!isLoading)
        deadline.reset();
    const auto keepAlive = owner.weak_from_this().lock();
    changes.post(loadingChange);
}

void WebView::Engine::loadChanged(WebKitLoadEvent event)
{
    if (event == WEBKIT_LOAD_STARTED) {
        keepWhatIsLoaded();
        hasFailed = false;
        hasStarted = true;
        if (std::exchange(stopsAtStart, false))
            return webkit_web_view_stop_loading(page);
    }
    if (event == WEBKIT_LOAD_COMMITTED)
        deadline.reset();
    if (event != WEBKIT_LOAD_FINISHED || hasFailed)
        return;
    const auto keepAlive = owner.weak_from_this().lock();
    if (const auto delegate = navigationDelegate.lock())
        delegate->webViewDidFinishNavigation(owner);
}

void WebView::Engine::stopLoading()
{
    // Stopped before it begins, the load would neither go on nor end.
    if (isLoading && !hasStarted)
        stopsAtStart = true;
    else
        webkit_web_view_stop_loading(page);
}

void WebView::Engine::openWindow(WebKitNavigationAction* action)
{
    const auto target = textOf(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
    const auto delegate = uiDelegate.lock();
    if (!delegate || !mayOpen(target))
        return;
    const auto keepAlive = owner.weak_from_this().lock();
    const NavigationAction asked { .request = { .url = urlOf(target) }, .hasTargetFrame = false };
    if (const auto opened = delegate->createWebView(owner, asked))
        opened->load(asked.request);
}

WebView::WebView(const WebViewConfiguration& configuration)
    : View(appkit::makeNative([&] { return makeEngineWidget(configuration); }))
    , engine_(std::make_unique<Engine>(*this))
{
}

WebView::~WebView() = default;

std::optional<foundation::URL> WebView::url() const
{
    if (engine_->address.empty())
        return std::nullopt;
    return urlOf(engine_->address);
}

std::optional<std::string> WebView::title() const
{
    auto title = textOf(webkit_web_view_get_title(engine_->page));
    if (title.empty())
        return std::nullopt;
    return title;
}

bool WebView::isLoading() const
{
    return engine_->isLoading;
}

bool WebView::canGoBack() const
{
    return webkit_web_view_can_go_back(engine_->page);
}

bool WebView::canGoForward() const
{
    return webkit_web_view_can_go_forward(engine_->page);
}

void WebView::load(const URLRequest& request)
{
    engine_->load(request);
}

void WebView::goBack()
{
    if (canGoBack())
        engine_->navigate(Leaving::AlongHistory, [page = engine_->page] { webkit_web_view_go_back(page); });
}

void WebView::goForward()
{
    if (canGoForward())
        engine_->navigate(Leaving::AlongHistory, [page = engine_->page] { webkit_web_view_go_forward(page); });
}

void WebView::reload()
{
    engine_->navigate(Leaving::Away, [page = engine_->page] { webkit_web_view_reload(page); });
}

void WebView::stopLoading()
{
    engine_->stopLoading();
}

void WebView::pauseAllMediaPlayback()
{
    engine_->silencer.pauseAll();
}

void WebView::setCustomUserAgent(std::string_view userAgent)
{
    engine_->userAgent = userAgent;
    // An empty one stands for the engine's own.
    webkit_settings_set_user_agent(webkit_web_view_get_settings(engine_->page), engine_->userAgent.c_str());
}

std::string WebView::customUserAgent() const
{
    return engine_->userAgent;
}

void WebView::setNavigationDelegate(std::weak_ptr<NavigationDelegate> delegate)
{
    engine_->navigationDelegate = std::move(delegate);
}

void WebView::setUIDelegate(std::weak_ptr<UIDelegate> delegate)
{
    engine_->uiDelegate = std::move(delegate);
}

foundation::ObservationToken WebView::observeURL(std::function<void()> handler)
{
    return engine_->changes.addObserver(urlChange, std::move(handler));
}

foundation::ObservationToken WebView::observeIsLoading(std::function<void()> handler)
{
    return engine_->changes.addObserver(loadingChange, std::move(handler));
}

void WebView::evaluateJavaScript(
    std::string_view script, std::function<void(std::optional<std::string>)> completionHandler)
{
    using Handler = std::function<void(std::optional<std::string>)>;
    auto finish = +[](GObject* page, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Handler> handler(static_cast<Handler*>(data));
        desktop::ErrorPointer error;
        const auto value = desktop::ObjectPointer<JSCValue>(
            webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(page), result, error.out()));
        const desktop::GLibPointer<> text(value ? jsc_value_to_string(value.get()) : nullptr);
        if (*handler)
            (*handler)(text ? std::optional<std::string>(text.get()) : std::nullopt);
    };
    webkit_web_view_evaluate_javascript(engine_->page, script.data(), static_cast<gssize>(script.size()), nullptr,
        nullptr, nullptr, finish, new Handler(std::move(completionHandler)));
}

} // namespace webkit
