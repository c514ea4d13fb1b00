#pragma once

namespace desktop {

/// Loads GTK and opens the display, at the first window. Idempotent. Ends the process where there is no display.
void loadToolkit();

[[nodiscard]] bool isToolkitLoaded();

/// Rules, as CSS, for widgets of our own, over the theme's. Once the toolkit is loaded.
void addStyle(const char* style);

/// True where the windows of this program are X11 windows that it may place itself (also through XWayland).
[[nodiscard]] bool isX11();

/// True where there is a GPU to draw with; without one the plain renderers are the light ones.
[[nodiscard]] bool hasRenderNode();

} // namespace desktop
