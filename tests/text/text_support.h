// Texts of a drawing, and where their characters stand.
#pragma once

#include "import_text.h"

#include "drawing/drawing.h"
#include "text/layout.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

/// The program's own character tables, as they lie in the source tree.
class InstalledTables {
public:
    InstalledTables() {
        namespace fs = std::filesystem;
        fs::create_directories(folder_.path() + "/1700");
        for (const char* part : {"int", "cad"})
            fs::create_directory_symlink(std::string(TORVA_SOURCE_DIR) + "/" + part,
                                         folder_.path() + "/1700/" + part);
        setenv("HD_U", folder_.path().c_str(), 1);
        host::resetTextFonts();
    }
    ~InstalledTables() {
        unsetenv("HD_U");
        host::resetTextFonts();
    }

private:
    TempDir folder_;
};

/// Coordinates stay where they are; characters and fonts by the configuration of the command.
inline ImportOptions textOptions() {
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    std::ifstream keep(std::string(TORVA_SOURCE_DIR) + "/int/dxf/dflt/keep.dxd");
    options.config = std::string(std::istreambuf_iterator<char>(keep), {});
    // Texts are looked at by their pens: colours of the palette.
    options.config.replace(options.config.find("PEN_LOOKS=1"), 11, "PEN_LOOKS=0");
    std::string pens;
    for (int color = 1; color <= 255; ++color)
        pens += std::to_string(color) + "|" + std::to_string(color) + "\n";
    for (const char* section : {"#PEN-DXF-TO-CAD\n255\n", "#FILL-DXF-TO-CAD\n255\n"})
        options.config.insert(options.config.rfind("#EOF"), section + pens);
    return options;
}

inline std::vector<host::Text> importTexts(const DxfText& text,
                                           const ImportOptions& options = textOptions()) {
    importText(text.text(), options);
    std::vector<host::Text> texts;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        texts.insert(texts.end(), pattern.texts.begin(), pattern.texts.end());
    return texts;
}

/// What the texts say, in quotes.
inline std::string saidBy(const std::vector<host::Text>& texts) {
    std::string all;
    for (const host::Text& text : texts) {
        all += all.empty() ? "'" : " '";
        for (const std::string& line : text.lines) all += line;
        all += "'";
    }
    return all;
}

/// A text as it is shown in the drawing.
inline host::TextLayout shown(const host::Text& text) {
    return host::layoutText(text, host::sheetMillimetres(host::openDrawing()));
}

/// Where the characters of a text stand: along the line from left to right at share 0 … 1, above the baseline
/// at `up` times the height; spacing at the ends left aside.
inline RPT inkAt(const host::Text& text, double along, double up, std::size_t line = 0) {
    const double unit = host::sheetMillimetres(host::openDrawing());
    const host::LayoutLine place = shown(text).lines.at(line);
    const double width = place.width - (text.spacing - 1) * text.width;
    const double x = (place.x + along * width) / unit, y = (place.baseline + up * text.height) / unit;
    return {text.x + x * std::cos(text.angle) - y * std::sin(text.angle),
            text.y + x * std::sin(text.angle) + y * std::cos(text.angle)};
}

inline DxfGroups operator+(DxfGroups a, const DxfGroups& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}
inline std::string num(double value) {
    std::ostringstream out;
    out.precision(15);
    out << value;
    return out.str();
}
/// Groups of a text at (x, y) of height 5.
inline DxfGroups textAt(double x, double y, const std::string& text) {
    return {{8, "0"}, {10, num(x)}, {20, num(y)}, {40, "5"}, {1, text}};
}
inline DxfText oneText(const DxfGroups& groups) {
    return dxf().header("AC1015").entity("TEXT", groups);
}
inline DxfText oneMtext(const DxfGroups& groups) {
    return dxf().header("AC1015").entity("MTEXT", groups);
}
/// A text style with a font file, and a face unless `face` is empty.
inline DxfGroups style(const std::string& name, const std::string& file, const std::string& face = "") {
    DxfGroups groups{{2, name}, {70, "0"}, {40, "0"}, {41, "1"}, {50, "0"}, {3, file}};
    if (!face.empty()) groups = groups + DxfGroups{{1001, "ACAD"}, {1000, face}, {1071, "0"}};
    return groups;
}

#define EXPECT_AT(point, px, py)                                                                             \
    do {                                                                                                     \
        const RPT reached = (point);                                                                         \
        EXPECT_NEAR(reached.x, px, 1e-6);                                                                    \
        EXPECT_NEAR(reached.y, py, 1e-6);                                                                    \
    } while (false)
