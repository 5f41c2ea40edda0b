#include "mapped_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace validate {

MappedFile::MappedFile(const std::string& path) {
    if (path == "-") {
        readAll(STDIN_FILENO);
        return;
    }
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        error_ = std::strerror(errno);
        return;
    }
    open(descriptor);
    ::close(descriptor);
}

MappedFile::~MappedFile() {
    if (mapping_) ::munmap(mapping_, size_);
}

void MappedFile::open(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        error_ = std::strerror(errno);
    } else if (S_ISDIR(status.st_mode)) {
        error_ = std::strerror(EISDIR);
    } else if (!S_ISREG(status.st_mode) || status.st_size == 0) {
        readAll(descriptor);
    } else {
        size_ = static_cast<size_t>(status.st_size);
        void* const mapping = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (mapping == MAP_FAILED) {
            readAll(descriptor);
            return;
        }
        mapping_ = mapping;
        ::madvise(mapping_, size_, MADV_SEQUENTIAL);
        text_ = {static_cast<const char*>(mapping_), size_};
    }
}

void MappedFile::readAll(int descriptor) {
    char buffer[1 << 16];
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) error_ = std::strerror(errno);
        if (count <= 0) break;
        copy_.append(buffer, static_cast<size_t>(count));
    }
    text_ = copy_;
}

} // namespace validate
