#pragma once

#include <string>

namespace bench {

/// An X display that nobody may touch: tells whether a program tried to connect to it.
class DisplayTrap {
public:
    DisplayTrap();
    ~DisplayTrap();
    DisplayTrap(const DisplayTrap&) = delete;
    DisplayTrap& operator=(const DisplayTrap&) = delete;

    /// The value for DISPLAY.
    [[nodiscard]] std::string name() const { return ":" + std::to_string(number_); }

    [[nodiscard]] bool wasTouched() const;

private:
    int number_ = 0;
    int socket_ = -1;
};

} // namespace bench
