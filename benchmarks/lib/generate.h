// Drawing files made for measurements.
#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// A text DXF of about `bytes` bytes: LINE, ARC and CIRCLE in turn on 50 layers, the same in each call.
std::string generateLinework(std::size_t bytes);
/// The number of entities in such a file.
std::size_t countEntities(const std::string& dxf);

/// A file in a temporary folder, removed at the end of its life.
class TempFile {
public:
    TempFile(const std::string& name, const std::string& content, const std::string& extension = ".dxf");
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

} // namespace bench
