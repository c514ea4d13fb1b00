#import "platform/macos/webkit/WebViewDelegate.h"

#include "platform/macos/appkit/ViewNative.h"
#include "platform/macos/foundation/Conversions.h"

namespace webkit {
namespace {

/// None for an address that is none.
std::optional<NavigationAction> actionFrom(WKNavigationAction* native)
{
    NSURLRequest* request = native.request;
    const auto url = foundation::URL::parse(foundation::textFrom(request.URL.absoluteString));
    if (!url)
        return std::nullopt;
    const std::chrono::duration<double> timeout(request.timeoutInterval);
    return NavigationAction { { *url, std::chrono::round<std::chrono::milliseconds>(timeout) },
        native.targetFrame != nil };
}

} // namespace
} // namespace webkit

@implementation PerchlyWebViewDelegate

- (void)webView:(WKWebView*)native didFinishNavigation:(WKNavigation*)navigation
{
    const auto delegate = self.navigationDelegate.lock();
    if (self.webView && delegate)
        delegate->webViewDidFinishNavigation(*self.webView);
}

- (WKWebView*)webView:(WKWebView*)native
    createWebViewWithConfiguration:(WKWebViewConfiguration*)configuration
               forNavigationAction:(WKNavigationAction*)navigationAction
                    windowFeatures:(WKWindowFeatures*)windowFeatures
{
    const auto delegate = self.uiDelegate.lock();
    const auto action = webkit::actionFrom(navigationAction);
    if (!self.webView || !delegate || !action)
        return nil;
    const auto created = delegate->createWebView(*self.webView, *action);
    return created ? appkit::nativeView<WKWebView>(*created) : nil;
}

@end
