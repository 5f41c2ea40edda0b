#include "protocol.h"

#include <cstdlib>

namespace tool {

static const char* const kWorkFolder = "HD_WORK_DIR";
static const char* const kTemporaryFolder = "TMPDIR";

RunFiles::RunFiles(const TemporaryFolder& folder) {
    if (const char* temporary = std::getenv(kTemporaryFolder)) temporary_ = temporary;
    const char* work = std::getenv(kWorkFolder);
    hasOwnProtocol_ = !work || !*work;
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

} // namespace tool
