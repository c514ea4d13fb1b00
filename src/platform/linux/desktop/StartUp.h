#pragma once

#include <functional>

namespace desktop {

/// The way to the program's first status item is what people wait for at its start, so all else keeps off the bus and
/// the processors until the status area has it. Main thread.

/// False when it has begun before.
bool beginStartUp();

void endStartUp();

/// Calls it then: now, unless a start is under way; after a second at the latest.
void afterStartUp(std::function<void()> work);

} // namespace desktop
