#include "environment.h"

#include "services/open_file.h"
#include "services/temporary_files.h"
#include "words.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

namespace tool {

static const char* const kRelease = "1700";

TemporaryFolder::TemporaryFolder() {
    static const char* const stem = "torva-dxf-";
    std::error_code error;
    const fs::path place = fs::temp_directory_path(error);
    if (error)
        throw std::runtime_error(words::say("There is no folder for temporary files; TMPDIR says where"));
    host::removeAbandonedFolders(place.string(), stem);
    std::string name = (place / stem).string() + "XXXXXX";
    if (!mkdtemp(name.data()))
        throw std::runtime_error(
            words::say("Can't make a folder in the temporary directory: {}", words::systemWords(errno)));
    path_ = name;
    host::allowBelow(path_);
    const int folder = ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    host::guardTemporary(path_, folder);
    ::close(folder);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    host::releaseTemporary(path_);
}

static std::string findData() {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    for (const fs::path& root :
         {program.parent_path().parent_path() / "share/torva-dxf", fs::path(TORVA_BUILD_DATA)}) {
        if (fs::is_directory(root / kRelease / "int", error)) return root.string();
    }
    return TORVA_INSTALL_DATA;
}

static std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

void setDataEnvironment() {
    if (variable("HD_U").empty()) setenv("HD_U", findData().c_str(), 1);
    if (variable("HD_VE").empty()) setenv("HD_VE", kRelease, 1);
    if (variable("VE").empty()) setenv("VE", variable("HD_VE").c_str(), 1);
}

std::string dataFile(const std::string& name) {
    return variable("HD_U") + "/" + variable("HD_VE") + "/int/dxf/dflt/" + name;
}

std::string whyNoData() {
    std::error_code error;
    const std::string folder = dataFile("");
    if (fs::is_directory(folder, error)) return {};
    return words::say("there is no installation data in {}; HD_U and HD_VE say where it is", folder);
}

std::string confine(const std::vector<std::string>& folders) {
    if (folders.empty()) return {};
    const std::string missing = host::confineTo(folders, {variable("HD_U")});
    return missing.empty() ? "" : words::say("there is no folder {} to confine the run to", missing);
}

std::string localeLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const std::string value = variable(name);
        if (!value.empty()) return value.starts_with("de") ? "de" : "en";
    }
    return "en";
}

} // namespace tool
