// Dimensions on their way out, and back.
#include "dimension_text.h"
#include "round_trip.h"

#include <algorithm>
#include <cmath>

namespace {

/// What of a dimension must come back.
struct ShownDimension {
    int kind, place, mode;
    std::vector<double> values;
};

std::map<std::string, ShownDimension> dimensionsByText() {
    std::map<std::string, ShownDimension> found;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Dimension& d : pattern.dimensions) {
            std::string text;
            for (const int row : {d.textRow, d.tolRow})
                if (row >= 0)
                    for (const std::string& line : pattern.texts[static_cast<std::size_t>(row)].lines)
                        text += "|" + line;
            ShownDimension shown{d.kind, d.place, d.mode, {d.textPos.x, d.textPos.y}};
            for (const RPT3& p : d.points) shown.values.insert(shown.values.end(), {p.x, p.y, p.z});
            for (const RPT& p : d.refs) shown.values.insert(shown.values.end(), {p.x, p.y});
            shown.values.insert(shown.values.end(),
                                {static_cast<double>(d.arrow.kind[0]), d.arrow.length[0], d.arrow.width[0],
                                 d.txt.height, d.tol.height, static_cast<double>(d.txt.decimals)});
            // The two ends of a diameter change places: only how far from the centre things stand is kept.
            if (d.kind == OV_DIM_DIAMETER) {
                const RPT centre = d.refs[2];
                const auto distance = [&](const auto& p) {
                    return std::hypot(p.x - centre.x, p.y - centre.y);
                };
                shown.values = {distance(d.textPos), d.arrow.length[0], d.arrow.width[0], d.txt.height};
                for (const RPT3& p : d.points) shown.values.insert(shown.values.end(), {distance(p), p.z});
                for (const RPT& p : d.refs) shown.values.push_back(distance(p));
                std::sort(shown.values.begin(), shown.values.end());
            }
            found[text] = shown;
        }
    return found;
}

std::string allKinds() {
    DxfText file = dxf();
    file.header("AC1015").layer("DIM", 3);
    int number = 0;
    const auto add = [&](const DimEntity& dimension) {
        addDimension(file, "*D" + std::to_string(number), dimension);
    };
    const auto next = [&](DimShape shape = {}) {
        shape.text = std::to_string(++number) + ".25";
        return shape;
    };
    for (const DimArrow arrow : {DimArrow::None, DimArrow::Filled, DimArrow::Tick, DimArrow::Dot})
        for (const double degrees : {0.0, 90.0, 30.0, 300.0}) {
            DimShape shape;
            shape.arrow = arrow, shape.degrees = degrees;
            shape.hasGap = arrow == DimArrow::Filled, shape.isOutside = arrow == DimArrow::Tick;
            shape.hasExtensions = degrees != 30;
            add(linearDimension(next(shape), 500.0 * number, 77.0 * number));
        }
    for (const double x : {0.0, 40.0, 80.0}) add(linearDimension(next(), x, -900)); // a chain
    DimShape gap, outside, limits;
    gap.hasGap = outside.isOutside = true;
    limits.tolerances = {"+0.1", "-0.2"};
    for (const DimShape& shape : {DimShape(), gap}) {
        add(angularDimension(next(shape)));
        add(diameterDimension(next(shape)));
    }
    for (const DimShape& shape : {DimShape(), outside}) add(radiusDimension(next(shape)));
    add(linearDimension(next(limits), 0, -1900));
    ++number;
    add(ordinateDimension(true));
    return file.text();
}

} // namespace

TEST_F(Export, DimensionsComeBackAsWhatTheyWere) {
    for (const std::string& version : VERSIONS) {
        if (version == "EASY") continue;
        for (const char* lines : {"TOL=1\n", "TOL=1\nDIM_IN_BLOCK=1\n"}) {
            const TempDir folder;
            folder.write("in.dxf", allKinds());
            ASSERT_EQ(importFile(folder, "in.dxf", keepOptions(version)).stat, 0);
            const auto before = dimensionsByText();
            std::string texts;
            for (const auto& [text, shown] : before) texts += text + " ";
            ASSERT_EQ(before.size(), 27U) << texts;
            std::string config = keepConfig(version);
            config.insert(config.find("#FLAGS-END"), lines);
            const Exported file = exportTo(folder, config);
            EXPECT_EQ(file.errors(), "") << version;
            EXPECT_EQ(file.count(0, "DIMENSION"), before.size());
            ASSERT_EQ(importFile(folder, "out.dxf", keepOptions(version)).stat, 0);
            auto after = dimensionsByText();
            for (const auto& [text, shown] : before) {
                SCOPED_TRACE(version + " " + lines + text);
                ASSERT_TRUE(after.count(text));
                const ShownDimension& back = after[text];
                EXPECT_EQ(shown.kind, back.kind);
                EXPECT_EQ(shown.place, back.place);
                EXPECT_EQ(shown.mode, back.mode);
                ASSERT_EQ(shown.values.size(), back.values.size());
                for (std::size_t i = 0; i < shown.values.size(); ++i)
                    EXPECT_NEAR(shown.values[i], back.values[i], 2e-5) << i;
                if (HasFailure()) return;
            }
        }
    }
}

TEST_F(Export, BlocksAndDimensionsHaveOneNumberAndFreeOnesTheirOwn) {
    const TempDir folder;
    DxfText source = dxf();
    source.header("AC1015").layer("DIM", 3);
    for (int i = 0; i < 4; ++i) {
        DimShape shape;
        shape.text = std::to_string(i + 5);
        addDimension(source, "*D" + std::to_string(i), linearDimension(shape, 200.0 * i, 10.0 * i), "DIM",
                     i % 2 == 0 ? "DIMENSION" : "ARC_DIMENSION"); // the second stays lines
    }
    folder.write("in.dxf", source.text());
    importFile(folder, "in.dxf");
    const Exported file = exportTo(folder, exportConfig("ACAD24"));
    for (const char* name : {"*D0", "*D1"}) {
        EXPECT_EQ(valueOf(file.first(0, "DIMENSION", name[2] - '0'), 2), name);
        EXPECT_EQ(file.count(2, name), 3U) << name; // BLOCK_RECORD, BLOCK, DIMENSION
    }
    for (const char* name : {"FREE_DIM_0", "FREE_DIM_1"}) EXPECT_EQ(file.count(2, name), 3U) << name;
    EXPECT_EQ(file.count(0, "DIMENSION"), 2U);
    EXPECT_EQ(file.count(0, "INSERT"), 2U);
    EXPECT_EQ(file.count(2, "TORVA-DIM1"), 1U); // equal dimensions share their style
    EXPECT_EQ(file.count(3, "TORVA-DIM1"), 2U);
    EXPECT_EQ(file.count(2, "TORVA-DIM2"), 0U);

    const Exported all = exportTo(folder, exportConfig("ACAD24", "WRITE_ASO_DIM=0\n"));
    EXPECT_EQ(all.count(0, "DIMENSION"), 0U);
    EXPECT_EQ(all.count(0, "INSERT"), 4U);
    const Exported easy = exportTo(folder, exportConfig("EASY"));
    EXPECT_EQ(easy.count(0, "DIMENSION") + easy.count(0, "BLOCK"), 0U);
    EXPECT_EQ(easy.count(0, "TEXT"), 4U);
}

TEST_F(Export, AStyleTellsTextToleranceAndArrow) {
    struct Row {
        std::string text;
        std::vector<std::string> tolerances;
        DimArrow arrow;
        std::string values; ///< of DIMPOST, DIMTP, DIMTM, DIMTOL, DIMASZ, DIMTSZ, DIMZIN, DIMDSEP
    };
    const Row rows[] = {
        {"1,25", {}, DimArrow::Filled, " 0 0 0 2.5 0 4 44"},
        {"R0.5 mm", {}, DimArrow::Tick, "R<> mm 0 0 0 0 1 0 46"},
        {"7 x", {"+0.1", "-0.2"}, DimArrow::Filled, "x 0.1 -0.2 1 2.5 0 12 46"},
        {"7", {"-0.2"}, DimArrow::None, " 0 0.2 1 0 0 12 46"},
        {"3.0", {"\\U+00B10.5"}, DimArrow::None, " 0.5 0.5 1 0 0 4 46"},
    };
    for (const Row& row : rows) {
        DimShape shape;
        shape.text = row.text, shape.tolerances = row.tolerances, shape.arrow = row.arrow;
        const TempDir folder;
        DxfText source = dxf();
        addDimension(source.header("AC1015"), "*D0", linearDimension(shape));
        folder.write("in.dxf", source.text());
        importFile(folder, "in.dxf");
        const Exported file = exportTo(folder, exportConfig("ACAD24", "TOL=1\n"));
        const DxfGroups style = file.first(0, "DIMSTYLE", 1);
        std::string values = valueOf(style, 3);
        for (const int code : {47, 48, 71, 41, 142, 78, 278}) {
            char number[40];
            std::snprintf(number, sizeof number, " %g", std::atof(valueOf(style, code).c_str()));
            values += number;
        }
        EXPECT_EQ(values, row.values) << row.text;
        EXPECT_EQ(valueOf(style, 2), "TORVA-DIM1");
        EXPECT_EQ(valueOf(exportTo(folder, exportConfig("ACAD12")).first(0, "DIMSTYLE", 1), 278), "none");
        // Without TOL it is a text of its own.
        const Exported beside = exportTo(folder, exportConfig("ACAD24"));
        EXPECT_EQ(valueOf(beside.first(0, "DIMSTYLE", 1), 71), "0");
    }
}

TEST_F(Export, AMarkOfSurfaceFinishEndsTheValue) {
    for (const char* id : {"dimx", "other"}) {
        DimShape shape;
        shape.text = "12.5", shape.tolerances = {"7", "8"};
        const TempDir folder;
        DxfText source = dxf();
        addDimension(source.header("AC1015"), "*D0", linearDimension(shape));
        folder.write("in.dxf", source.text());
        importFile(folder, "in.dxf");
        for (host::Pattern& pattern : host::openDrawing().patterns) pattern.attributes.emplace_back("id", id);
        const Exported file =
            exportTo(folder, exportConfig("ACAD24", "TOL=1\n", "#CHAR-CAD-TO-DXF\n1\n^7|xy\n"));
        const bool isMark = std::string(id) == "dimx";
        EXPECT_EQ(file.count(1, isMark ? "12.5xy" : "12.5"), 1U) << id;
        EXPECT_EQ(file.count(0, "TEXT"), isMark ? 1U : 3U);
        EXPECT_EQ(valueOf(file.first(0, "DIMSTYLE", 1), 71), isMark ? "0" : "1");
    }
}
