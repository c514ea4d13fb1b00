#pragma once

namespace appkit {

/// Ends every runModal() as if the last button had been pressed, so that the program can end.
void cancelRunningAlerts();

/// Shows the latest alert that waits for its answer before all windows.
void bringAlertForward();

} // namespace appkit
