// Equal patterns at different places as one block and an INSERT each.
#include "exported.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

const std::string COPIES = "LAYER_ELEM=ATTR\nWRITE_BLOCKS=YES\nWRITE_ATTR=1\n";

/// What an INSERT says: place, scales, rotation in degrees.
struct Insert {
    double x, y, sx, sy, rotation;
};

host::Placement placementOf(const Insert& insert) {
    const double c = std::cos(insert.rotation / 57.29577951308232);
    const double s = std::sin(insert.rotation / 57.29577951308232);
    return {insert.sx * c, insert.sx * s, -insert.sy * s, insert.sy * c, insert.x, insert.y};
}

/// A pattern whose own geometry is `local`, where a placement puts it.
host::Pattern& addPlaced(const std::vector<host::Element>& local, const host::Placement& p) {
    std::vector<host::Element> placed = local;
    const auto put = [&p](double& x, double& y) {
        const double localX = x;
        x = localX * p.xx + y * p.yx + p.tx;
        y = localX * p.xy + y * p.yy + p.ty;
    };
    for (host::Element& e : placed) {
        put(e.x, e.y);
        put(e.cx, e.cy);
        if (p.xx * p.yy - p.xy * p.yx < 0) e.ccw = !e.ccw;
    }
    host::Pattern& pattern = addPattern(placed, "chair");
    pattern.relation.placement = p;
    return pattern;
}

const std::vector<host::Element> LINES{moveTo(0, 0), drawTo(2, 0), drawTo(2, 1.1), drawTo(0.7, 1)};

class BlockCopies : public Export {
protected:
    void SetUp() override {
        Export::SetUp();
        host::session().numbers["&DxfBlockCopies"] = 1;
    }
};

/// Ends of the lines of the open drawing, rounded, in any order.
std::vector<std::array<long, 2>> endsOfLines() {
    std::vector<std::array<long, 2>> ends;
    for (const host::Pattern& pattern : host::openDrawing().patterns)
        for (const host::Element& e : pattern.elements)
            if (e.type == host::ElementType::Draw)
                ends.push_back({std::lround(e.x * 1e4), std::lround(e.y * 1e4)});
    std::sort(ends.begin(), ends.end());
    return ends;
}

TEST_F(BlockCopies, AnInsertHasPlaceRotationMirrorAndBothScales) {
    const std::vector<Insert> inserts{{0, 0, 1, 1, 0},      {50, -20, 1, 1, 0},    {3, 4, 1, 1, 33.3},
                                      {-7, 0, 2.5, 2.5, 0}, {0, 9, 1, -1, 0},      {11, 12, 3, -3, 120},
                                      {1e5, 2e5, 2, 5, 45}, {5, 5, 0.5, -4, -160}, {0, 0, -1, 1, 10}};
    for (const Insert& insert : inserts) addPlaced(LINES, placementOf(insert));
    const std::vector<std::array<long, 2>> before = endsOfLines();
    const TempDir folder;
    const Exported file = exportTo(folder, exportConfig("ACAD24", COPIES));
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(file.count(0, "LINE"), 3u) << "one block";
    ASSERT_EQ(file.count(0, "INSERT"), inserts.size());
    for (std::size_t i = 0; i + 1 < inserts.size(); ++i) {
        const DxfGroups groups = file.first(0, "INSERT", i);
        const auto value = [&](int code) { return std::atof(valueOf(groups, code).c_str()); };
        EXPECT_NEAR(value(10), inserts[i].x, 1e-6) << i;
        EXPECT_NEAR(value(20), inserts[i].y, 1e-6) << i;
        EXPECT_NEAR(value(41), inserts[i].sx, 1e-6) << i;
        EXPECT_NEAR(value(42), inserts[i].sy, 1e-6) << i;
        EXPECT_NEAR(value(50), inserts[i].rotation, 1e-6) << i;
    }
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    ASSERT_EQ(importFile(folder, "out.dxf", options).stat, 0);
    const std::vector<std::array<long, 2>> after = endsOfLines();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_NEAR(static_cast<double>(after[i][0]), static_cast<double>(before[i][0]), 1) << i;
        EXPECT_NEAR(static_cast<double>(after[i][1]), static_cast<double>(before[i][1]), 1) << i;
    }
}

TEST_F(BlockCopies, WhatABlockCantHoldStaysWhereItIs) {
    std::vector<host::Element> arc{moveTo(0, 0), step(host::ElementType::Arc, 2, 0, 1, 0)};
    addPlaced(arc, placementOf({0, 0, 1, 1, 0}));
    addPlaced(arc, placementOf({9, 9, 1, -1, 90}));               // mirrored: an arc all the same
    addPlaced({moveTo(0, 0), drawTo(2, 1)}, {1, 0, 0.5, 1, 0, 0}) // sheared
        .ids.name = "sheared";
    // Its arc can't be drawn by an uneven INSERT.
    host::Pattern& uneven = addPattern({moveTo(3, 3), step(host::ElementType::Arc, 5, 3, 4, 3)}, "uneven");
    uneven.relation.placement = placementOf({3, 3, 1, 2, 0});
    const Exported file = exportDrawing(exportConfig("ACAD24", COPIES));
    EXPECT_EQ(file.stat, 0);
    EXPECT_EQ(file.errors(), "");
    EXPECT_EQ(file.count(2, "chair"), 4u) << "BLOCK, BLOCK_RECORD, two INSERTs";
    for (const std::size_t i : {2, 3}) {
        const DxfGroups insert = file.first(0, "INSERT", i);
        EXPECT_EQ(shown(insert).substr(shown(insert).find("10=")),
                  "10=0.000000 20=0.000000 30=0.000000 41=1.000000 42=1.000000 43=1.000000 50=0.000000");
    }
}

TEST_F(BlockCopies, LastDigitsAndValuesOfAttributesDontDivideABlock) {
    for (const double noise : {0.0, 3e-14, -3e-14}) {
        host::Pattern& pattern =
            addPattern({moveTo(noise, 0), drawTo(2 + noise, -noise), drawTo(2, 1 - noise)}, "chair");
        pattern.attributes = {{"seat", std::to_string(pattern.number)}};
    }
    for (const char* digits : {"NO_KOMMA=6\n", "NO_KOMMA=15\n"}) {
        const Exported file = exportDrawing(exportConfig("ACAD24", COPIES + digits));
        EXPECT_EQ(file.errors(), "");
        EXPECT_EQ(file.count(0, "ATTDEF"), 1u) << digits;
        ASSERT_EQ(file.count(0, "ATTRIB"), 3u) << digits;
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_EQ(valueOf(file.first(0, "ATTRIB", i), 1), std::to_string(i + 1)) << "each its own value";
    }
    addPattern({moveTo(0, 0), drawTo(2, 0), drawTo(2, 1.001)}, "other");
    EXPECT_EQ(exportDrawing(exportConfig("ACAD24", COPIES)).count(0, "LINE"), 4u);
}

} // namespace
