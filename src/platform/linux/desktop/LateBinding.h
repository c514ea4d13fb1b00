#pragma once

namespace desktop {

/// The libraries that an idle program does without.
enum class LateLibrary {
    Toolkit, // GTK, what it draws with, and X11: windows
    Engine, // WebKitGTK: pages
};

/// Loads the library, and those it stands on, unless that was done before; its functions may be called from then on.
/// Calling one earlier, or a library that is not installed, ends the process. Main thread.
void loadLibrary(LateLibrary library);

[[nodiscard]] bool isLibraryLoaded(LateLibrary library);

} // namespace desktop
