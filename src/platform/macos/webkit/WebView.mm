#include "platform/webkit/WebView.h"

#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/foundation/Conversions.h"
#import "platform/macos/foundation/KeyValueObserver.h"
#import "platform/macos/webkit/WebViewDelegate.h"
#include "platform/macos/webkit/WebsiteDataStoreNative.h"

namespace webkit {

using foundation::nativeText;
using foundation::textFrom;
using foundation::urlFrom;

struct WebView::Engine {
    WKWebView* webView;
    PerchlyWebViewDelegate* delegate = [[PerchlyWebViewDelegate alloc] init];
    /// Kept by their tokens; the rest of them ends with the view.
    NSHashTable<PerchlyKeyValueObserver*>* observers = [NSHashTable weakObjectsHashTable];

    foundation::ObservationToken observe(NSString* keyPath, std::function<void()> handler)
    {
        PerchlyKeyValueObserver* observer = [[PerchlyKeyValueObserver alloc] initWithObject:webView
                                                                                    keyPath:keyPath
                                                                                    handler:^{ handler(); }];
        [observers addObject:observer];
        return foundation::ObservationToken([observer] { [observer invalidate]; });
    }
};

namespace {

std::unique_ptr<appkit::View::Native> makeWebView(const WebViewConfiguration& configuration)
{
    WKWebViewConfiguration* native = [[WKWebViewConfiguration alloc] init];
    if (configuration.websiteDataStore)
        native.websiteDataStore = configuration.websiteDataStore->native().store;
    return appkit::makeNative([[WKWebView alloc] initWithFrame:NSZeroRect configuration:native]);
}

/// The text that JavaScript has for the value, for texts, truth values, whole numbers and nothing.
std::string textOf(id value)
{
    if (!value)
        return "undefined";
    if (value == (__bridge id)kCFBooleanTrue)
        return "true";
    if (value == (__bridge id)kCFBooleanFalse)
        return "false";
    return value == [NSNull null] ? "null" : textFrom([value description]);
}

} // namespace

WebView::WebView(const WebViewConfiguration& configuration)
    : View(makeWebView(configuration))
    , engine_(std::make_unique<Engine>(Engine { appkit::nativeView<WKWebView>(*this) }))
{
    engine_->delegate.webView = this;
    engine_->webView.navigationDelegate = engine_->delegate;
    engine_->webView.UIDelegate = engine_->delegate;
}

WebView::~WebView()
{
    engine_->delegate.webView = nullptr;
    for (PerchlyKeyValueObserver* observer in engine_->observers.allObjects)
        [observer invalidate];
}

std::optional<foundation::URL> WebView::url() const
{
    if (NSURL* url = engine_->webView.URL)
        return urlFrom(url);
    return std::nullopt;
}

std::optional<std::string> WebView::title() const
{
    NSString* title = engine_->webView.title;
    if (title.length == 0)
        return std::nullopt;
    return textFrom(title);
}

bool WebView::isLoading() const
{
    return engine_->webView.isLoading;
}

bool WebView::canGoBack() const
{
    return engine_->webView.canGoBack;
}

bool WebView::canGoForward() const
{
    return engine_->webView.canGoForward;
}

void WebView::load(const URLRequest& request)
{
    [engine_->webView loadRequest:foundation::nativeRequest(request)];
}

void WebView::goBack()
{
    [engine_->webView goBack];
}

void WebView::goForward()
{
    [engine_->webView goForward];
}

void WebView::reload()
{
    [engine_->webView reload];
}

void WebView::stopLoading()
{
    [engine_->webView stopLoading];
}

void WebView::pauseAllMediaPlayback()
{
    [engine_->webView pauseAllMediaPlaybackWithCompletionHandler:nil];
}

void WebView::setCustomUserAgent(std::string_view userAgent)
{
    engine_->webView.customUserAgent = nativeText(userAgent);
}

std::string WebView::customUserAgent() const
{
    return textFrom(engine_->webView.customUserAgent);
}

void WebView::setNavigationDelegate(std::weak_ptr<NavigationDelegate> delegate)
{
    engine_->delegate.navigationDelegate = std::move(delegate);
}

void WebView::setUIDelegate(std::weak_ptr<UIDelegate> delegate)
{
    engine_->delegate.uiDelegate = std::move(delegate);
}

foundation::ObservationToken WebView::observeURL(std::function<void()> handler)
{
    return engine_->observe(@"URL", std::move(handler));
}

foundation::ObservationToken WebView::observeIsLoading(std::function<void()> handler)
{
    return engine_->observe(@"loading", std::move(handler));
}

void WebView::evaluateJavaScript(
    std::string_view script, std::function<void(std::optional<std::string>)> completionHandler)
{
    [engine_->webView evaluateJavaScript:nativeText(script)
                       completionHandler:^(id value, NSError* error) {
                           if (completionHandler)
                               completionHandler(error ? std::nullopt : std::optional(textOf(value)));
                       }];
}

} // namespace webkit
