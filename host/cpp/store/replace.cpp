#include "store/replace.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace fs = std::filesystem;

static const char* const kMark = ".torva-";

static std::string systemError(const std::string& what, const std::string& path) {
    return what + " " + path + ": " + std::strerror(errno);
}

/// Process number in the name of a temporary file of `base`, 0 when it isn't one.
static pid_t ownerOf(const std::string& name, const std::string& base) {
    const std::string head = "." + base + kMark;
    if (!name.starts_with(head)) return 0;
    int pid = 0;
    const auto [end, error] = std::from_chars(name.data() + head.size(), name.data() + name.size(), pid);
    return error == std::errc{} && end != name.data() + name.size() && *end == '-' ? pid : 0;
}

static void removeAbandoned(const fs::path& directory, const std::string& base) {
    std::error_code ignored;
    for (fs::directory_iterator it(directory, ignored), end; !ignored && it != end; it.increment(ignored)) {
        const pid_t owner = ownerOf(it->path().filename().string(), base);
        std::error_code stays;
        if (owner > 0 && kill(owner, 0) != 0 && errno == ESRCH) fs::remove(it->path(), stays);
    }
}

ReplacementFile::ReplacementFile(const std::string& target) : target_(target) {
    static_assert(std::atomic<unsigned>::is_always_lock_free);
    std::error_code error;
    if (fs::is_symlink(target, error)) {
        const fs::path real = fs::canonical(target, error);
        if (!error) target_ = real.string();
    }
    const fs::path whole(target_);
    const std::string base = whole.filename().string();
    const fs::path directory = whole.has_parent_path() ? whole.parent_path() : fs::path(".");
    removeAbandoned(directory, base);
    const auto tag = std::to_string(getpid()) + "-" + std::to_string(reinterpret_cast<std::uintptr_t>(this));
    path_ = (directory / ("." + base + kMark + tag)).string();
}

ReplacementFile::~ReplacementFile() {
    if (!path_.empty()) unlink(path_.c_str());
}

static bool syncPath(const char* path, int flags) {
    const int fd = open(path, flags | O_CLOEXEC);
    if (fd < 0) return false;
    const bool done = fsync(fd) == 0;
    close(fd);
    return done;
}

std::string ReplacementFile::commit() {
    struct stat old {};
    if (stat(target_.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode)) return "Not a file that can be replaced: " + target_;
        if (chmod(path_.c_str(), old.st_mode & 07777) != 0) return systemError("Can't write", path_);
    }
    if (!syncPath(path_.c_str(), O_RDONLY)) return systemError("Can't write", path_);
    if (rename(path_.c_str(), target_.c_str()) != 0) return systemError("Can't replace", target_);
    path_.clear();
    // The rename itself is on disk only with its directory. Not all file systems can do this; the file is
    // whole either way.
    const fs::path directory = fs::path(target_).parent_path();
    syncPath(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY);
    return {};
}

} // namespace host
