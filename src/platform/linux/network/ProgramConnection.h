#pragma once

#include "platform/linux/network/Messages.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace desktop {

/// A program of ours at work for us, spoken to in messages over its standard input and output. It ends when this goes
/// and its work is done. Main thread.
class ProgramConnection {
public:
    /// Gets each answer, and null once the program has ended. May let go of the connection.
    using Receiver = fetching::MessageReader::Receiver;

    struct Program {
        std::filesystem::path path;
        std::vector<std::string> arguments {};
        GSubprocessFlags flags = G_SUBPROCESS_FLAGS_NONE;
        const char* answerType;
    };

    /// Null where it cannot be started.
    [[nodiscard]] static std::unique_ptr<ProgramConnection> start(const Program& program, const Receiver& receiver);

    /// In the background, so it never waits for the program. False, and the message is dropped, where that is larger
    /// than any may be.
    [[nodiscard]] bool send(GVariant* message);

    /// While held no further answer is taken, which makes the program wait.
    void hold(bool isHeld) { reader_.hold(isHeld); }

    void forceExit();

private:
    ProgramConnection(ObjectPointer<GIOStream> stream, ObjectPointer<GSubprocess> process, const char* answerType,
        const Receiver& receiver);

    ObjectPointer<GIOStream> stream_;
    ObjectPointer<GSubprocess> process_;
    fetching::MessageReader reader_;
    fetching::MessageWriter writer_;
};

} // namespace desktop
