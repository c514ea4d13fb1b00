#import "platform/macos/webkit/WebViewDelegate.h"

#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/foundation/Conversions.h"

namespace webkit {
namespace {

NavigationAction actionFrom(WKNavigationAction* native)
{
    NSURLRequest* request = native.request;
    const std::chrono::duration<double> timeout(request.timeoutInterval);
    return { { foundation::urlFrom(request.URL), std::chrono::round<std::chrono::milliseconds>(timeout) },
        native.targetFrame != nil };
}

} // namespace
} // namespace webkit

@implementation PerchlyWebViewDelegate

- (void)webView:(WKWebView*)native didFinishNavigation:(WKNavigation*)navigation
{
    const auto webView = [self heldWebView];
    if (const auto delegate = self.navigationDelegate.lock(); webView && delegate)
        delegate->webViewDidFinishNavigation(*webView);
}

- (WKWebView*)webView:(WKWebView*)native
    createWebViewWithConfiguration:(WKWebViewConfiguration*)configuration
               forNavigationAction:(WKNavigationAction*)navigationAction
                    windowFeatures:(WKWindowFeatures*)windowFeatures
{
    const auto webView = [self heldWebView];
    const auto delegate = self.uiDelegate.lock();
    if (!webView || !delegate)
        return nil;
    const auto created = delegate->createWebView(*webView, webkit::actionFrom(navigationAction));
    return created ? appkit::nativeView<WKWebView>(*created) : nil;
}

/// Held until a delegate has returned, which may take the view away.
- (std::shared_ptr<webkit::WebView>)heldWebView
{
    return self.webView ? std::static_pointer_cast<webkit::WebView>(self.webView->weak_from_this().lock()) : nullptr;
}

@end
