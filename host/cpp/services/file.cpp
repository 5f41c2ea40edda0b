// Files: opening, reading by lines, removing, renaming, temporary names, mapping.
#include "ut.h"

#include "os.h"
#include "services/failure.h"
#include "services/system_path.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

using host::callFails;
using host::systemPath;

static constexpr int errorFailed = 1001;

std::string host::systemPath(const UtCString& path) {
    std::string text = path.str();
    if (text.find('\0') != std::string::npos) return {};
    if (text.find('\\') == std::string::npos || ::access(text.c_str(), F_OK) == 0) return text;
    for (char& c : text)
        if (c == '\\') c = '/';
    return text;
}

/// What can be read like a file; a device isn't, since it may have no end.
static bool isReadable(const struct stat& status) {
    return S_ISREG(status.st_mode) || S_ISFIFO(status.st_mode);
}

bool UtIsFile(const UtCString& path) {
    struct stat status {};
    const std::string name = systemPath(path);
    return !name.empty() && ::stat(name.c_str(), &status) == 0 && isReadable(status);
}

FILE* UtFileOpen(const UtCString& path, const char* mode) {
    const std::string name = systemPath(path);
    const bool reads = mode[0] == 'r';
    if (callFails() || name.empty() || (reads && !UtIsFile(name))) return nullptr;
    FILE* stream = std::fopen(name.c_str(), mode);
    if (!stream) return nullptr;
    struct stat status {};
    if (reads && (::fstat(::fileno(stream), &status) != 0 || !isReadable(status))) {
        std::fclose(stream);
        return nullptr;
    }
    return stream;
}

int UtFileClose(FILE* stream) {
    if (!stream) return errorFailed;
    const bool fails = callFails();
    const bool wrote = std::ferror(stream) == 0;
    const bool closed = std::fclose(stream) == 0;
    constexpr int errorWrite = 9000;
    return closed && wrote && !fails ? 0 : errorWrite;
}

int UtReadLine(FILE* stream, std::string& line) {
    line.clear();
    constexpr int endOfFile = 9003;
    if (callFails()) return endOfFile;
    int c = ::getc_unlocked(stream);
    if (c == EOF) return endOfFile;
    for (; c != EOF && c != '\n' && c != '\r'; c = ::getc_unlocked(stream)) line += static_cast<char>(c);
    if (c != '\r') return 0;
    c = ::getc_unlocked(stream); // "\r\n" is one line end, "\r" alone too
    if (c != '\n' && c != EOF) std::ungetc(c, stream);
    return 0;
}

int UtFileRemove(const UtCString& path) {
    const std::string name = systemPath(path);
    return !callFails() && !name.empty() && ::unlink(name.c_str()) == 0 ? 0 : errorFailed;
}

UtCString UtFileTarget(const UtCString& path) {
    const std::string name = systemPath(path);
    struct stat status {};
    if (callFails() || name.empty()) return {};
    if (::stat(name.c_str(), &status) != 0) return errno == ENOENT ? path : UtCString();
    if (!S_ISREG(status.st_mode) || ::access(name.c_str(), W_OK) != 0) return {};
    char* real = ::realpath(name.c_str(), nullptr);
    if (!real) return path;
    UtCString target(real);
    std::free(real);
    return target;
}

int UtFileRename(const UtCString& from, const UtCString& to) {
    if (callFails()) return errorFailed;
    const std::string source = systemPath(from);
    const std::string target = systemPath(to);
    struct stat old {};
    constexpr mode_t permissions = 07777;
    if (::stat(target.c_str(), &old) == 0 && ::chmod(source.c_str(), old.st_mode & permissions) != 0)
        return errorFailed;
    return std::rename(source.c_str(), target.c_str()) == 0 ? 0 : errorFailed;
}

static bool copyStream(FILE* in, FILE* out) {
    char buffer[1 << 16];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, in))
        if (std::fwrite(buffer, 1, got, out) != got) return false;
    return std::ferror(in) == 0;
}

/// Lets the system copy from file to file. False, with nothing copied, where it can't.
static bool sendFile(FILE* in, FILE* out, bool& copied) {
    constexpr std::size_t most = std::size_t{1} << 30;
    ssize_t sent = ::sendfile(::fileno(out), ::fileno(in), nullptr, most);
    if (sent < 0 && (errno == EINVAL || errno == ENOSYS)) return false;
    while (sent > 0) sent = ::sendfile(::fileno(out), ::fileno(in), nullptr, most);
    copied = sent == 0;
    return true;
}

int UtFileAppend(FILE* stream, const UtCString& path) {
    constexpr int errorOpen = 9001;
    constexpr int errorWrite = 9000;
    if (!stream || std::fflush(stream) != 0) return errorWrite;
    FILE* in = UtFileOpen(path, "rb");
    if (!in) return errorOpen;
    bool copied = false;
    if (!sendFile(in, stream, copied)) copied = copyStream(in, stream);
    std::fclose(in);
    return copied ? 0 : errorWrite;
}

/// Copies a file; what a failure leaves of the copy is removed.
static int copyFile(const UtCString& from, const UtCString& to) {
    FILE* in = UtFileOpen(from, "rb");
    if (!in) return errorFailed;
    FILE* out = UtFileOpen(to, "wb");
    const bool copied = out && copyStream(in, out);
    std::fclose(in);
    const bool closed = out && UtFileClose(out) == 0;
    if (copied && closed) return 0;
    if (out) ::unlink(systemPath(to).c_str());
    return errorFailed;
}

int UtFileMove(const UtCString& from, const UtCString& to) {
    if (callFails()) return errorFailed;
    if (std::rename(systemPath(from).c_str(), systemPath(to).c_str()) == 0) return 0;
    if (errno != EXDEV) return errorFailed;
    if (const int error = copyFile(from, to)) return error;
    return UtFileRemove(from);
}

UtCString UtGetTempDir() {
    return OsGetEnvDflt("TMPDIR", "/tmp");
}

UtCString UtTempFileName(const UtCString& directory, const UtCString& prefix) {
    // Random names, since others on this machine could wait at a name that they can guess.
    std::random_device random;
    for (;;) {
        const unsigned long number = (static_cast<unsigned long>(random()) << 20) ^ random();
        UtCString name = UtPathJoin(directory, prefix + std::to_string(number));
        if (::access(systemPath(name).c_str(), F_OK) != 0) return name;
    }
}

// ---- views of whole files --------------------------------------------------------------------------

namespace {

/// What UtFileUnmap has to give back.
struct MappedFile {
    void* memory = nullptr;
    std::size_t size = 0;
    bool isMapping = false;
};

/// Reads a stream that has no size of its own to its end; null when there is no memory or reading fails.
char* readToEnd(FILE* stream, std::size_t& size) {
    std::size_t capacity = std::size_t{1} << 20;
    auto* memory = static_cast<char*>(std::malloc(capacity));
    size = 0;
    while (memory) {
        size += std::fread(memory + size, 1, capacity - size, stream);
        if (size < capacity) break;
        capacity *= 2;
        void* grown = std::realloc(memory, capacity);
        if (!grown) std::free(memory);
        memory = static_cast<char*>(grown);
    }
    if (memory && std::ferror(stream)) {
        std::free(memory);
        return nullptr;
    }
    return memory;
}

/// Maps a regular file. False when the system refuses.
bool mapFile(int descriptor, std::size_t size, MappedFile& file) {
    file.size = size;
    file.isMapping = true;
    if (size == 0) return true;
    file.memory = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (file.memory == MAP_FAILED) return false;
    ::madvise(file.memory, size, MADV_SEQUENTIAL);
    return true;
}

} // namespace

int UtFileMap(FILE* stream, UT_FILE_VIEW& view) {
    struct stat status {};
    if (callFails() || !stream || ::fstat(::fileno(stream), &status) != 0) return errorFailed;
    MappedFile file;
    if (S_ISREG(status.st_mode)) {
        if (!mapFile(::fileno(stream), static_cast<std::size_t>(status.st_size), file)) return errorFailed;
    } else {
        file.memory = readToEnd(stream, file.size);
        if (!file.memory) return errorFailed;
    }
    view.data = file.size > 0 ? static_cast<const char*>(file.memory) : nullptr;
    view.size = file.size;
    view.handle = new MappedFile(file);
    return 0;
}

void UtFileUnmap(UT_FILE_VIEW& view) {
    if (auto* file = static_cast<MappedFile*>(view.handle)) {
        if (!file->isMapping)
            std::free(file->memory);
        else if (file->size > 0)
            ::munmap(file->memory, file->size);
        delete file;
    }
    view = UT_FILE_VIEW{};
}
