#pragma once

namespace foundation {
class URL;
}

namespace appkit {

/// What other programs do for this one. Main thread.
class Workspace {
public:
    static Workspace& sharedWorkspace();

    /// Opens the address in the user's default program for it. Returns at once; a failure shows nothing.
    void openURL(const foundation::URL& url);
};

} // namespace appkit
