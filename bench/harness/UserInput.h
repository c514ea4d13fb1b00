#pragma once

#include <string>

namespace bench {

/// A keyboard and a mouse. What is told happens within a fraction of a millisecond, and nothing waits for it.
class UserInput {
public:
    UserInput();
    ~UserInput();
    UserInput(const UserInput&) = delete;
    UserInput& operator=(const UserInput&) = delete;

    /// By the name that the window system has for it.
    void press(const std::string& key) { tell("key --delay 0 " + key); }
    void point(int x, int y) { tell("mousemove " + std::to_string(x) + " " + std::to_string(y)); }
    void holdButton() { tell("mousedown 1"); }
    void releaseButton() { tell("mouseup 1"); }

private:
    void tell(const std::string& command);

    int commands_ = -1;
};

} // namespace bench
