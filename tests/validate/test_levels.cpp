// What is milder in some versions or kinds, and what is fine: a false alarm costs as much as a miss.

#include "valid_file.h"
#include "validate.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <sstream>

namespace {

using validate::Level;
using F = DxfFile;

const DxfGroups kLine = {{0, "LINE"}, {5, "1F0"},        {330, "3A"}, {100, "AcDbEntity"},
                         {8, "0"},    {100, "AcDbLine"}, {10, "0.0"}, {20, "0.0"},
                         {30, "0.0"}, {11, "1.0"},       {21, "1.0"}, {31, "0.0"}};

std::string printed(const validate::Report& report) {
    std::ostringstream out;
    printText(report, out);
    return out.str();
}

struct Case {
    int version;
    int rule;    ///< 0: no finding above a note
    Level level; ///< the gravest of the rule's findings; no other rule may have one above a note
    std::function<void(DxfFile&)> make;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.rule << " in AC" << c.version;
}

// clang-format off
const Case kMild[] = {
    // The same fault in an old and a new version.
    {9, 302, Level::Warning, [](F& f) { f.set("CIRCLE", 5, "40"); }},
    {32, 302, Level::Error, [](F& f) { f.set("CIRCLE", 5, "40"); }},
    {9, 305, Level::Warning, [](F& f) { f.set("CIRCLE", 5, "FFFF"); }},
    {32, 305, Level::Error, [](F& f) { f.set("CIRCLE", 5, "FFFF"); }},
    {9, 402, Level::Warning, [](F& f) { f.set("LINE", 6, "DOTS", 2); }},
    {12, 402, Level::Error, [](F& f) { f.set("LINE", 6, "DOTS", 2); }},
    {9, 406, Level::Warning, [](F& f) { f.set("LINE", 1001, "MYAPP", 2); }},
    {14, 406, Level::Error, [](F& f) { f.set("LINE", 1001, "MYAPP", 2); }},
    {9, 405, Level::Error, [](F& f) { f.set("INSERT", 2, "WINDOW", 2); }},
    {9, 505, Level::Warning, [](F& f) { f.set("DIMENSION", 2, "*D9"); }},
    {12, 505, Level::Error, [](F& f) { f.set("DIMENSION", 2, "*D9"); }},
    {9, 504, Level::Error, [](F& f) { f.set("INSERT", 2, "*T1"); }},
    {14, 307, Level::Warning, [](F& f) { f.putBehind("CIRCLE", 5, {{330, "1FF"}}); }},
    {15, 307, Level::Error, [](F& f) { f.set("CIRCLE", 330, "1FF"); }},
    {15, 307, Level::Warning, [](F& f) { f.set("CIRCLE", 330, "0"); }},
    {14, 308, Level::Warning, [](F& f) { f.putBehind("CIRCLE", 5, {{330, "35"}}); }},
    {15, 308, Level::Warning, [](F& f) { f.set("CIRCLE", 330, "3C"); }},
    {15, 308, Level::Warning, [](F& f) { f.set("LINE", 330, "3D"); }},
    {15, 308, Level::Error, [](F& f) { f.set("LAYER", 330, "40"); }},
    {15, 308, Level::Error, [](F& f) { f.set("BLOCK", 330, "3D", 3); f.set("LINE", 330, "3D");
     f.set("ENDBLK", 330, "3D", 3); }},
    {14, 805, Level::Warning, [](F& f) { f.putBehind("MLINESTYLE", 5, {{330, "D"}}); }},
    {15, 805, Level::Error, [](F& f) { f.set("MLINESTYLE", 330, "D"); }},
    {14, 613, Level::Note, [](F& f) { f.cut("CLASS", 4); }},
    {15, 613, Level::Note, [](F& f) { f.cut("CLASS", 6); }},
    {15, 613, Level::Warning, [](F& f) { f.cut("CLASS", 4); }},
    {24, 613, Level::Error, [](F& f) { f.cut("CLASS", 8); }},
    {15, 613, Level::Error, [](F& f) { f.before("CIRCLE", {{0, "FOO"}, {5, "1F0"}, {330, "3A"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "Foo"}}); }},
    {15, 503, Level::Warning, [](F& f) { f.set("BLOCK_RECORD", 340, "0", 2); }},
    {15, 311, Level::Note, [](F& f) { f.putBehind("CIRCLE", 5, {{102, "{ACAD_REACTORS"}, {330, "1FF"}, {102,
     "}"}}); }},
    {15, 310, Level::Error, [](F& f) { f.putBehind("CIRCLE", 5, {{102, "{ACAD_XDICTIONARY"}, {360, "1FF"},
     {102, "}"}}); }},
    {15, 310, Level::Error, [](F& f) { f.set("LAYER", 390, "0"); }},
    {15, 310, Level::Error, [](F& f) { f.set("DICTIONARY", 350, "1FF", 3); }},
    {15, 312, Level::Error, [](F& f) { f.set("IMAGE", 340, "95"); }},
    {15, 208, Level::Note, [](F& f) { f.drop("CIRCLE", 30); }},
    {15, 208, Level::Warning, [](F& f) { f.drop("LINE", 1030, 2); }},
    {15, 209, Level::Warning, [](F& f) { f.set("POLYLINE", 71, "4"); }},
    {15, 206, Level::Warning, [](F& f) { f.putBehind("INSERT", 30, {{41, "0.0"}}, 2); }},
    {15, 206, Level::Warning, [](F& f) { f.set("XLINE", 11, "2.0"); }},
    {15, 206, Level::Error, [](F& f) { f.set("TEXT", 72, "9"); }},
    {15, 206, Level::Error, [](F& f) { f.putBehind("SPLINE", 74, {{41, "-1.0"}, {41, "1.0"}}); }},
    {15, 607, Level::Warning, [](F& f) { f.drop("CIRCLE", 8); }},
    {9, 904, Level::Note, [](F& f) { f.put("SECTION", {{9, "$EXTMIN"}, {10, "0.0"}, {20, "0.0"}}); }},
    {15, 904, Level::Warning, [](F& f) { f.put("SECTION", {{9, "$EXTMIN"}, {10, "0.0"}, {20, "0.0"}}); }},
    {15, 904, Level::Error, [](F& f) { f.put("SECTION", {{9, "$LTSCALE"}, {70, "1"}}); }},
    {21, 904, Level::Error, [](F& f) { f.put("SECTION", {{9, "$XCLIPFRAME"}, {280, "0"}}); }},
    {32, 904, Level::Error, [](F& f) { f.put("SECTION", {{9, "$ACADMAINTVER"}, {70, "4"}}); }},
    {27, 904, Level::Error, [](F& f) { f.put("SECTION", {{9, "$ACADMAINTVER"}, {90, "4"}}); }},
    {15, 617, Level::Note, [](F& f) { f.drop("TABLE", 71, 8); f.drop("TABLE", 340, 8); }},
    {14, 611, Level::Error, [](F& f) { f.put("DICTIONARY", {{3, "X"}, {350, "1F0"}}); f.before("MLINESTYLE",
     {{0, "ACDBPLACEHOLDER"}, {5, "1F0"}}); }},
    {12, 611, Level::Error, [](F& f) { f.before("CIRCLE", {{0, "LWPOLYLINE"}, {5, "1F0"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "AcDbPolyline"}, {90, "1"}, {70, "0"}, {10, "0.0"}, {20, "0.0"}}); }},
    // Encodings.
    {15, 701, Level::Error, [](F& f) { f.set("SECTION", 3, "ANSI_932"); f.set("TEXT", 1, "\x83 "); }},
    {9, 704, Level::Warning, [](F& f) { f.set("TEXT", 1, "gr\xC3\xBC\xC3\x9F"); }},
    {32, 702, Level::Error, [](F& f) { f.set("LTYPE", 3, "gr\xFC\xDF", 4); }},
    {15, 703, Level::Warning, [](F& f) { f.set("TEXT", 1, "\\M+1829"); }},
    // Ordered data.
    {24, 209, Level::Error, [](F& f) { f.set("HATCH", 78, "2"); }},
    {24, 209, Level::Error, [](F& f) { f.set("HATCH", 98, "0"); }},
    {24, 209, Level::Error, [](F& f) { f.set("HATCH", 96, "3"); }},
    {24, 209, Level::Error, [](F& f) { f.set("HATCH", 79, "3"); }},
    {24, 206, Level::Error, [](F& f) { f.set("HATCH", 92, "0"); f.drop("HATCH", 72); f.drop("HATCH", 73);
     f.putBehind("HATCH", 93, {{72, "9"}}); }},
    {24, 607, Level::Error, [](F& f) { f.set("HATCH", 2, "X"); for (int code : {78, 53, 43, 44, 45, 46, 79,
     49, 49}) f.drop("HATCH", code); }},
    {24, 218, Level::Warning, [](F& f) { f.set("HATCH", 70, "1"); }},
    {24, 218, Level::Warning, [](F& f) { f.drop("HATCH", 470); }},
    {24, 209, Level::Error, [](F& f) { f.set("MESH", 95, "2"); f.putBehind("MESH", 140, {{140, "0.0"}}); }},
    {15, 209, Level::Error, [](F& f) { f.set("MLINE", 74, "3"); }},
    {15, 219, Level::Error, [](F& f) { f.put("MTEXT", {{3, "late"}}); }},
    {18, 218, Level::Warning, [](F& f) { f.put("MTEXT", {{90, "1"}}); }},
    {15, 218, Level::Warning, [](F& f) { f.drop("LEADER", 340); }},
    {15, 226, Level::Error, [](F& f) { f.before("CIRCLE", {{0, "MULTILEADER"}, {5, "1F0"}, {330, "3A"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "AcDbMLeader"}, {301, "}"}, {340, "38"}}); f.before("CLASS", {{0,
     "CLASS"}, {1, "MULTILEADER"}, {2, "AcDbMLeader"}, {3, "x"}, {90, "0"}, {280, "0"}, {281, "1"}}); }},
    {15, 222, Level::Error, [](F& f) { f.put("LINE", {{1002, "}"}}, 2); }},
    {15, 222, Level::Error, [](F& f) { f.put("LINE", {{1002, "["}}, 2); }},
    {15, 225, Level::Error, [](F& f) { f.putBehind("CIRCLE", 8, {{102, "APP"}}); }},
    // Names.
    {15, 411, Level::Error, [](F& f) { f.before("ENDTAB", {{0, "VIEW"}, {5, "1F0"}, {330, "6"}, {100,
     "AcDbSymbolTableRecord"}, {100, "AcDbViewTableRecord"}, {2, ""}, {70, "0"}, {40, "1.0"}, {10, "0.0"},
     {20, "0.0"}, {11, "0.0"}, {21, "0.0"}, {31, "1.0"}, {41, "1.0"}}, 5); f.set("TABLE", 70, "1", 5); }},
    {15, 410, Level::Error, [](F& f) { f.set("LTYPE", 2, std::string(256, 'A'), 4); f.set("LINE", 6,
     std::string(256, 'A'), 2); }},
    {15, 408, Level::Error, [](F& f) { f.set("BLOCK", 2, "*D1", 3).set("BLOCK", 3, "*D1",
     3).set("BLOCK_RECORD", 2, "*D1", 3); f.set("BLOCK", 330, "3C", 4); f.set("INSERT", 2, "*D1",
     1).set("INSERT", 2, "*D1", 2); f.set("POINT", 330, "3C").set("ENDBLK", 330, "3C", 4); }},
    {15, 401, Level::Note, [](F& f) { f.set("CIRCLE", 8, "W\xC4NDE"); }},
    {12, 120, Level::Error, [](F& f) { f.cutNamed("TABLE", "VIEW", "ENDTAB"); }},
    // Roots and layouts.
    {15, 801, Level::Error, [](F& f) { f.set("DICTIONARY", 330, "40"); }},
    {15, 806, Level::Error, [](F& f) { f.set("DICTIONARY", 3, "Sheet", 4); }},
    {14, 807, Level::Error, [](F& f) { f.set("DICTIONARY", 350, "95", 4); }},
};

const Case kFine[] = {
    // Owners, which other programs leave out or set otherwise.
    {15, 0, Level::Note, [](F& f) { f.drop("CIRCLE", 330); f.drop("LAYER", 330); f.drop("TABLE", 330, 2); }},
    {15, 0, Level::Note, [](F& f) { f.before("POLYLINE", kLine); }},
    {14, 0, Level::Note, [](F& f) { f.putBehind("CIRCLE", 5, {{330, "3A"}}); }},
    {15, 0, Level::Note, [](F& f) { f.putBehind("LINE", 5, {{102, "{ACAD_REACTORS"}, {330, "40"}, {102, "}"},
     {102, "{ACAD_XDICTIONARY"}, {360, "D"}, {102, "}"}}); }},
    // Paper space.
    {15, 0, Level::Note, [](F& f) { f.set("CIRCLE", 330, "3B"); f.putBehind("CIRCLE", 8, {{67, "1"}}); }},
    {9, 0, Level::Note, [](F& f) { f.put("CIRCLE", {{67, "1"}}); }},
    // Handles: long, lower case; free ones (320) lead nowhere; null pointers.
    {15, 0, Level::Note, [](F& f) { f.set("CIRCLE", 5, "1ff"); }},
    {15, 0, Level::Note, [](F& f) { f.set("CIRCLE", 5, "ABCDEF0123456789"); f.set("SECTION", 5,
     "ABCDEF012345678A"); }},
    {27, 0, Level::Note, [](F& f) { f.put("LAYER", {{348, "0"}}); f.put("LINE", {{1005, "0"}}, 2); }},
    {32, 0, Level::Note, [](F& f) { f.before("DICTIONARY", {{0, "XRECORD"}, {5, "1F0"}, {330, "D"}, {100,
     "AcDbXrecord"}, {280, "1"}, {320, "1FFF"}, {102, "no brace"}, {1, "x"}, {90, "5"}, {100,
     "AcDbAnything"}, {10, "1.0"}, {20, "1.0"}, {30, "0.0"}}, 2); f.put("DICTIONARY", {{3, "X"}, {350,
     "1F0"}}, 2); }},
    // Names: case, escapes, parts of references, system names, shape files.
    {15, 0, Level::Note, [](F& f) { f.set("LINE", 6, "Dashed", 2); f.set("MTEXT", 7, "standard");
     f.set("INSERT", 2, "door", 2); }},
    {15, 0, Level::Note, [](F& f) { f.set("LINE", 6, "ByLayer", 2); f.set("CIRCLE", 8, "0"); }},
    {14, 0, Level::Note, [](F& f) { f.set("LTYPE", 2, "\\U+0416\\U+0416\\U+0416\\U+0416\\U+0416|A", 4);
     f.drop("LINE", 6, 2); }},
    {15, 0, Level::Note, [](F& f) { f.set("LTYPE", 2, "REF|A B.C", 4); f.drop("LINE", 6, 2); }},
    {15, 0, Level::Note, [](F& f) { f.before("ENDTAB", {{0, "STYLE"}, {5, "1F0"}, {330, "3"}, {100,
     "AcDbSymbolTableRecord"}, {100, "AcDbTextStyleTableRecord"}, {2, ""}, {70, "1"}, {40, "0.0"}, {41,
     "1.0"}, {50, "0.0"}, {71, "0"}, {42, "1.0"}, {3, "ltypeshp.shx"}, {4, ""}}, 4); f.set("TABLE", 70, "2",
     4); }},
    {15, 0, Level::Note, [](F& f) { f.before("ENDTAB", {{0, "VPORT"}, {5, "1F0"}, {330, "8"}, {100,
     "AcDbSymbolTableRecord"}, {100, "AcDbViewportTableRecord"}, {2, "*Active"}, {70, "0"}}); f.set("TABLE",
     70, "2"); }},
    {9, 0, Level::Note, [](F& f) { f.cutNamed("SECTION", "TABLES", "ENDSEC"); f.drop("LINE", 6, 2);
     f.set("SECTION", 2, "STANDARD"); f.groups[1].value = "HEADER"; }},
    // Counts that programs keep by their own measure.
    {15, 0, Level::Note, [](F& f) { f.set("TABLE", 70, "2", 2); f.set("TABLE", 70, "3", 9); f.set("TABLE",
     70, "99", 3); }},
    {15, 0, Level::Note, [](F& f) { f.drop("POLYLINE", 71); f.drop("POLYLINE", 72); }},
    // Values: signs, blanks, exponents, negative layer colours.
    {15, 0, Level::Note, [](F& f) { f.set("CIRCLE", 10, " -1.5E-10 "); f.set("CIRCLE", 20, "+.5");
     f.set("CIRCLE", 40, "1e+20"); f.set("LAYER", 62, " -7"); }},
    {15, 0, Level::Note, [](F& f) { f.set("CIRCLE", 230, "-1.0"); f.putBehind("INSERT", 30, {{41, "-1.0"}},
     2); }},
    {15, 0, Level::Note, [](F& f) { f.set("LINE", 62, "256", 2); f.set("LINE", 370, "-3", 2); }},
    // Text: tabs, carets, code pages, UTF-8, an escape cut by the end of a chunk.
    {15, 0, Level::Note, [](F& f) { f.set("TEXT", 1, "a\tb^Jc\\Pd\\U+00E4 %%c \\M+18294 C:\\Users"); }},
    {15, 0, Level::Note, [](F& f) { f.set("MTEXT", 3, "cut here \\U+0"); f.set("MTEXT", 1, "0E4"); }},
    {15, 0, Level::Note, [](F& f) { f.set("TEXT", 1, "gr\xFC\xDF"); }},
    {15, 0, Level::Note, [](F& f) { f.set("SECTION", 3, "ansi_932"); f.set("TEXT", 1, "\x95\x5CU+ \xB1"); }},
    {15, 0, Level::Note, [](F& f) { f.set("SECTION", 3, "DOS850"); f.set("TEXT", 1, "\x81\x8D"); }},
    {32, 0, Level::Note, [](F& f) { f.set("TEXT", 1, "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80"); }},
    // Points of extended data in the five groups of some R12 files.
    {9, 0, Level::Note, [](F& f) { f.put("LINE", {{1011, "1.0"}, {1021, "0.0"}, {1031, "0.0"}, {1021, "2.0"},
     {1031, "3.0"}}, 2); }},
    // An embedded object behind the groups of an MTEXT; nested braces.
    {32, 0, Level::Note, [](F& f) { f.put("MTEXT", {{101, "Embedded Object"}, {70, "1"}, {10, "1.0"}, {20,
     "0.0"}, {30, "0.0"}, {40, "5.0"}, {71, "2"}, {46, "0.0"}, {1001, "ACAD"}, {1002, "{"}, {1002, "{"},
     {1002, "}"}, {1002, "}"}}); }},
    // Kinds of other programs with their CLASS; a solid as such; a spline by its fit points alone.
    {15, 0, Level::Note, [](F& f) { f.before("CIRCLE", {{0, "FOO"}, {5, "1F0"}, {330, "3A"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "Foo"}, {102, "data"}, {7, "x"}}); f.before("CLASS", {{0, "CLASS"}, {1,
     "FOO"}, {2, "Foo"}, {3, "x"}, {90, "0"}, {280, "0"}, {281, "1"}}); }},
    {15, 0, Level::Note, [](F& f) { f.before("CIRCLE", {{0, "3DSOLID"}, {5, "1F0"}, {330, "3A"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "AcDbModelerGeometry"}, {70, "1"}, {1, "^kkg"}, {3, "more"}, {1,
     "end"}}); }},
    {15, 0, Level::Note, [](F& f) { f.before("CIRCLE", {{0, "SPLINE"}, {5, "1F0"}, {330, "3A"}, {100,
     "AcDbEntity"}, {8, "0"}, {100, "AcDbSpline"}, {70, "8"}, {71, "3"}, {72, "0"}, {73, "0"}, {74, "2"},
     {11, "0.0"}, {21, "0.0"}, {31, "0.0"}, {11, "1.0"}, {21, "0.0"}, {31, "0.0"}}); }},
    // Sections that may be there or not.
    {15, 0, Level::Note, [](F& f) { f.before("EOF", {{0, "SECTION"}, {2, "THUMBNAILIMAGE"}, {90, "2"}, {310,
     "0A0B"}, {0, "ENDSEC"}}); }},
    {32, 0, Level::Note, [](F& f) { f.before("EOF", {{0, "SECTION"}, {2, "ACDSDATA"}, {70, "2"}, {71, "1"},
     {0, "ACDSRECORD"}, {90, "0"}, {320, "40"}, {0, "ENDSEC"}}); }},
    // Variables that repeat, variables of the version.
    {18, 0, Level::Note, [](F& f) { f.put("SECTION", {{9, "$CUSTOMPROPERTYTAG"}, {1, "a"}, {9,
     "$CUSTOMPROPERTY"}, {1, "b"}, {9, "$CUSTOMPROPERTYTAG"}, {1, "c"}, {9, "$CUSTOMPROPERTY"}, {1, "d"}});
     }},
    {21, 0, Level::Note, [](F& f) { f.put("SECTION", {{9, "$XCLIPFRAME"}, {290, "0"}, {9, "$ACADMAINTVER"},
     {70, "50"}, {9, "$DIMBLK"}, {1, "_Oblique"}}); }},
    {32, 0, Level::Note, [](F& f) { f.put("SECTION", {{9, "$XCLIPFRAME"}, {280, "2"}, {9, "$ACADMAINTVER"},
     {90, "4"}, {9, "$REQUIREDVERSIONS"}, {160, "0"}}); }},
};
// clang-format on

class Judged : public testing::TestWithParam<Case> {};

TEST_P(Judged, WithItsLevelAndNothingElse) {
    const Case& c = GetParam();
    DxfFile file = validFile(c.version);
    c.make(file);
    const validate::Report report = validate::validateText(file.text(), {.limit = 0});
    std::map<int, Level> gravest;
    for (const validate::Finding& finding : report.findings) {
        const auto place = gravest.emplace(finding.number, finding.level).first;
        place->second = std::max(place->second, finding.level);
    }
    if (c.rule != 0) {
        ASSERT_EQ(gravest.count(c.rule), 1U) << printed(report);
        EXPECT_EQ(levelName(gravest[c.rule]), levelName(c.level));
        gravest.erase(c.rule);
    }
    for (const auto& [rule, level] : gravest)
        EXPECT_EQ(level, Level::Note) << rule << '\n' << printed(report);
}

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    return std::to_string(info.param.rule) + "_AC" + std::to_string(info.param.version) + "_" +
           std::to_string(info.index);
}

INSTANTIATE_TEST_SUITE_P(Mild, Judged, testing::ValuesIn(kMild), nameOf);
INSTANTIATE_TEST_SUITE_P(Fine, Judged, testing::ValuesIn(kFine), nameOf);

} // namespace
