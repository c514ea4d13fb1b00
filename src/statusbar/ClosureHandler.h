#pragma once

#include <functional>
#include <utility>

namespace perchly {

/// Lets a closure be a control's target. Whoever installs it keeps it while the control may send its action.
class ClosureHandler {
public:
    explicit ClosureHandler(std::function<void()> handler)
        : handler_(std::move(handler))
    {
    }

    void invoke() { handler_(); }

private:
    std::function<void()> handler_;
};

} // namespace perchly
