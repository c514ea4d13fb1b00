#pragma once

#include "platform/linux/network/ProgramConnection.h"

#include <deque>
#include <filesystem>
#include <optional>

namespace desktop {

/// Where the drawing program is; none, said once in the log, where it is missing.
[[nodiscard]] const std::optional<std::filesystem::path>& drawingProgramPath();

/// Has pictures drawn, one after the other, by a perchly-draw that runs only while there is something to draw.
/// Main thread.
class DrawingProgram {
public:
    using Finish = std::function<void(VariantPointer)>;

    [[nodiscard]] static DrawingProgram& shared();

    /// The request is of drawing::requestType. Hands over what was drawn, later; null where it could not be.
    void draw(GVariant* request, Finish finish);

private:
    struct Job {
        VariantPointer request;
        Finish finish;
        /// It was under way once when the program ended.
        bool isRetried = false;
    };

    void sendNext();
    [[nodiscard]] bool maySend(const Job& job) const;
    bool isRunning();
    void take(const VariantPointer& answer);
    void ended();
    void watch();
    void disconnect();

    std::unique_ptr<ProgramConnection> program_;
    std::deque<Job> waiting_;
    std::deque<Job> underWay_;
    SourceHandle deadline_;
    SourceHandle resting_;
};

} // namespace desktop
