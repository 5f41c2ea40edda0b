#include "dx_config_lines.h"

#include <cstring>

// The host's own line reader keeps lines of any length; a configuration from a stranger may be one endless
// line.
bool DxReadConfigLine(FILE* file, std::string& line) {
    constexpr std::size_t LIMIT = 65536;
    line.clear();
    int c = std::getc(file);
    if (c == EOF) return false;
    for (; c != EOF && c != '\n'; c = std::getc(file))
        if (line.size() < LIMIT) line += static_cast<char>(c);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
}

void DxSkipByteOrderMark(FILE* file) {
    constexpr char MARK[] = "\xEF\xBB\xBF";
    char start[3];
    if (std::fread(start, 1, sizeof start, file) != sizeof start ||
        std::memcmp(start, MARK, sizeof start) != 0)
        std::rewind(file);
}
