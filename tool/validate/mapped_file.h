#pragma once
// A file's bytes for reading: mapped where that works, read where it doesn't (standard input, pipes).

#include <string>
#include <string_view>

namespace validate {

class MappedFile {
public:
    /// Opens the file; "-" is standard input. When that fails, error() says why.
    explicit MappedFile(const std::string& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// Valid as long as the object lives.
    std::string_view text() const { return text_; }
    /// Empty when the file could be read.
    const std::string& error() const { return error_; }

private:
    void open(int descriptor);
    void readAll(int descriptor);

    std::string_view text_{};
    std::string copy_, error_;
    void* mapping_ = nullptr;
    size_t size_ = 0;
};

} // namespace validate
