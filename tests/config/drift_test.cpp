// What must stay in step: generated tables with the host, and the documentation and installation data with
// the keys, sections, keywords and macro variables that the module knows.
#include "config_fixture.h"

#include "config/dx_colors.h"
#include "config/dx_config_rows.h"
#include "drawing/drawing.h"

#include <regex>

namespace {

const std::filesystem::path ROOT = TORVA_SOURCE_DIR;

std::string slurp(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

long distance(host::Rgb a, host::Rgb b) {
    const auto square = [](int d) { return static_cast<long>(d) * d; };
    return square(a.r - b.r) + square(a.g - b.g) + square(a.b - b.b);
}

/// The DXF colour of a pen that no table gives: the colour whose pen it is, else the nearest.
int colorOfPen(int pen) {
    for (int color = 1; color < DX_COLOR_COUNT; ++color)
        if (DxBuiltInPen(color) == pen) return color;
    int best = 1;
    const host::Rgb wanted = host::paletteColor(pen);
    for (int color = 2; color < DX_COLOR_COUNT; ++color)
        if (distance(wanted, host::dxfColor(color)) < distance(wanted, host::dxfColor(best))) best = color;
    return best;
}

/// Colours of the first and the last pens, which were chosen by hand.
constexpr int FIRST[] = {5,  7,  1,  2,  3,  4,  211, 30,  63,  153, 41,  254, 9,   253, 8,   18,
                         21, 31, 41, 51, 61, 61, 71,  111, 121, 131, 141, 161, 201, 201, 221, 221};
constexpr int LAST[] = {15, 246, 254, 9,  252, 235, 247, 248, 240, 240, 242, 11, 240, 242, 241, 243,
                        13, 244, 231, 11, 243, 15,  246, 254, 253, 252, 245, 17, 248, 18,  18,  18};

std::string makePenColors() {
    std::string out =
        "// Generated from the host's palette by the test PenColors.FollowThePalette; to renew it run\n"
        "//   TORVA_UPDATE_GENERATED=1 build/sanitize/tests/test_config --gtest_filter=PenColors.*\n"
        "#pragma once\n\n// clang-format off\n/// The DXF colour of each host pen from 0 on.\n"
        "inline constexpr unsigned char DX_PEN_COLORS[] = {\n";
    for (int pen = 0; pen < DX_PEN_COUNT; ++pen) {
        const int last = pen - (DX_PEN_COUNT - 32);
        const int color = pen < 32 ? FIRST[pen] : last >= 0 ? LAST[last] : colorOfPen(pen);
        out += (pen % 16 == 0 ? "    " : " ") + std::to_string(color) + (pen % 16 == 15 ? ",\n" : ",");
    }
    return out + "};\n// clang-format on\n";
}

std::string read(const char* relative) {
    const std::string text = slurp(ROOT / relative);
    EXPECT_FALSE(text.empty()) << relative;
    return text;
}

} // namespace

TEST(PenColors, FollowThePalette) {
    const std::filesystem::path file = ROOT / "dxf/cpp/config/dx_pen_colors.h";
    const std::string wanted = makePenColors();
    if (std::getenv("TORVA_UPDATE_GENERATED")) std::ofstream(file, std::ios::binary) << wanted;
    EXPECT_TRUE(slurp(file) == wanted) << "run with TORVA_UPDATE_GENERATED=1, then build again";
}

TEST(Docs, TellEveryKeySectionAndKeyword) {
    const std::string docs = read("docs/configuration.md");
    const std::string sample = "\n" + read("int/dxf/dflt/sample.dxd");
    const std::string conf = read("int/dxf/dflt/Dxf.conf");
    const auto has = [](const std::string& text, const std::string& part) {
        return text.find(part) != text.npos;
    };
    for (const DxFlagKey& row : DxFlagKeys()) {
        EXPECT_TRUE(has(docs, "| `" + std::string(row.key) + "` |")) << row.key;
        EXPECT_TRUE(has(sample, "\n" + std::string(row.key) + "=")) << row.key;
    }
    for (const DxDataSection& row : DxDataSections()) {
        EXPECT_TRUE(has(docs, "| `" + std::string(row.header) + "` |")) << row.header;
        EXPECT_TRUE(has(sample, "\n" + std::string(row.header) + "\n")) << row.header;
    }
    for (const DxConfigKeyword& row : DxConfigKeywords()) {
        EXPECT_TRUE(has(docs, "| `" + std::string(row.keyword) + "` |")) << row.keyword;
        EXPECT_TRUE(has(conf, std::string(row.keyword))) << row.keyword;
    }
}

TEST(Docs, TellEveryMacroVariable) {
    const std::string docs = read("docs/macro-variables.md");
    const std::regex literal("\"([&$]Dxf\\w+)\"");
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ROOT / "dxf/cpp")) {
        if (entry.path().extension() != ".cpp") continue;
        const std::string text = slurp(entry.path());
        for (std::sregex_iterator it(text.begin(), text.end(), literal), end; it != end; ++it, ++count)
            EXPECT_NE(docs.find("`" + (*it)[1].str() + "`"), std::string::npos)
                << (*it)[1] << " in " << entry.path();
    }
    EXPECT_GT(count, 20);
}

class InstallationData : public ConfigSession {};

TEST_F(InstallationData, IsReadWithoutAWarning) {
    for (const int isExport : {0, 1}) {
        start(isExport);
        EXPECT_EQ(DxReadConfig((ROOT / "int/dxf/dflt/sample.dxd").string(), isExport), 0);
        EXPECT_EQ(DxBuildTables(), 0);
        EXPECT_EQ(DxWriteVersion, 2);
        start(isExport);
        EXPECT_EQ(DxReadDefaultFile((ROOT / "int/dxf/dflt/Dxf.conf").string(), isExport), 0);
        EXPECT_EQ(DxBuildTables(), 0);
        EXPECT_EQ(*DxLtToCadIndex.find(DxLtToCad, "Continuous"), 1);
        EXPECT_EQ(DxDocuments.tables.lineTypes[8].elementCount, 6) << "DIVIDE";
    }
    EXPECT_THAT(messages(), testing::IsEmpty());
}
