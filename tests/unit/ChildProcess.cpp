#include "ChildProcess.h"

#include <array>
#include <cstdlib>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace perchly::tests {

namespace {

[[noreturn]] void runAndReport(const std::function<std::string()>& body, int pipe)
{
    const auto report = body();
    std::string_view rest = report;
    while (!rest.empty()) {
        const auto count = ::write(pipe, rest.data(), rest.size());
        if (count < 0)
            std::_Exit(1);
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    std::_Exit(0);
}

std::string readAll(int pipe)
{
    std::string text;
    std::array<char, 4096> block {};
    ssize_t count = 0;
    while ((count = ::read(pipe, block.data(), block.size())) > 0)
        text.append(block.data(), static_cast<std::size_t>(count));
    return text;
}

} // namespace

std::string inChildProcess(const std::function<std::string()>& body)
{
    std::array<int, 2> ends {};
    if (::pipe(ends.data()) != 0)
        return "died: no pipe";
    const auto child = ::fork();
    if (child == 0)
        runAndReport(body, ends[1]);
    ::close(ends[1]);
    auto report = readAll(ends[0]);
    ::close(ends[0]);

    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0)
        return "died: " + std::to_string(status);
    return report;
}

} // namespace perchly::tests
