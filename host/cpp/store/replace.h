// Writing a file so that its old content stays whole until the new one is.
#pragma once

#include <string>

namespace host {

/// A temporary file beside a target. It goes away with its owner unless it has replaced the target.
class ReplacementFile {
public:
    /// Makes an empty file beside `target` (beside the file itself where `target` is a link) and removes what
    /// killed programs left there. What is wrong shows when it is written, or at last in commit().
    explicit ReplacementFile(const std::string& target);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    const std::string& path() const { return path_; } ///< where to write
    /// Brings the written file to the disk and renames it over the target. Empty, or what went wrong.
    std::string commit();

private:
    std::string target_, path_;
};

} // namespace host
