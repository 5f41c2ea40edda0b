// Where the program finds its data and puts what it needs for a while.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// A folder of this process that goes away with its owner.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    std::string file(const std::string& name) const { return path_ + "/" + name; }
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

/// Points HD_U, HD_VE and VE to the program's own data unless they are set: the data that is installed
/// beside the program, else that of the build, else that of the installation it was made for.
void setDataEnvironment();
/// Path of an installation file below int/dxf/dflt.
std::string dataFile(const std::string& name);
/// Why there is no installation data where HD_U and HD_VE say; empty when there is.
std::string whyNoData();
/// From now on the run reads and writes below these folders only, but for what the program brings along and
/// its folder for temporary files; with none, it isn't confined. Empty, or what is wrong with a folder.
std::string confine(const std::vector<std::string>& folders);
/// Language of messages by the locale: "de" for a German one, else "en".
std::string localeLanguage();

} // namespace tool
