#pragma once

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace bench {

/// What the command line asks for; ends the process with the usage when that is nothing known.
struct Command {
    std::string verb;
    std::string file;
    std::string argument; // the count to generate, or the file to save to

    static Command parse(int count, char** words)
    {
        const std::string_view verb = count > 1 ? words[1] : "";
        const bool isKnown = (verb == "load" && count == 3) || ((verb == "generate" || verb == "save") && count == 4);
        if (!isKnown)
            fail("usage: generate FILE COUNT | load FILE | save FILE OUT");
        return { std::string(verb), words[2], count > 3 ? words[3] : "" };
    }

    [[noreturn]] static void fail(const char* reason)
    {
        std::fprintf(stderr, "%s\n", reason);
        std::exit(1);
    }
};

/// Milliseconds from its making.
class Stopwatch {
public:
    [[nodiscard]] double milliseconds() const
    {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

inline void print(double milliseconds)
{
    std::printf("%.2f\n", milliseconds);
}

} // namespace bench
