#include "file_bytes.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace validate {

FileBytes::FileBytes(const std::string& path) {
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

void FileBytes::open(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        error_ = std::strerror(errno);
    } else if (S_ISDIR(status.st_mode)) {
        error_ = std::strerror(EISDIR);
    } else {
        if (S_ISREG(status.st_mode)) bytes_.reserve(static_cast<std::size_t>(status.st_size) + 1);
        readAll(descriptor);
    }
}

void FileBytes::readAll(int descriptor) {
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count < 0) error_ = std::strerror(errno);
        if (count <= 0) break;
        bytes_.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

} // namespace validate
