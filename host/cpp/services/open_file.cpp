#include "services/open_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace host {

namespace {

/// Folders by their real paths, without a separator at the end.
struct Confinement {
    bool isOn = false;
    std::vector<std::string> writable, readable;
};
Confinement confinement; // NOLINT: of the whole process

} // namespace

/// The path without links, "." and ".."; empty when it leads nowhere.
static std::string realPath(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), std::free);
    return real ? real.get() : "";
}

static bool isBelow(const std::string& path, const std::string& folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

static bool isBelowAny(const std::string& path, const std::vector<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return isBelow(path, folder); });
}

/// Judged by what the descriptor leads to: a link that is exchanged meanwhile changes nothing. A file in
/// memory is the program's own.
static bool mayRead(int descriptor) {
    if (!confinement.isOn) return true;
    std::array<char, PATH_MAX> buffer;
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t size = ::readlink(link.c_str(), buffer.data(), buffer.size());
    const std::string path(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    return path.starts_with("/memfd:") || isBelowAny(path, confinement.writable) ||
           isBelowAny(path, confinement.readable);
}

int openRegular(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) return -1;
    struct stat status {};
    const bool isFile = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    if (isFile && mayRead(descriptor)) return descriptor;
    ::close(descriptor);
    errno = isFile ? EACCES : EINVAL;
    return -1;
}

bool isRegular(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (!confinement.isOn) return true;
    const std::string real = realPath(path);
    return isBelowAny(real, confinement.writable) || isBelowAny(real, confinement.readable);
}

bool mayWrite(const std::string& path) {
    if (!confinement.isOn) return true;
    const std::string real = realPath(path);
    if (!real.empty()) return isBelowAny(real, confinement.writable);
    const std::size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    const std::string realFolder = realPath(folder);
    // A link to nowhere would lead the new file there.
    struct stat status {};
    return !realFolder.empty() && ::lstat(path.c_str(), &status) != 0 &&
           isBelowAny(realFolder, confinement.writable);
}

bool mayWriteBelow(const std::string& folder) {
    if (!confinement.isOn) return true;
    std::error_code error;
    const std::string real = std::filesystem::weakly_canonical(folder, error).string();
    return !error && isBelowAny(real, confinement.writable);
}

std::string confineTo(const std::vector<std::string>& folders, const std::vector<std::string>& readable) {
    confinement = {!folders.empty(), {}, {}};
    for (const std::string& folder : folders) {
        const std::string real = realPath(folder);
        if (real.empty()) return folder;
        confinement.writable.push_back(real == "/" ? "" : real);
    }
    for (const std::string& folder : readable)
        if (const std::string real = realPath(folder); !real.empty()) confinement.readable.push_back(real);
    return {};
}

void allowBelow(const std::string& folder) {
    if (confinement.isOn) confinement.writable.push_back(realPath(folder));
}

bool isConfined() {
    return confinement.isOn;
}

} // namespace host
