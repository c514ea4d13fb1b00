#pragma once

#include "platform/linux/desktop/GObject.h"

#include <filesystem>
#include <string>
#include <vector>

namespace desktop {

/// A program of ours at work for us: its standard input and output are one socket, the stream. It ends when that is
/// closed and its work is done.
struct ProgramConnection {
    ObjectPointer<GIOStream> stream;
    ObjectPointer<GSubprocess> process;

    explicit operator bool() const { return stream != nullptr; }
};

/// None where it cannot be started.
[[nodiscard]] ProgramConnection startProgram(
    const std::filesystem::path& program, const std::vector<std::string>& arguments, GSubprocessFlags flags);

/// Sends the message (Messages.h); the stream takes it or has ended.
[[nodiscard]] bool send(const ProgramConnection& program, GVariant* message);

} // namespace desktop
