#pragma once

#include <functional>

namespace desktop {

/// Work that the end of the program waits for, though not long; it ends with this object. Main thread.
class UnfinishedWork {
public:
    /// `hurry` is called when the program is about to end.
    explicit UnfinishedWork(std::function<void()> hurry);
    ~UnfinishedWork();
    UnfinishedWork(const UnfinishedWork&) = delete;
    UnfinishedWork& operator=(const UnfinishedWork&) = delete;

    [[nodiscard]] const std::function<void()>& hurry() const { return hurry_; }

private:
    std::function<void()> hurry_;
};

/// Has all work hurry and calls back when it is done, at the latest after that time; at once where there is none.
void finishWork(unsigned milliseconds, std::function<void()> finished);

} // namespace desktop
