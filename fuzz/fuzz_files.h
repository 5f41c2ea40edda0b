// A folder of a fuzz target's process with files of its own.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

class FuzzFolder {
public:
    explicit FuzzFolder(const std::string& name)
        : path_(std::filesystem::temp_directory_path() /
                ("torva-fuzz-" + name + "-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(path_);
        setenv("HD_WORK_DIR", path_.c_str(), 1);
    }
    ~FuzzFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    FuzzFolder(const FuzzFolder&) = delete;
    FuzzFolder& operator=(const FuzzFolder&) = delete;

    std::string file(const std::string& name) const { return path_ / name; }
    std::string write(const std::string& name, const std::uint8_t* data, std::size_t size) const {
        std::ofstream(file(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return file(name);
    }
    std::string write(const std::string& name, const std::string& text) const {
        return write(name, reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    }
    std::string read(const std::string& name) const {
        std::ifstream in(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    /// Without the protocol, which grows with each run.
    void tidy() const { std::filesystem::remove(path_ / "dxf.proto"); }

private:
    std::filesystem::path path_;
};
