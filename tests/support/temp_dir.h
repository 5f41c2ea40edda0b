// A folder for the files of one test.
#pragma once

#include <string>

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; } ///< Its path.
    /// Writes a file, in folders that are made as needed, and gives its path.
    std::string write(const std::string& name, const std::string& content) const;
    std::string read(const std::string& name) const; ///< Its content, empty when there is none.

private:
    std::string path_;
};
