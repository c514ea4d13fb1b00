#pragma once

#include "platform/linux/desktop/GObject.h"

#include <gtk/gtk.h>

#include <functional>
#include <vector>

namespace desktop {

/// Tells each time that a window of the program becomes the active one.
class ActivationWatch {
public:
    explicit ActivationWatch(std::function<void(GtkWindow*)> activated);
    ActivationWatch(const ActivationWatch&) = delete;
    ActivationWatch& operator=(const ActivationWatch&) = delete;

private:
    void connectToWindows();

    std::function<void(GtkWindow*)> activated_;
    GListModel* windows_;
    SignalConnection change_;
    std::vector<SignalConnection> connections_;
};

} // namespace desktop
