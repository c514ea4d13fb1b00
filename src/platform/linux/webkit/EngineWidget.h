#pragma once

#include "platform/linux/desktop/GObject.h"
#include "platform/webkit/WebView.h"

#include <webkit/webkit.h>

#include <vector>

namespace webkit {

/// Keeps the process that all views fetch through small. Before the first session.
void limitNetworkMemory();

/// The engine's widget for a new view, set up to do what the system web view of the other side does by default.
[[nodiscard]] GtkWidget* makeEngineWidget(const WebViewConfiguration& configuration);

/// Refuses what a page in a small window has no business with: permissions, the whole screen, and the menu rows
/// that open windows or save files.
[[nodiscard]] std::vector<desktop::SignalConnection> restrictPage(WebKitWebView* page);

} // namespace webkit
