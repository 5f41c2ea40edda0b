// The files of one run of the module: its protocol and what it needs for a while.
#pragma once

#include "environment.h"

#include <optional>
#include <string>

namespace tool {

/// Sends the module's files to a folder while it exists: the protocol unless HD_WORK_DIR says where the user
/// wants it, temporary files always, for a run that fails leaves some.
class RunFiles {
public:
    explicit RunFiles(const TemporaryFolder& folder);
    ~RunFiles();
    RunFiles(const RunFiles&) = delete;
    RunFiles& operator=(const RunFiles&) = delete;

private:
    std::optional<std::string> temporary_; ///< TMPDIR as it was
    bool hasOwnProtocol_;
};

} // namespace tool
