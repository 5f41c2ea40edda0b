#include "entity_count.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

static std::string trimmed(std::string line) {
    line.erase(line.find_last_not_of(" \t\r") + 1);
    return line.erase(0, line.find_first_not_of(" \t"));
}

namespace {

class Counting {
public:
    void pair(int code, const std::string& value) {
        if (code == 0) {
            settle();
            name_ = value;
            layer_ = "0";
            record_.clear();
            color_ = 7;
            flags_ = space_ = invisible_ = 0;
        }
        if (code == 2 && name_ == "SECTION") section_ = value;
        if (code == 2) record_ = value;
        if (code == 8) layer_ = value;
        if (code == 60) invisible_ = std::atoi(value.c_str());
        if (code == 62) color_ = std::atoi(value.c_str());
        if (code == 67) space_ = std::atoi(value.c_str());
        if (code == 70) flags_ = std::atoi(value.c_str());
    }
    std::map<std::string, EntityCount> counts;

private:
    void settle() {
        if (name_ == "LAYER" && section_ == "TABLES" && (color_ < 0 || (flags_ & 1)))
            offLayers_.insert(record_);
        if (name_ == "ENDSEC") section_.clear();
        if (section_ != "ENTITIES" || name_ == "SECTION") return;
        EntityCount& count = counts[name_];
        ++count.all;
        if (space_ == 0 && (invisible_ || offLayers_.contains(layer_))) ++count.hidden;
    }
    std::string section_, name_, layer_, record_;
    int color_ = 7, flags_ = 0, space_ = 0, invisible_ = 0;
    std::set<std::string> offLayers_;
};

} // namespace

std::map<std::string, EntityCount> countEntities(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    Counting counting;
    for (std::string code, value; std::getline(file, code) && std::getline(file, value);) {
        const std::string text = trimmed(value);
        counting.pair(std::atoi(code.c_str()), text);
        if (std::atoi(code.c_str()) == 0 && text == "EOF") break;
    }
    counting.pair(0, "SECTION");
    return counting.counts;
}

bool isBinaryDxf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string line;
    std::getline(file, line);
    return line.starts_with("AutoCAD Binary DXF");
}

std::vector<fs::path> drawingsIn(const std::string& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension();
        if (extension == ".dxf" || extension == ".DXF") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}
