#pragma once

#include "platform/appkit/View.h"
#include "platform/foundation/NotificationCenter.h"
#include "platform/foundation/URL.h"
#include "platform/foundation/URLRequest.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace webkit {

using foundation::URLRequest;

class WebsiteDataStore;
class WebView;

class NavigationDelegate {
public:
    virtual ~NavigationDelegate() = default;
    virtual void webViewDidFinishNavigation(WebView& webView) = 0;
};

/// What a page or the user asks a view to load.
struct NavigationAction {
    URLRequest request;
    /// False for a request for a new window or tab.
    bool hasTargetFrame = true;
};

class UIDelegate {
public:
    virtual ~UIDelegate() = default;

    /// A page asks for a window of its own. Null refuses it.
    virtual std::shared_ptr<WebView> createWebView(WebView& webView, const NavigationAction& action) = 0;
};

struct WebViewConfiguration {
    std::shared_ptr<WebsiteDataStore> websiteDataStore;
};

/// Shows web pages. A failed load leaves the page that was there. Delegates are held weakly. Main thread.
class WebView : public appkit::View {
public:
    explicit WebView(const WebViewConfiguration& configuration);
    ~WebView() override;

    /// None before the first load.
    [[nodiscard]] std::optional<foundation::URL> url() const;
    [[nodiscard]] std::optional<std::string> title() const;
    [[nodiscard]] bool isLoading() const;
    [[nodiscard]] bool canGoBack() const;
    [[nodiscard]] bool canGoForward() const;

    void load(const URLRequest& request);
    void goBack();
    void goForward();
    void reload();
    void stopLoading();

    /// In every frame of the page.
    void pauseAllMediaPlayback();

    void setCustomUserAgent(std::string_view userAgent);
    [[nodiscard]] std::string customUserAgent() const;

    void setNavigationDelegate(std::weak_ptr<NavigationDelegate> delegate);
    void setUIDelegate(std::weak_ptr<UIDelegate> delegate);

    /// The handler is called at once at each change of the value, until the token goes.
    [[nodiscard]] foundation::ObservationToken observeURL(std::function<void()> handler);
    [[nodiscard]] foundation::ObservationToken observeIsLoading(std::function<void()> handler);

    /// Runs a script in the page; the handler gets its value as text, none where it failed.
    void evaluateJavaScript(std::string_view script, std::function<void(std::optional<std::string>)> completionHandler);

private:
    struct Engine;
    std::unique_ptr<Engine> engine_;
};

} // namespace webkit
