// What comes back from an export: small drawings made at random, and real files.
#include "round_trip.h"

#include "config/dx_names.h"
#include "session/session_state.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>

namespace {

TEST(Templates, AreThoseOfTheirGenerator) {
    const std::string script = std::string(TORVA_SOURCE_DIR) + "/int/dxf/templates/make_templates.py";
    EXPECT_EQ(std::system(("python3 '" + script + "' --check").c_str()), 0);
}

namespace fs = std::filesystem;
using host::Element;
using host::ElementType;

void drawAtRandom(std::mt19937& random) {
    std::uniform_int_distribution<int> kind(0, 4), place(-500, 500), pen(1, 4), radius(1, 60);
    for (int p = 0; p < 4; ++p) {
        std::vector<Element> chain{moveTo(place(random), place(random))};
        const int color = pen(random);
        for (int i = 0; i < 12; ++i) {
            const Element last = chain.back();
            const double r = radius(random) / 4.0;
            switch (kind(random)) {
            case 0: chain.push_back(moveTo(place(random), place(random))); break;
            case 1:
                chain.push_back(step(ElementType::Arc, last.x + r, last.y + r, last.x + r, last.y, false));
                break;
            case 2:
                chain.push_back(step(ElementType::Arc, last.x + r, last.y + r, last.x, last.y + r, true));
                break;
            case 3:
                chain.push_back(moveTo(last.x + r, last.y));
                chain.push_back(step(ElementType::Circle, last.x + r, last.y, last.x, last.y));
                chain.push_back(moveTo(last.x, last.y + 1));
                break;
            default: chain.push_back(drawTo(last.x + r, last.y - 3)); break;
            }
            chain.back().pen = color;
        }
        addPattern(chain, "P" + std::to_string(p), "LAYER" + std::to_string(p));
    }
}

TEST_F(Export, ADrawingComesBack) {
    std::mt19937 random(20);
    for (int round = 0; round < 12; ++round) {
        for (const std::string& version : VERSIONS) {
            for (const char* poly : {"WRITE_POLY=0\n", "WRITE_POLY=1\n"}) {
                startDrawing();
                drawAtRandom(random);
                auto before = shownByLayer();
                TempDir folder;
                std::string config = keepConfig(version);
                config.insert(config.find("#FLAGS-END"), poly);
                const Exported file = exportTo(folder, config);
                ASSERT_EQ(file.stat, 0);
                ASSERT_EQ(file.errors(), "") << version;
                ASSERT_EQ(importFile(folder, "out.dxf", keepOptions(version)).stat, 0) << version;
                auto after = shownByLayer();
                for (auto& [layer, shown] : before)
                    expectEqual(shown.strokes, after[layer].strokes,
                                version + " " + poly + std::to_string(round) + layer);
                if (HasFatalFailure()) return;
            }
        }
    }
}

// ---- real drawings -------------------------------------------------------------------------------------

/// A name as it stands in a file of a version without long names.
std::string oldName(const std::string& name) {
    UtCString text(name);
    const int version = DxWriteVersion;
    DxWriteVersion = 7;
    DxCheckName(text);
    DxWriteVersion = version;
    return text.str();
}

/// Numbers for the line types that a file names, the same for each spelling that may come back.
std::map<std::string, int> lineTypesOf(const std::string& text) {
    std::map<std::string, int> numbers{{"CONTINUOUS", 1}};
    std::map<std::string, int> byUpperName{{"CONTINUOUS", 1}, {"BYLAYER", 0}, {"BYBLOCK", 0}};
    int next = 2;
    for (const DxfGroup& pair : pairsOf(text)) {
        const std::string name = pair.value.substr(0, pair.value.find('\r'));
        const bool isName = std::all_of(name.begin(), name.end(), [](char c) { return c != '|' && c >= 32; });
        if (pair.code != 6 || name.empty() || !isName || next > 62) continue;
        const auto [known, isNew] = byUpperName.try_emplace(UtCString(name).Upper().str(), next);
        if (isNew) ++next;
        if (known->second) numbers[name] = numbers[oldName(name)] = known->second;
    }
    return numbers;
}

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
}

/// Attributes as they can come back: blocks of equal names are numbered, and older targets know capitals
/// only.
std::map<std::string, std::string> comparable(std::map<std::string, std::string> attributes) {
    const auto insert = attributes.find("insert");
    if (insert == attributes.end()) return attributes;
    std::string& name = insert->second;
    const std::size_t tail = name.find_last_not_of("0123456789");
    if (tail != std::string::npos && name[tail] == '-' && tail + 1 < name.size()) name.resize(tail);
    name = oldName(name);
    return attributes;
}

/// What the run told that it had to leave out.
struct Losses {
    bool fills, texts;
};
void expectComesBack(std::map<std::string, Shown> before, const std::string& version, const Losses& losses,
                     const std::string& what) {
    const bool isOld = version == "EASY" || version < "ACAD14";
    auto after = shownByLayer();
    for (auto& [layer, shown] : before) {
        if (isOld && !isAscii(layer)) continue;
        Shown& back = after[isOld ? oldName(layer) : layer];
        for (Shown* side : {&shown, &back}) keepWhatIsHeld(*side, version);
        if (shown.hasDimension) matchOrder(shown, back, isOld);
        const std::string where = what + " " + version + " layer " + layer;
        // Splines come back as arcs, the frames of texts as lines, and so do hatches in old targets, where
        // fills are chords instead of arcs.
        const bool hasLines = isOld && !shown.lineAreas.empty();
        // The pieces in which a block drew a dimension's lines come back as whole ones.
        if (shown.hasBlockLines)
            expectSameBox(shown.strokes, back.strokes, where);
        else if (!shown.hasSpline && !shown.hasFrame && !hasLines)
            expectEqual(shown.strokes, back.strokes, where);
        if (!losses.fills)
            expectEqual(shown.fillAreas, back.fillAreas, isOld ? 2e-3 : 1e-5, where + " fills");
        if (!isOld) expectEqual(shown.lineAreas, back.lineAreas, 1e-5, where + " hatches");
        if (!losses.texts) expectEqual(shown.lines, back.lines, isOld, where);
        EXPECT_EQ(comparable(shown.attributes), comparable(back.attributes)) << where;
    }
}

/// Calls `test` for a copy of each drawing of the folder TORVA_CORPUS, which lies as in.dxf in a folder of
/// its own. False when there is no such folder.
template <class Test>
bool forEachRealDrawing(const Test& test) {
    const char* corpus = std::getenv("TORVA_CORPUS");
    if (!corpus) return false;
    for (const auto& entry : fs::recursive_directory_iterator(corpus)) {
        const std::string extension = entry.path().extension();
        if (extension != ".dxf" && extension != ".DXF") continue;
        const TempDir folder;
        fs::copy_file(entry.path(), folder.file("in.dxf"));
        test(folder, entry.path().filename().string());
    }
    return true;
}
constexpr const char* NO_CORPUS = "TORVA_CORPUS names no directory with real drawings";

TEST_F(Export, RealDrawingsComeBack) {
    int seen = 0;
    const bool found = forEachRealDrawing([&](const TempDir& folder, const std::string& name) {
        const auto lineTypes = lineTypesOf(folder.read("in.dxf"));
        bool isFirst = true;
        for (const std::string& version : VERSIONS) {
            if (importFile(folder, "in.dxf", keepOptions(version, lineTypes)).stat != 0)
                break; // some are damaged on purpose
            seen += isFirst ? 1 : 0;
            isFirst = false;
            const auto before = shownByLayer();
            const Exported file = exportTo(folder, keepConfig(version, lineTypes));
            EXPECT_EQ(file.stat, 0) << name << " " << version;
            EXPECT_EQ(file.errors(), "") << name << " " << version;
            const ImportResult again = importFile(folder, "out.dxf", keepOptions(version, lineTypes));
            ASSERT_EQ(again.stat, 0) << name;
            expectComesBack(before, version,
                            {file.protocol.find("Füllschraffurkontur") != std::string::npos,
                             again.hasMessage("Texthöhe zu klein")},
                            name);
        }
    });
    if (!found) GTEST_SKIP() << NO_CORPUS;
    EXPECT_GT(seen, 0);
}

TEST_F(Export, RealDrawingsAreValidWithBlocks) {
    std::size_t seen = 0;
    const bool found = forEachRealDrawing([&](const TempDir& folder, const std::string& name) {
        ImportOptions options = {};
        options.config = "#FLAGS-START\nREAD_LAYER=ATTR\n#FLAGS-END\n#EOF\n";
        if (importFile(folder, "in.dxf", options).stat != 0) return; // some are damaged on purpose
        const std::string& version = VERSIONS[seen++ % VERSIONS.size()];
        const Exported file =
            exportTo(folder, exportConfig(version, "LAYER_ELEM=ATTR\nWRITE_BLOCKS=YES\nWRITE_ATTR=1\n"));
        EXPECT_EQ(file.stat, 0) << name << " " << version;
        EXPECT_EQ(file.errors(), "") << name << " " << version;
    });
    if (!found) GTEST_SKIP() << NO_CORPUS;
    EXPECT_GT(seen, 0U);
}

} // namespace
