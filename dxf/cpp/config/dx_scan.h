// Reads a line by a format in the manner of scanf, as the older configuration describes its lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The values that a line gave.
struct DxScanned {
    static constexpr int LIMIT = 11;
    int count = 0; ///< conversions done
    int numbers[LIMIT] = {};
    double real = 0;
    std::string words[2];
    int numberCount = 0, wordCount = 0;
};

/// A format knows %d (numbers), %lf (real), %s (words), blanks, which match any amount of blanks, and literal
/// characters. Stops at the first thing that doesn't match.
DxScanned DxScanLine(std::string_view line, std::string_view format);
/// The next word of `text` behind blanks; `text` goes on behind it. Empty at the end.
std::string_view DxTakeWord(std::string_view& text);
bool DxIsBlank(char c);
/// `text` without blanks at both sides.
std::string_view DxTrimmed(std::string_view text);
