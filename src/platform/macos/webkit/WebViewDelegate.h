#pragma once

#include "platform/webkit/WebView.h"

#import <WebKit/WebKit.h>

/// A web view's navigation and UI delegate: asks those of the application.
@interface PerchlyWebViewDelegate : NSObject <WKNavigationDelegate, WKUIDelegate>
/// Null once the view has gone.
@property (nonatomic) webkit::WebView* webView;
@property (nonatomic) std::weak_ptr<webkit::NavigationDelegate> navigationDelegate;
@property (nonatomic) std::weak_ptr<webkit::UIDelegate> uiDelegate;
@end
