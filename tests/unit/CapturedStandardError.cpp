#include "CapturedStandardError.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace perchly::tests {

CapturedStandardError::CapturedStandardError()
    : file_(std::tmpfile())
    , former_(::dup(STDERR_FILENO))
{
    std::fflush(stderr);
    if (!file_ || former_ < 0 || ::dup2(::fileno(file_), STDERR_FILENO) < 0)
        std::abort();
}

CapturedStandardError::~CapturedStandardError()
{
    std::fflush(stderr);
    ::dup2(former_, STDERR_FILENO);
    ::close(former_);
    std::fclose(file_);
}

std::string CapturedStandardError::text() const
{
    std::fflush(stderr);
    std::string text;
    std::array<char, 4096> block {};
    ssize_t count = 0;
    // At a position of its own: standard error shares that of the file.
    while ((count = ::pread(::fileno(file_), block.data(), block.size(), static_cast<off_t>(text.size()))) > 0)
        text.append(block.data(), static_cast<std::size_t>(count));
    return text;
}

std::vector<std::string> CapturedStandardError::debugLines() const
{
    std::vector<std::string> lines;
    std::istringstream stream(text());
    for (std::string line; std::getline(stream, line);) {
        if (const auto start = line.find("DEBUG: "); start != std::string::npos)
            lines.push_back(line.substr(start));
    }
    return lines;
}

} // namespace perchly::tests
