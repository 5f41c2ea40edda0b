// Lines of a host text that has a line length, as the host shows them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Breaks lines at blanks so that each piece is no wider than `room`; a word that is wider stands alone, and
/// the blanks at a break belong to neither piece. `advance` gives how far a character moves the next one, in
/// the unit of `room`.
std::vector<std::string> DxTextBreakLines(const std::vector<std::string>& lines, double room,
                                          const std::function<double(std::string_view)>& advance);
