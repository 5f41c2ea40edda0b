#include "services/temporary_files.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <mutex>
#include <random>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view MARK = ".torva-";

/// A guarded path. The handler of a signal reads it, so that `process` is written last.
struct Slot {
    std::atomic<pid_t> process{0}; ///< whose it is, 0: free. A forked process has no part in it
    std::array<char, PATH_MAX> path{};
    int lock = -1;
};
struct Guard {
    std::array<Slot, 32> slots;
    std::mutex mutex;
};
Guard guard; // NOLINT: a handler of signals has nothing else to look at

} // namespace

std::string temporaryName(const std::string& stem) {
    // Random names, since others on this machine could wait at a name that they can guess.
    std::random_device random;
    for (;;) {
        const unsigned long number = (static_cast<unsigned long>(random()) << 20) ^ random();
        std::string name = stem + std::string(MARK) + std::to_string(number);
        struct stat status {};
        if (::lstat(name.c_str(), &status) != 0) return name;
    }
}

bool isTemporaryName(const std::string& path) {
    const std::size_t at = path.find(MARK, path.find_last_of('/') + 1);
    return at != std::string::npos && at + MARK.size() < path.size() && path[at + MARK.size()] >= '0' &&
           path[at + MARK.size()] <= '9';
}

/// The path as the handler will find it, wherever the process stands then. Empty where that is too long.
static std::string wholePath(const std::string& path) {
    const std::string whole = fs::absolute(path).string();
    return whole.size() < PATH_MAX ? whole : std::string();
}

static Slot* find(const std::string& whole) {
    for (Slot& slot : guard.slots)
        if (slot.process == ::getpid() && whole == slot.path.data()) return &slot;
    return nullptr;
}

static void setPath(Slot& slot, const std::string& whole) {
    slot.process = 0;
    std::memcpy(slot.path.data(), whole.c_str(), whole.size() + 1);
    slot.process.store(::getpid(), std::memory_order_release);
}

static void release(Slot& slot) {
    slot.process = 0;
    if (slot.lock >= 0) ::close(slot.lock);
    slot.lock = -1;
}

void guardTemporary(const std::string& path, int descriptor) {
    const std::string whole = wholePath(path);
    if (whole.empty()) return;
    const std::lock_guard lock(guard.mutex);
    if (Slot* const known = find(whole)) release(*known); // opened once more
    for (Slot& slot : guard.slots) {
        if (slot.process == ::getpid()) continue;
        // A copy, which holds the lock until the file has its final name, whoever closes the original.
        slot.lock = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
        if (slot.lock >= 0) ::flock(slot.lock, LOCK_EX | LOCK_NB);
        return setPath(slot, whole);
    }
}

void releaseTemporary(const std::string& path) {
    const std::lock_guard lock(guard.mutex);
    if (Slot* slot = find(wholePath(path))) release(*slot);
}

void renameTemporary(const std::string& from, const std::string& to) {
    const std::lock_guard lock(guard.mutex);
    Slot* slot = find(wholePath(from));
    if (!slot) return;
    const std::string whole = wholePath(to);
    isTemporaryName(to) && !whole.empty() ? setPath(*slot, whole) : release(*slot);
}

// ---- what killed programs left ---------------------------------------------------------------------

/// Whether nobody has a lock on it. The lock that shows it is given up at once.
static bool isAbandoned(const std::string& path, int kind,
                        const std::function<bool(const struct stat&)>& isOurs) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC | kind);
    if (descriptor < 0) return false;
    struct stat status {};
    const bool isFree =
        ::fstat(descriptor, &status) == 0 && isOurs(status) && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    ::close(descriptor);
    return isFree;
}

static void forEachIn(const std::string& folder, const std::function<void(const fs::path&)>& look) {
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        look(it->path());
}

void removeAbandonedFiles(const std::string& folder) {
    forEachIn(folder, [](const fs::path& path) {
        const auto isFile = [](const struct stat& status) { return S_ISREG(status.st_mode); };
        if (isTemporaryName(path.string()) && isAbandoned(path.string(), 0, isFile)) ::unlink(path.c_str());
    });
}

void removeAbandonedFolders(const std::string& folder, const std::string& stem) {
    forEachIn(folder, [&](const fs::path& path) {
        if (!path.filename().string().starts_with(stem)) return;
        // One that was made this moment may have no lock yet.
        constexpr std::time_t youngest = 2;
        const auto isOurs = [](const struct stat& status) {
            return status.st_uid == ::geteuid() && status.st_mtime + youngest < std::time(nullptr);
        };
        std::error_code stays;
        if (isAbandoned(path.string(), O_DIRECTORY, isOurs)) fs::remove_all(path, stays);
    });
}

// ---- in a handler of signals -----------------------------------------------------------------------

/// The files of a folder; it holds no folders. opendir() would allocate memory.
static void emptyFolder(int folder) {
    constexpr int mostRounds = 1000; // a name that can't be removed is met again in each
    alignas(dirent64) std::array<char, 4096> buffer;
    for (int round = 0; round < mostRounds; ++round) {
        ::lseek(folder, 0, SEEK_SET);
        const long size = ::syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
        bool removed = false;
        for (long at = 0; at < size;) {
            const auto* entry =
                reinterpret_cast<const dirent64*>(buffer.data() + at); // NOLINT: the system's form
            removed |= ::unlinkat(folder, entry->d_name, 0) == 0;
            at += entry->d_reclen;
        }
        if (!removed) return;
    }
}

void removeTemporaries() {
    const int savedError = errno;
    for (Slot& slot : guard.slots) {
        if (slot.process.load(std::memory_order_acquire) != ::getpid()) continue;
        const int folder = ::open(slot.path.data(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (folder < 0) {
            ::unlink(slot.path.data());
            continue;
        }
        emptyFolder(folder);
        ::close(folder);
        ::rmdir(slot.path.data());
    }
    errno = savedError;
}

} // namespace host
