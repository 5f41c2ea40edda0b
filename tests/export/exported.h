// One export against the reference host, its file as pairs, and what a careful reader says to it.
#pragma once

#include "import_text.h"

#include "drawing/drawing.h"
#include "dx_select.h"
#include "services/session.h"
#include "text/text_font.h"
#include "validate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

/// The installation data of the source tree, as an installation has them; without(name) lacks some.
class Installation {
public:
    Installation() {
        namespace fs = std::filesystem;
        fs::create_directories(folder_.path() + "/1700/int/dxf");
        const std::string source = TORVA_SOURCE_DIR;
        fs::create_directory_symlink(source + "/cad", folder_.path() + "/1700/cad");
        fs::create_directory_symlink(source + "/int/dxf/font", folder_.path() + "/1700/int/dxf/font");
        fs::copy(source + "/int/dxf/dflt", folder_.path() + "/1700/int/dxf/dflt");
        setenv("HD_U", folder_.path().c_str(), 1);
        setenv("TMPDIR", folder_.path().c_str(), 1);
        host::resetTextFonts();
    }
    ~Installation() {
        unsetenv("TMPDIR");
        unsetenv("HD_U");
        host::resetTextFonts();
    }
    void without(const std::string& name) const {
        ASSERT_TRUE(std::filesystem::remove(folder_.path() + "/1700/int/dxf/dflt/" + name)) << name;
    }
    void with(const std::string& name, const std::string& content) const {
        folder_.write("1700/int/dxf/dflt/" + name, content);
    }
    /// Files in the folder of temporary files.
    std::size_t leftovers() const {
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            count += entry.is_regular_file() ? 1 : 0;
        return count;
    }

    void clearLeftovers() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path()))
            if (entry.is_regular_file()) std::filesystem::remove(entry.path());
    }

private:
    TempDir folder_;
};

struct Exported {
    double stat = -1;
    std::string text, protocol;
    DxfGroups pairs;
    validate::Report report;

    /// Values of the first entity, record or variable that begins with `code` / `name`.
    DxfGroups first(int code, const std::string& name, std::size_t skip = 0) const {
        DxfGroups found;
        for (const DxfGroup& pair : pairs) {
            const bool begins = pair.code == code || pair.code == 0;
            if (!found.empty() && begins) break;
            if (!found.empty() || (pair.code == code && pair.value == name && skip-- == 0))
                found.push_back(pair);
        }
        return found;
    }
    std::size_t count(int code, const std::string& value) const {
        std::size_t n = 0;
        for (const DxfGroup& pair : pairs) n += pair.code == code && pair.value == value ? 1 : 0;
        return n;
    }
    bool has(const std::string& part) const { return text.find(part) != std::string::npos; }
    std::string errors() const {
        std::string all;
        for (const validate::Finding& f : report.findings)
            if (f.level == validate::Level::Error)
                all += std::to_string(f.line) + ": " + std::to_string(f.number) + " " + f.entity + " " +
                       f.text + "\n";
        return all;
    }
};

/// The groups as "code=value" with blanks between, without handles and owners.
inline std::string shown(const DxfGroups& groups) {
    std::string all;
    for (const DxfGroup& g : groups)
        if (g.code != 5 && g.code != 330 && g.code != 105)
            all += (all.empty() ? "" : " ") + std::to_string(g.code) + "=" + g.value;
    return all;
}
inline std::string valueOf(const DxfGroups& groups, int code) {
    for (const DxfGroup& g : groups)
        if (g.code == code) return g.value;
    return "none";
}

inline DxfGroups pairsOf(const std::string& text) {
    DxfGroups pairs;
    std::istringstream lines(text);
    for (std::string code, value; std::getline(lines, code) && std::getline(lines, value);) {
        value.erase(0, std::min(value.find_first_not_of(' '), value.size()));
        value.erase(value.find_last_not_of(' ') + 1);
        pairs.push_back({std::atoi(code.c_str()), value});
    }
    return pairs;
}

inline std::string exportConfig(const std::string& version, const std::string& lines = {},
                                const std::string& sections = {}) {
    return "#FLAGS-START\nVERSION=" + version + "\n" + lines + "#FLAGS-END\n" + sections + "#EOF\n";
}

/// Exports the open drawing into `folder` as "out.dxf".
inline Exported exportTo(const TempDir& folder, const std::string& config) {
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    host::session().texts["$DxfConfig"] = folder.write("out.dxd", config);
    DxfSelect(0, DX_EXPORT_2D, folder.file("out.dxf").c_str());
    Exported result;
    result.stat = host::session().numbers["&DxfStat"];
    result.protocol = folder.read("dxf.proto");
    result.text = folder.read("out.dxf");
    result.pairs = pairsOf(result.text);
    result.report = validate::validateFile(folder.file("out.dxf"));
    return result;
}
inline Exported exportDrawing(const std::string& config) {
    const TempDir folder;
    return exportTo(folder, config);
}

// ---- drawings ----------------------------------------------------------------------------------------

inline host::Element step(host::ElementType type, double x, double y, double cx = 0, double cy = 0,
                          bool ccw = true) {
    host::Element e;
    e.type = type;
    e.x = x, e.y = y, e.cx = cx, e.cy = cy;
    e.ccw = ccw;
    return e;
}
inline host::Element moveTo(double x, double y) {
    return step(host::ElementType::Move, x, y);
}
inline host::Element drawTo(double x, double y, int pen = 1, int lineType = 1) {
    host::Element e = step(host::ElementType::Draw, x, y);
    e.pen = pen;
    e.lineType = static_cast<std::int16_t>(lineType);
    return e;
}
inline host::Pattern& addPattern(const std::vector<host::Element>& elements, const std::string& name = "P",
                                 const std::string& layer = "LAY") {
    host::Pattern& pattern = host::openDrawing().addPattern(false);
    pattern.ids.group = "GRP", pattern.ids.level = "LEV", pattern.ids.cls = "CLS";
    pattern.ids.name = name, pattern.ids.layer = layer;
    pattern.elements = elements;
    host::openDrawing().recount();
    return pattern;
}
inline void startDrawing() {
    host::resetSession();
}
inline const std::vector<std::string> VERSIONS{"ACAD32", "ACAD27", "ACAD24", "ACAD21",
                                               "ACAD18", "ACAD15", "ACAD12", "EASY"};

class Export : public testing::Test {
protected:
    void SetUp() override { startDrawing(); }
    Installation installation_;
};
