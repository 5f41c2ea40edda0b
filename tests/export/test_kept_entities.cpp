// What nobody touches leaves as it came: entities, INSERTs with their blocks and attributes.
#include "exported.h"

#include "drawing/move.h"
#include "drawing/origin_mark.h"
#include "origin.h"

#include <functional>

namespace {

constexpr char keeping[] =
    "READ_LAYER=ATTR\nLAYER_ELEM=ATTR\nLAYERFLAG_TEXT=0\nINSERT_ATTR=1\nINSERT_ARRAYS=1\n"
    "PEN_LOOKS=1\nKEEP_ENTITIES=1\nKEEP_BLOCKS=1\n";

DxfGroups operator+(DxfGroups a, const DxfGroups& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

DxfGroups point(int code, double x, double y, double z = 0) {
    return {{code, std::to_string(x)}, {code + 10, std::to_string(y)}, {code + 20, std::to_string(z)}};
}

/// Imports, lets `change` do something to the drawing, and exports.
Exported convert(const DxfText& text, const std::string& version = "ACAD32",
                 const std::function<void()>& change = {}, const std::string& flags = keeping) {
    const Installation installation;
    ImportOptions options;
    options.config = "#FLAGS-START\n" + flags + "#FLAGS-END\n#EOF\n";
    options.numbers["&DxfInsbase"] = 1;
    importText(text.text(), options);
    if (change) change();
    return exportDrawing(exportConfig(version, flags));
}

DxfText oneLayer() {
    return dxf().header("AC1015").layer("A", 3).record("STYLE", {{2, "STANDARD"}, {70, "0"}, {3, "txt"}});
}

const DxfGroups onA = {{100, "AcDbEntity"}, {8, "A"}};

struct Kind {
    const char* name;
    DxfGroups groups;
};

const Kind KINDS[] = {
    {"SPLINE",
     DxfGroups{{100, "AcDbSpline"}, {70, "8"}, {71, "3"}, {72, "8"}, {73, "4"}, {74, "0"}} +
         DxfGroups{{40, "0"}, {40, "0"}, {40, "0"}, {40, "0"}, {40, "1"}, {40, "1"}, {40, "1"}, {40, "1"}} +
         point(10, 0, 0) + point(10, 1, 4) + point(10, 5, 4) + point(10, 6, 0)},
    {"ELLIPSE", DxfGroups{{100, "AcDbEllipse"}} + point(10, 3, 3) + point(11, 5, 1) +
                    DxfGroups{{40, "0.4"}, {41, "0.0"}, {42, "4.0"}}},
    {"LWPOLYLINE",
     {{100, "AcDbPolyline"},
      {90, "3"},
      {70, "1"},
      {10, "0"},
      {20, "0"},
      {42, "0.5"},
      {10, "4"},
      {20, "0"},
      {10, "4"},
      {20, "3"}}},
    {"POINT", DxfGroups{{100, "AcDbPoint"}} + point(10, 7, 8, 9)},
    {"LINE", DxfGroups{{6, "ByBlock"}, {48, "2.5"}, {370, "35"}, {100, "AcDbLine"}} + point(10, 1, 2, 3) +
                 point(11, 4, 5, 6) + DxfGroups{{1001, "OTHER"}, {1000, "told"}}},
    {"TEXT", DxfGroups{{100, "AcDbText"}} + point(10, 1, 1) +
                 DxfGroups{{40, "2.5"}, {1, "abc"}, {7, "STANDARD"}, {72, "4"}} + point(11, 2, 2) +
                 DxfGroups{{100, "AcDbText"}}},
};

/// The groups of an entity but those that are given anew.
std::string kept(const Exported& file, const std::string& name) {
    return shown(file.first(0, name));
}

TEST(KeptEntities, LeaveWithAllTheirGroups) {
    for (const Kind& kind : KINDS) {
        const Exported file = convert(oneLayer().entity(kind.name, DxfGroups{{5, "2A"}} + onA + kind.groups));
        EXPECT_EQ(kept(file, kind.name), shown(DxfGroups{{0, kind.name}} + onA + kind.groups));
        EXPECT_EQ(file.errors(), "") << kind.name;
        const Exported plain = convert(oneLayer().entity(kind.name, onA + kind.groups), "ACAD32", {},
                                       "READ_LAYER=ATTR\nLAYER_ELEM=ATTR\n");
        EXPECT_NE(kept(plain, kind.name), shown(DxfGroups{{0, kind.name}} + onA + kind.groups))
            << "without keywords";
    }
}

TEST(KeptEntities, ChangedOnesLeaveAsWhatTheHostHolds) {
    const DxfText text =
        oneLayer().entity("ELLIPSE", onA + KINDS[1].groups).entity("LINE", onA + KINDS[4].groups);
    const Exported moved = convert(text, "ACAD32", [] { host::moveModel(host::openDrawing(), 10, 0); });
    EXPECT_EQ(moved.count(0, "ELLIPSE"), 0U);
    EXPECT_EQ(valueOf(moved.first(0, "LINE"), 1000), "none");
    EXPECT_EQ(valueOf(moved.first(0, "LINE"), 30), "none") << "elements are flat";
    const Exported recoloured = convert(text, "ACAD32", [] {
        for (host::Pattern& pattern : host::openDrawing().patterns)
            for (host::Element& e : pattern.elements)
                if (e.type == host::ElementType::Spline) e.pen = 5;
    });
    EXPECT_EQ(recoloured.count(0, "ELLIPSE"), 0U);
    EXPECT_EQ(valueOf(recoloured.first(0, "LINE"), 1000), "told") << "nobody touched this one";
    const Exported layered = convert(text, "ACAD32", [] {
        for (host::Pattern& pattern : host::openDrawing().patterns) pattern.ids.layer = "NEW";
    });
    EXPECT_EQ(valueOf(layered.first(0, "ELLIPSE"), 8), "NEW");
}

TEST(KeptEntities, FitTheTarget) {
    DxfText text = oneLayer();
    for (const Kind& kind : KINDS) text.entity(kind.name, onA + kind.groups);
    const Exported old = convert(text, "ACAD12");
    EXPECT_EQ(old.count(0, "SPLINE") + old.count(0, "ELLIPSE") + old.count(0, "LWPOLYLINE"), 0U);
    EXPECT_EQ(old.count(0, "POINT"), 1U);
    EXPECT_EQ(old.count(100, "AcDbLine"), 0U);
    EXPECT_EQ(valueOf(old.first(0, "LINE"), 370), "none");
    EXPECT_EQ(old.errors(), "");
    const DxfGroups arc = point(10, 0, 0) + DxfGroups{{40, "5"}, {50, "0"}, {51, "90"}};
    const Exported newer =
        convert(dxf().header("AC1009").layer("A", 3).entity("ARC", DxfGroups{{8, "A"}} + arc));
    EXPECT_EQ(kept(newer, "ARC"),
              shown(DxfGroups{{0, "ARC"}} + onA + DxfGroups{{100, "AcDbCircle"}} + point(10, 0, 0) +
                    DxfGroups{{40, "5"}, {100, "AcDbArc"}, {50, "0"}, {51, "90"}}));
    EXPECT_EQ(newer.errors(), "");
}

const DxfGroups lineOnZero = DxfGroups{{0, "LINE"}, {8, "0"}, {62, "0"}} + point(10, 0, 0) + point(11, 2, 0);

DxfGroups insertOf(const std::string& block, double x, const DxfGroups& more = {}) {
    return DxfGroups{{8, "A"}, {2, block}} + point(10, x, 0) + more;
}

TEST(KeptInserts, BlocksLeaveOnce) {
    DxfText text = dxf().header("AC1009").layer("A", 3).block("IN", lineOnZero);
    text.block("OUT", lineOnZero + DxfGroups{{0, "INSERT"}, {8, "0"}, {2, "IN"}} + point(10, 1, 1),
               point(10, 1, 2));
    for (int i = 0; i < 5; ++i)
        text.entity("INSERT", insertOf("OUT", i * 10, {{41, "2"}, {42, "-1"}, {50, "30"}}));
    text.entity("INSERT", insertOf("IN", 100, {{70, "3"}, {44, "5"}}));
    for (const char* version : {"ACAD12", "ACAD15", "ACAD32"}) {
        const Exported file = convert(text, version);
        EXPECT_EQ(file.count(0, "INSERT"), 7U) << "six, and the one in OUT";
        EXPECT_EQ(file.count(2, "OUT"), 6U + (file.count(0, "BLOCK_RECORD") ? 1U : 0U)) << version;
        EXPECT_EQ(file.count(0, "LINE"), 2U) << "one in each block";
        EXPECT_EQ(valueOf(file.first(0, "LINE"), 62), "0") << "by block";
        EXPECT_EQ(file.errors(), "") << version;
        if (file.count(0, "BLOCK_RECORD") == 0) {
            EXPECT_EQ(std::stod(valueOf(file.first(2, "OUT"), 20)), 2) << "base point";
        }
    }
    const Exported touched = convert(text, "ACAD32", [] {
        for (host::Pattern& pattern : host::openDrawing().patterns)
            if (!pattern.placed.empty()) {
                pattern.elements[1].x += 1;
                return;
            }
    });
    EXPECT_EQ(touched.count(0, "INSERT"), 6U) << "the touched one leaves as lines";
    EXPECT_EQ(touched.count(0, "LINE"), 4U);
}

TEST(KeptInserts, AttributesHaveTheValuesOfTheHost) {
    const DxfGroups definition = DxfGroups{{0, "ATTDEF"}, {8, "0"}} + point(10, 0, 0) +
                                 DxfGroups{{40, "1"}, {1, "usual"}, {3, "Prompt"}, {2, "T"}, {70, "0"}};
    DxfText text = dxf().header("AC1009").layer("A", 3).block("B", lineOnZero + definition);
    for (const char* value : {"one", "two"})
        text.entity("INSERT", insertOf("B", 5, {{66, "1"}}))
            .raw(DxfGroups{{0, "ATTRIB"}, {8, "A"}} + point(10, 5, 0) +
                 DxfGroups{{40, "1"}, {1, value}, {2, "T"}, {70, "0"}, {0, "SEQEND"}, {8, "A"}});
    const Exported file = convert(text, "ACAD15");
    EXPECT_EQ(file.count(0, "ATTRIB"), 2U);
    EXPECT_EQ(file.count(0, "ATTDEF"), 1U);
    EXPECT_EQ(valueOf(file.first(0, "ATTDEF"), 3), "Prompt");
    EXPECT_EQ(valueOf(file.first(0, "ATTRIB"), 1) + valueOf(file.first(0, "ATTRIB", 1), 1), "onetwo");
    EXPECT_EQ(file.errors(), "");
    const Exported edited = convert(text, "ACAD15", [] {
        for (host::Pattern& pattern : host::openDrawing().patterns)
            for (auto& [name, value] : pattern.attributes)
                if (value == "two") value = "three";
    });
    EXPECT_EQ(valueOf(edited.first(0, "ATTRIB", 1), 1), "three");
}

} // namespace
