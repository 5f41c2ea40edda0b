#pragma once
// A file's bytes, read into memory: whoever changes or shortens the file meanwhile changes nothing of them.

#include <string>
#include <string_view>

namespace validate {

class FileBytes {
public:
    /// Opens the file; "-" is standard input. When that fails, error() says why.
    explicit FileBytes(const std::string& path);

    /// Valid as long as the object lives.
    std::string_view text() const { return bytes_; }
    /// Empty when the file could be read.
    const std::string& error() const { return error_; }

private:
    void open(int descriptor);
    void readAll(int descriptor);

    std::string bytes_, error_;
};

} // namespace validate
