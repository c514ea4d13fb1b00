#pragma once

#include "MeasuringHost.h"
#include "ProgramRun.h"
#include "Report.h"

#include <filesystem>

namespace bench {

/// What a program is found doing while nothing happens.
struct Idle {
    Series megabytes;
    Series wakeUps;
    // What must not be there.
    std::string engineProcesses;
    std::string libraries;
    std::string display;
    std::string changes;
};

/// Watches the program at rest, once its items are there and shown. It finds a display that it must not touch.
void watchIdle(const std::filesystem::path& program, const UserFolders& folders, std::size_t items, MeasuringHost& host,
    Idle& into);

/// Requires that nothing is there that must not be, in a situation of that name.
void requireNothingElse(const std::string& when, const Idle& idle, Report& report);

} // namespace bench
