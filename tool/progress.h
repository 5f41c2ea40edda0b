// The progress bar on a terminal.
#pragma once

#include <string>

namespace tool {

/// Takes a text of the status line; one with a percentage moves the bar. Only on a terminal.
void showProgress(const std::string& status);
void hideProgress();

} // namespace tool
