// The progress bar on a terminal, and the user's wish to stop.
#pragma once

#include <string>

namespace tool {

/// Takes a text of the status line; one with a percentage moves the bar. Only on a terminal.
void showProgress(const std::string& status);
void hideProgress();

/// Ctrl-C once asks the run to stop with what it has; a second one ends the program.
void watchInterrupt();
bool isInterrupted();

} // namespace tool
