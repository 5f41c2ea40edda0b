#include "store/replace.h"

#include "services/open_file.h"
#include "services/temporary_files.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace fs = std::filesystem;

static std::string systemError(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

ReplacementFile::ReplacementFile(const std::string& target) : target_(target) {
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        const fs::path real = fs::canonical(target, error);
        if (!error) target_ = real.string();
    }
    const fs::path whole(target_);
    const fs::path directory = whole.has_parent_path() ? whole.parent_path() : fs::path(".");
    removeAbandonedFiles(directory.string());
    path_ = temporaryName((directory / ("." + whole.filename().string())).string());
    if (!mayWrite(target_)) return;
    constexpr mode_t anyone = 0666;
    const int file = open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, anyone);
    if (file < 0) return; // so will whoever writes it find
    guardTemporary(path_, file);
    close(file);
}

ReplacementFile::~ReplacementFile() {
    if (path_.empty()) return;
    unlink(path_.c_str());
    releaseTemporary(path_);
}

static bool syncPath(const char* path, int flags) {
    const int fd = open(path, flags | O_CLOEXEC);
    if (fd < 0) return false;
    const bool done = fsync(fd) == 0;
    close(fd);
    return done;
}

std::string ReplacementFile::commit() {
    if (!mayWrite(target_)) {
        errno = EACCES;
        return systemError("Can't write", target_);
    }
    struct stat old {};
    if (stat(target_.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode)) return "Not a file that can be replaced: " + target_;
        if (chmod(path_.c_str(), old.st_mode & 07777) != 0) return systemError("Can't write", path_);
    }
    if (!syncPath(path_.c_str(), O_RDONLY)) return systemError("Can't write", path_);
    if (rename(path_.c_str(), target_.c_str()) != 0) return systemError("Can't replace", target_);
    releaseTemporary(path_);
    path_.clear();
    // The rename itself is on disk only with its directory. Not all file systems can do this; the file is
    // whole either way.
    const fs::path directory = fs::path(target_).parent_path();
    syncPath(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY);
    return {};
}

} // namespace host
