// Files: opening, reading by lines, removing, renaming, temporary names, mapping.
#include "ut_file.h"

#include "os.h"
#include "services/failure.h"
#include "services/guarded_map.h"
#include "services/open_file.h"
#include "services/system_path.h"
#include "services/temporary_files.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
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

bool UtIsFile(const UtCString& path) {
    const std::string name = systemPath(path);
    return !name.empty() && host::isRegular(name);
}

static FILE* openToRead(const std::string& name) {
    const int descriptor = host::openRegular(name);
    FILE* const stream = descriptor < 0 ? nullptr : ::fdopen(descriptor, "rb");
    if (!stream && descriptor >= 0) ::close(descriptor);
    return stream;
}

FILE* UtFileOpen(const UtCString& path, const char* mode) {
    const std::string name = systemPath(path);
    if (callFails() || name.empty()) return nullptr;
    if (mode[0] == 'r') return openToRead(name);
    FILE* const stream = host::mayWrite(name) ? std::fopen(name.c_str(), mode) : nullptr;
    if (stream && host::isTemporaryName(name)) host::guardTemporary(name, ::fileno(stream));
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
    if (callFails() || name.empty() || !host::mayWrite(name)) return errorFailed;
    const bool isRemoved = ::unlink(name.c_str()) == 0;
    if (host::isTemporaryName(name)) host::releaseTemporary(name); // what isn't there needs no guard either
    return isRemoved ? 0 : errorFailed;
}

UtCString UtFileTarget(const UtCString& path) {
    const std::string name = systemPath(path);
    struct stat status {};
    if (callFails() || name.empty() || !host::mayWrite(name)) return {};
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
    if (!host::mayWrite(target) || std::rename(source.c_str(), target.c_str()) != 0) return errorFailed;
    host::renameTemporary(source, target);
    return 0;
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
    if (std::rename(systemPath(from).c_str(), systemPath(to).c_str()) == 0) {
        host::renameTemporary(systemPath(from), systemPath(to));
        return 0;
    }
    if (errno != EXDEV) return errorFailed;
    if (const int error = copyFile(from, to)) return error;
    return UtFileRemove(from);
}

UtCString UtGetTempDir() {
    return OsGetEnvDflt("TMPDIR", "/tmp");
}

UtCString UtTempFileName(const UtCString& directory, const UtCString& prefix) {
    host::removeAbandonedFiles(directory.IsEmpty() ? "." : systemPath(directory));
    return host::temporaryName(systemPath(UtPathJoin(directory, prefix)));
}

// ---- views of whole files --------------------------------------------------------------------------

namespace {

/// What UtFileUnmap has to give back.
struct MappedFile {
    void* memory = nullptr; ///< null for an empty file
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

} // namespace

int UtFileMap(FILE* stream, UT_FILE_VIEW& view) {
    struct stat status {};
    if (callFails() || !stream || ::fstat(::fileno(stream), &status) != 0) return errorFailed;
    MappedFile file;
    const bool isRegular = S_ISREG(status.st_mode);
    if (isRegular) file.size = static_cast<std::size_t>(status.st_size);
    if (isRegular && file.size > 0) {
        file.memory = host::mapGuarded(::fileno(stream), file.size);
        file.isMapping = file.memory != nullptr;
    }
    if (file.isMapping)
        ::madvise(file.memory, file.size, MADV_SEQUENTIAL);
    else if ((!isRegular || file.size > 0) && !(file.memory = readToEnd(stream, file.size)))
        return errorFailed;
    view.data = file.size > 0 ? static_cast<const char*>(file.memory) : nullptr;
    view.size = file.size;
    view.handle = new MappedFile(file);
    return 0;
}

bool UtFileShrank(const UT_FILE_VIEW& view) {
    const auto* file = static_cast<const MappedFile*>(view.handle);
    return file && file->isMapping && host::isTorn(file->memory);
}

void UtFileUnmap(UT_FILE_VIEW& view) {
    if (auto* file = static_cast<MappedFile*>(view.handle)) {
        if (file->isMapping)
            host::unmapGuarded(file->memory, file->size);
        else
            std::free(file->memory);
        delete file;
    }
    view = UT_FILE_VIEW{};
}

// ---- identity --------------------------------------------------------------------------------------

static UT_FILE_ID idOf(const struct stat& status) {
    return {static_cast<unsigned long long>(status.st_dev), static_cast<unsigned long long>(status.st_ino)};
}

bool UtFileIdOfStream(FILE* stream, UT_FILE_ID& id) {
    struct stat status {};
    if (!stream || ::fstat(::fileno(stream), &status) != 0) return false;
    id = idOf(status);
    return true;
}

bool UtFileIdOfPath(const UtCString& path, UT_FILE_ID& id) {
    struct stat status {};
    const std::string name = systemPath(path);
    if (name.empty() || ::stat(name.c_str(), &status) != 0) return false;
    id = idOf(status);
    return true;
}
