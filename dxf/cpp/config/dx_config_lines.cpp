#include "dx_config_lines.h"

#include "../session/dx_unicode.h"
#include "../session/session_state.h"

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
    if (!DxIsUtf8(line)) line = DxFromCodePage(line, DxCodePage);
    return true;
}

void DxSkipByteOrderMark(FILE* file) {
    // One byte can be handed back, even of a pipe; no line of a configuration begins with this one otherwise.
    constexpr int FIRST_OF_MARK = 0xEF;
    const int c = std::getc(file);
    if (c != FIRST_OF_MARK) {
        if (c != EOF) std::ungetc(c, file);
        return;
    }
    for (const int byte : {0xBB, 0xBF})
        if (std::getc(file) != byte) return;
}
