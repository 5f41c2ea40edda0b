// What comes back from an export: small drawings made at random, and real files.
#include "exported.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <random>

namespace {

TEST(Templates, AreThoseOfTheirGenerator) {
    const std::string script = std::string(TORVA_SOURCE_DIR) + "/int/dxf/templates/make_templates.py";
    EXPECT_EQ(std::system(("python3 '" + script + "' --check").c_str()), 0);
}

namespace fs = std::filesystem;
using host::Element;
using host::ElementType;

/// A stroke of a drawing in figures that don't depend on where a chain begins.
struct Stroke {
    ElementType type;
    double x0, y0, x1, y1, cx, cy;
    int pen;
    bool ccw;
};

/// An import draws a circle as an arc that ends where it began.
bool isWholeTurn(const Stroke& s) {
    return s.type == ElementType::Circle || (s.type == ElementType::Arc && s.x0 == s.x1 && s.y0 == s.y1);
}

/// The strokes of all patterns in order; arcs run counter-clockwise, circles begin on their right.
std::vector<Stroke> strokes() {
    std::vector<Stroke> all;
    for (const host::Pattern& pattern : host::openDrawing().patterns) {
        if (pattern.number == 0 || pattern.scratch) continue;
        double x = 0, y = 0;
        for (const Element& e : pattern.elements) {
            Stroke s{e.type, x, y, e.x, e.y, e.cx, e.cy, e.pen, e.ccw != 0};
            x = e.x, y = e.y;
            if (isWholeTurn(s)) {
                s.type = ElementType::Circle;
                const double radius = std::hypot(e.x - e.cx, e.y - e.cy);
                s.x0 = s.x1 = e.cx + radius, s.y0 = s.y1 = e.cy;
                s.ccw = true;
            } else if (e.type == ElementType::Arc && !e.ccw) {
                std::swap(s.x0, s.x1);
                std::swap(s.y0, s.y1);
                s.ccw = true;
            } else if (e.type == ElementType::Draw) {
                s.cx = s.cy = 0;
                s.ccw = true;
            }
            if (e.type != ElementType::Move) all.push_back(s);
        }
    }
    return all;
}

void expectEqual(const std::vector<Stroke>& before, const std::vector<Stroke>& after,
                 const std::string& what) {
    constexpr double tolerance = 2e-5; // six decimals, radius and angles multiply them
    ASSERT_EQ(before.size(), after.size()) << what;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Stroke& a = before[i];
        const Stroke& b = after[i];
        ASSERT_EQ(a.type, b.type) << what << " " << i << ": " << a.x0 << " " << a.y0 << " " << a.x1 << " "
                                  << a.y1 << " about " << a.cx << " " << a.cy << ", came back " << b.x0 << " "
                                  << b.y0 << " " << b.x1 << " " << b.y1 << " about " << b.cx << " " << b.cy;
        const double off = std::max({std::abs(a.x0 - b.x0), std::abs(a.y0 - b.y0), std::abs(a.x1 - b.x1),
                                     std::abs(a.y1 - b.y1), std::abs(a.cx - b.cx), std::abs(a.cy - b.cy)});
        ASSERT_LT(off, tolerance) << what << " " << i;
        ASSERT_EQ(a.pen, b.pen) << what << " " << i;
    }
}

std::string penTables() {
    std::string both = "\n#PEN-CAD-TO-DXF\n4\n", back = "\n#PEN-DXF-TO-CAD\n4\n";
    for (int pen = 1; pen <= 4; ++pen) {
        both += std::to_string(pen) + "|" + std::to_string(pen) + "\n";
        back += std::to_string(pen) + "|" + std::to_string(pen) + "\n";
    }
    return both + back + "\n";
}

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
                const std::vector<Stroke> before = strokes();
                TempDir folder;
                const Exported file = exportTo(folder, exportConfig(version, poly, penTables()));
                ASSERT_EQ(file.stat, 0);
                ASSERT_EQ(file.errors(), "") << version;
                ImportOptions options;
                options.numbers["&DxfInsbase"] = 1;
                options.config = "#FLAGS-START\n#FLAGS-END\n" + penTables() + "#EOF\n";
                ASSERT_EQ(importFile(folder, "out.dxf", options).stat, 0) << version;
                expectEqual(before, strokes(), version + " " + poly + std::to_string(round));
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST_F(Export, RealDrawingsLeaveAsValidFiles) {
    const char* corpus = std::getenv("TORVA_CORPUS");
    if (!corpus) GTEST_SKIP() << "TORVA_CORPUS names no directory with real drawings";
    int seen = 0;
    bool blocks = false;
    for (const auto& entry : fs::recursive_directory_iterator(corpus)) {
        if (entry.path().extension() != ".dxf") continue;
        TempDir folder;
        fs::copy_file(entry.path(), folder.file("in.dxf"));
        ImportOptions options = {};
        options.config = "#FLAGS-START\nREAD_LAYER=ATTR\n#FLAGS-END\n#EOF\n";
        if (importFile(folder, "in.dxf", options).stat != 0) continue; // some are damaged on purpose
        ++seen;
        for (const char* version : {"ACAD32", "ACAD27", "ACAD24", "ACAD21", "ACAD18", "ACAD15", "ACAD14",
                                    "ACAD13", "ACAD12", "ACAD11", "EASY"}) {
            blocks = !blocks; // an odd number of versions: each has blocks in every other file
            const std::string lines = blocks ? "WRITE_BLOCKS=YES\nWRITE_ATTR=1\n" : "WRITE_POLY=1\n";
            const Exported file = exportTo(folder, exportConfig(version, "LAYER_ELEM=ATTR\n" + lines));
            EXPECT_EQ(file.stat, 0) << entry.path() << " " << version;
            EXPECT_EQ(file.errors(), "") << entry.path() << " " << version;
        }
    }
    EXPECT_GT(seen, 0);
}

} // namespace
