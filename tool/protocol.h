// The files of one run of the module: its protocol and what it needs for a while.
#pragma once

#include "environment.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tool {

/// Sends the module's files to a folder while it exists: the protocol unless HD_WORK_DIR says where the user
/// wants it, temporary files always, for a run that fails leaves some.
class RunFiles {
public:
    explicit RunFiles(const TemporaryFolder& folder);
    ~RunFiles();
    RunFiles(const RunFiles&) = delete;
    RunFiles& operator=(const RunFiles&) = delete;
    /// What the protocol tells of the run, without its frame.
    std::vector<std::string> messages() const;

private:
    std::optional<std::string> temporary_; ///< TMPDIR as it was
    bool hasOwnProtocol_;
    std::string protocol_;
    std::uintmax_t before_; ///< size of the protocol ahead of the run
};

} // namespace tool
