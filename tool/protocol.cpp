#include "protocol.h"

#include <fstream>

namespace tool {

/// The messages of the runs in a protocol file, without its frame: a line of dashes, the file's name and the
/// date, and at the end the outcome and another line of dashes.
std::vector<std::string> readProtocol(const std::string& path, std::uintmax_t from) {
    std::ifstream in(path, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(from));
    std::vector<std::string> lines, messages;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    const std::string dashes(42, '-');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const bool isName = lines[i].starts_with("DXF-IMPORT: ") || lines[i].starts_with("DXF-EXPORT: ");
        if (isName) ++i; // and the date
        const bool isOutcome = i + 1 < lines.size() && i > 0 && lines[i + 1] == dashes;
        if (!isName && !isOutcome && i < lines.size() && lines[i] != dashes) messages.push_back(lines[i]);
    }
    return messages;
}

std::uintmax_t fileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return in ? static_cast<std::uintmax_t>(in.tellg()) : 0;
}

} // namespace tool
