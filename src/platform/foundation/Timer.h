#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace foundation {

/// Runs its block once, on the main thread's loop, when the interval has passed. It keeps nothing alive, and ends with
/// its owner. Main thread.
class Timer {
public:
    [[nodiscard]] static std::unique_ptr<Timer> scheduledTimer(
        std::chrono::milliseconds interval, std::function<void()> block);
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// The block will not run any more.
    void invalidate();

private:
    struct Native;
    explicit Timer(std::unique_ptr<Native> native);
    std::unique_ptr<Native> native_;
};

} // namespace foundation
