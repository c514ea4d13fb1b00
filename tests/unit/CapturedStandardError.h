#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace perchly::tests {

/// Sends standard error, and with it the log, into a file until it goes.
class CapturedStandardError {
public:
    CapturedStandardError();
    ~CapturedStandardError();
    CapturedStandardError(const CapturedStandardError&) = delete;
    CapturedStandardError& operator=(const CapturedStandardError&) = delete;

    [[nodiscard]] std::string text() const;

    /// What the lines say from "DEBUG: " on; lines without it are left out.
    [[nodiscard]] std::vector<std::string> debugLines() const;

private:
    std::FILE* file_;
    int former_;
};

} // namespace perchly::tests
