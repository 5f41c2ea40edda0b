#include "od_stream_buf.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

enum Code { OTHER_ERROR = 48, ACCESS_DENIED = 53, NOT_FOUND = 66, SHARING_VIOLATION = 339 };

[[noreturn]] void fail(const UtCString& name) {
    if (errno == ENOENT || errno == ENOTDIR) throw OdError_FileNotFound(name);
    if (errno == EACCES || errno == EPERM) throw OdError_FileException(ACCESS_DENIED, name);
    if (errno == EBUSY || errno == ETXTBSY) throw OdError_FileException(SHARING_VIOLATION, name);
    throw OdError_FileException(OTHER_ERROR, name);
}

} // namespace

OdError_FileNotFound::OdError_FileNotFound(const UtCString& name)
    : OdError(NOT_FOUND, std::string("no such file: ") + name.c_str()) {}

OdError_FileException::OdError_FileException(int code, const UtCString& name)
    : OdError(code, std::string("can't use the file ") + name.c_str()) {}

OdBaseFileBuf::~OdBaseFileBuf() {
    close();
}

void OdBaseFileBuf::close() {
    if (handle_) UtFileClose(handle_);
    handle_ = nullptr;
}

OdRdFileBuf::OdRdFileBuf(const UtCString& name) {
    name_ = name;
    errno = 0;
    handle_ = UtFileOpen(name, "rb");
    if (!handle_) fail(name);
    if (UtFileMap(handle_, map_) != 0) throw OdError_FileException(OTHER_ERROR, name);
}

OdRdFileBuf::~OdRdFileBuf() {
    UtFileUnmap(map_);
}

std::size_t OdRdFileBuf::getBytes(void* bytes, std::size_t size) {
    const std::size_t count = std::min(size, map_.size - position_);
    if (count) std::memcpy(bytes, map_.data + position_, count);
    position_ += count;
    return count;
}

void OdRdFileBuf::putBytes(const void*, std::size_t) {
    throw OdError_FileException(ACCESS_DENIED, name_);
}

OdWrFileBuf::OdWrFileBuf(const UtCString& name) {
    name_ = name;
    errno = 0;
    handle_ = UtFileOpen(name, "wb");
    if (!handle_) fail(name);
    buffer_.reserve(BUFFER);
}

OdWrFileBuf::~OdWrFileBuf() {
    if (handle_ && !buffer_.empty()) std::fwrite(buffer_.data(), 1, buffer_.size(), handle_);
}

void OdWrFileBuf::putBytes(const void* bytes, std::size_t size) {
    wasWritten_ = true;
    length_ += size;
    buffer_.append(static_cast<const char*>(bytes), size);
    if (buffer_.size() >= BUFFER) flush();
}

void OdWrFileBuf::flush() {
    const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), handle_);
    const bool isWhole = written == buffer_.size() && std::fflush(handle_) == 0;
    buffer_.clear();
    if (!isWhole) throw OdError_FileException(OTHER_ERROR, name_);
}
