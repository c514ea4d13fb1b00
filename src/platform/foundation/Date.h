#pragma once

#include <chrono>

namespace foundation {

/// A moment, held as seconds (with fraction) since 2001-01-01 00:00:00 UTC, the reference date.
struct Date {
    double timeIntervalSinceReferenceDate = 0;

    static Date now()
    {
        using namespace std::chrono;
        constexpr auto referenceDate = sys_days { year { 2001 } / January / 1 };
        return { duration<double>(system_clock::now() - referenceDate).count() };
    }

    bool operator==(const Date&) const = default;
};

} // namespace foundation
