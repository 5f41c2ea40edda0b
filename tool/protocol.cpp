#include "protocol.h"

#include <cstdlib>
#include <fstream>

namespace tool {

static const char* const kWorkFolder = "HD_WORK_DIR";
static const char* const kTemporaryFolder = "TMPDIR";

static std::uintmax_t fileSize(const std::string& path) {
    std::ifstream in(path, std::ios::binary | std::ios::ate);
    return in ? static_cast<std::uintmax_t>(in.tellg()) : 0;
}

/// The messages of the runs that a protocol tells from byte `from` on. Its frame is a line of dashes, the
/// file's name and the date, and at the end the outcome and another line of dashes.
static std::vector<std::string> readProtocol(const std::string& path, std::uintmax_t from) {
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

RunFiles::RunFiles(const TemporaryFolder& folder) {
    if (const char* temporary = std::getenv(kTemporaryFolder)) temporary_ = temporary;
    const char* work = std::getenv(kWorkFolder);
    hasOwnProtocol_ = !work || !*work;
    protocol_ = (hasOwnProtocol_ ? folder.path() : std::string(work)) + "/dxf.proto";
    before_ = fileSize(protocol_);
    setenv(kTemporaryFolder, folder.path().c_str(), 1);
    if (hasOwnProtocol_) setenv(kWorkFolder, folder.path().c_str(), 1);
}

RunFiles::~RunFiles() {
    if (temporary_)
        setenv(kTemporaryFolder, temporary_->c_str(), 1);
    else
        unsetenv(kTemporaryFolder);
    if (hasOwnProtocol_) unsetenv(kWorkFolder);
}

std::vector<std::string> RunFiles::messages() const {
    return readProtocol(protocol_, before_);
}

} // namespace tool
