#include "tell.h"

#include "services/open_file.h"
#include "words.h"

#include <cerrno>
#include <filesystem>
#include <iostream>

namespace fs = std::filesystem;

namespace tool {

int fail(const std::string& why, Status status) {
    std::cerr << "torva-dxf: " << why << '\n';
    return status;
}

int fail(const std::string& file, const std::string& why, Status status) {
    return fail(file + ": " + why, status);
}

bool makeFolder(const std::string& folder) {
    std::error_code error;
    if (!host::mayWriteBelow(folder)) {
        fail(words::say("{} is outside the folders of --confine", folder));
        return false;
    }
    fs::create_directories(folder, error);
    const int number = error ? error.value() : EEXIST;
    if (fs::is_directory(folder, error)) return true;
    fail(words::say("can't make the folder {}: {}", folder, words::systemWords(number)));
    return false;
}

} // namespace tool
