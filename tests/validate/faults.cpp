#include "faults.h"

namespace {

using F = DxfFile;

void replaceFirst(std::string& text, const std::string& old, const std::string& now) {
    text.replace(text.find(old), old.size(), now);
}

const DxfGroups kLine = {{0, "LINE"}, {5, "1F0"},        {330, "3A"}, {100, "AcDbEntity"},
                         {8, "0"},    {100, "AcDbLine"}, {10, "0.0"}, {20, "0.0"},
                         {30, "0.0"}, {11, "1.0"},       {21, "0.0"}, {31, "0.0"}};

/// A block record and its block, with what it holds.
void addBlock(F& f, const std::string& name, int handle, const std::string& inserted) {
    const auto hex = [&](int i) { return "1" + std::to_string(handle + i); };
    f.before("ENDTAB",
             {{0, "BLOCK_RECORD"},
              {5, hex(0)},
              {330, "1"},
              {100, "AcDbSymbolTableRecord"},
              {100, "AcDbBlockTableRecord"},
              {2, name},
              {340, "0"}},
             9);
    f.set("TABLE", 70, "9", 9);
    f.before("BLOCK",
             {{0, "BLOCK"},
              {5, hex(1)},
              {330, hex(0)},
              {100, "AcDbEntity"},
              {8, "0"},
              {100, "AcDbBlockBegin"},
              {2, name},
              {70, "0"},
              {10, "0.0"},
              {20, "0.0"},
              {30, "0.0"},
              {3, name},
              {1, ""},
              {0, "INSERT"},
              {5, hex(2)},
              {330, hex(0)},
              {100, "AcDbEntity"},
              {8, "0"},
              {100, "AcDbBlockReference"},
              {2, inserted},
              {10, "0.0"},
              {20, "0.0"},
              {30, "0.0"},
              {0, "ENDBLK"},
              {5, hex(3)},
              {330, hex(0)},
              {100, "AcDbEntity"},
              {8, "0"},
              {100, "AcDbBlockEnd"}},
             3);
}

// clang-format off
const Fault kFaults[] = {
    // structure
    {103, 15, "last line", [](F& f) { f.cut("EOF"); }, [](std::string& t) { t += "0"; }},
    {104, 15, "expected", [](F&) {}, [](std::string& t) { replaceFirst(t, "73\n-3\n", "x3\n-3\n73\n-3\n"); }},
    {105, 15, "-3", [](F&) {}, [](std::string& t) { replaceFirst(t, "72\n2\n", "72\n2\n2\n"); }},
    {105, 15, "5555", [](F& f) { f.put("CIRCLE", {{5555, "1"}}); }},
    {106, 15, "FOO", [](F& f) { f.before("EOF", {{0, "SECTION"}, {2, "FOO"}, {0, "ENDSEC"}}); }},
    {106, 9, "OBJECTS", [](F& f) { f.before("EOF", {{0, "SECTION"}, {2, "OBJECTS"}, {0, "ENDSEC"}}); }},
    {107, 9, "ENTITIES", [](F& f) { f.cutNamed("SECTION", "ENTITIES", "ENDSEC"); }},
    {108, 9, "ENTITIES", [](F& f) { f.before("EOF", {{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}}); }},
    {109, 15, "BLOCKS", [](F& f) { f.cut("ENDSEC", 4); }},
    {110, 15, "EOF", [](F& f) { f.cut("EOF"); }},
    {111, 15, "behind", [](F&) {}, [](std::string& t) { t += "0\nLINE\n"; }},
    {112, 15, "LTYPE", [](F& f) { f.cut("ENDTAB", 2); }},
    {113, 15, "ENDBLK", [](F& f) { f.cut("ENDBLK", 3); }},
    {114, 15, "SEQEND", [](F& f) { f.cut("SEQEND"); }},
    {115, 15, "VERTEX", [](F& f) { f.cut("POLYLINE").set("VERTEX", 330, "3A");
     f.cut("VERTEX", 2).cut("VERTEX", 2).cut("VERTEX", 2).cut("SEQEND"); }},
    {115, 15, "MTEXT", [](F& f) { f.before("ENDSEC", {{0, "MTEXT"}}, 3); }},
    {116, 9, "TABLES", [](F& f) { auto t = f.copyNamed("SECTION", "TABLES", "ENDSEC"); f.cutNamed("SECTION",
     "TABLES", "ENDSEC"); f.groups.insert(f.groups.end() - 1, t.begin(), t.end()); }},
    {117, 15, "3000", [](F& f) { f.set("TEXT", 1, std::string(3000, 'x')); }},
    {118, 15, "NUL", [](F& f) { f.set("TEXT", 1, std::string("a\0b", 3)); }},
    {119, 15, "control", [](F& f) { f.set("TEXT", 1, "a\x02 b"); }},
    {120, 15, "VIEW", [](F& f) { f.cutNamed("TABLE", "VIEW", "ENDTAB"); }},
    {121, 9, "UCS", [](F& f) { f.before("TABLE", f.copyNamed("TABLE", "UCS", "ENDTAB"), 7); }},
    {122, 15, "VIEW", [](F& f) { auto t = f.copyNamed("TABLE", "UCS", "ENDTAB"); f.cutNamed("TABLE", "UCS",
     "ENDTAB"); f.before("TABLE", t, 5); }},
    {123, 15, "999999", [](F& f) { f.before("SECTION", {{0, "999999"}}, 2); }},
    {124, 9, "BLOCK_RECORD", [](F& f) { f.before("ENDSEC", {{0, "TABLE"}, {2, "BLOCK_RECORD"}, {70, "0"}, {0,
     "ENDTAB"}}, 2); }},
    {125, 15, "mark", [](F&) {}, [](std::string& t) { t.insert(0, "\xEF\xBB\xBF"); }},
    {126, 15, "85", [](F& f) { f.put("CIRCLE", {{85, "1"}}); }},
    {127, 9, "name", [](F& f) { f.before("EOF", {{0, "SECTION"}, {0, "ENDSEC"}}); }},
    // values
    {201, 15, "1,5", [](F& f) { f.set("CIRCLE", 10, "1,5"); }},
    {201, 15, "nan", [](F& f) { f.set("LWPOLYLINE", 42, "nan"); }},
    {201, 15, "1e999", [](F& f) { f.set("CIRCLE", 20, "1e999"); }},
    {201, 15, "0x1p3", [](F& f) { f.set("CIRCLE", 20, "0x1p3"); }},
    {202, 15, "1.0", [](F& f) { f.set("LINE", 62, "1.0", 2); }},
    {203, 15, "70000", [](F& f) { f.set("STYLE", 71, "70000"); }},
    {204, 15, "2", [](F& f) { f.put("LAYER", {{290, "2"}}); }},
    {205, 24, "hexadecimal", [](F& f) { f.set("MESH", 310, "0A0Bx"); }},
    {206, 15, "above 0", [](F& f) { f.set("CIRCLE", 40, "-2.5"); }},
    {206, 15, "above 0", [](F& f) { f.set("TEXT", 40, "0.0"); }},
    {207, 15, "210", [](F& f) { f.set("CIRCLE", 230, "0.0"); }},
    {207, 15, "$UCSXDIR", [](F&) {}, [](std::string& t) { replaceFirst(t, "$UCSXDIR\n10\n1.0",
     "$UCSXDIR\n10\n0.0"); }},
    {208, 15, "followed", [](F& f) { f.drop("CIRCLE", 20); f.drop("CIRCLE", 30); }},
    {208, 15, "without", [](F& f) { f.putBehind("CIRCLE", 40, {{20, "1.0"}}); }},
    {209, 15, "90", [](F& f) { f.set("LWPOLYLINE", 90, "3"); }},
    {209, 15, "edges", [](F&) {}, [](std::string& t) { replaceFirst(t, "93\n4\n72\n1\n", "93\n5\n72\n1\n");
     }},
    {209, 15, "paths", [](F& f) { f.set("HATCH", 91, "3"); }},
    {209, 15, "76", [](F& f) { f.set("LEADER", 76, "3"); }},
    {209, 18, "rows", [](F& f) { f.set("ACAD_TABLE", 91, "2"); }},
    {209, 24, "bytes", [](F& f) { f.set("MESH", 160, "3"); }},
    {209, 24, "93", [](F& f) { f.set("MESH", 93, "5"); }},
    {209, 15, "mitre", [](F& f) { f.put("MLINE", {{13, "0.0"}, {23, "1.0"}, {33, "0.0"}}); }},
    {209, 15, "faces", [](F& f) { f.set("POLYLINE", 72, "2"); }},
    {210, 15, "LAYER", [](F& f) { f.set("TABLE", 70, "0", 3); }},
    {211, 15, "knot", [](F& f) { f.set("SPLINE", 40, "2.0"); }},
    {212, 15, "too few", [](F& f) { f.set("SPLINE", 71, "2"); }},
    {213, 15, "26", [](F& f) { f.set("LINE", 370, "26", 2); }},
    {214, 15, "300", [](F& f) { f.set("LINE", 62, "300", 2); }},
    {214, 15, "layer colour 0", [](F& f) { f.set("LAYER", 62, "0"); }},
    {215, 15, "vertex 9", [](F& f) { f.set("VERTEX", 72, "9", 4); }},
    {215, 24, "vertex 5", [](F&) {}, [](std::string& t) { replaceFirst(t, "90\n1\n90\n2\n94",
     "90\n1\n90\n5\n94"); }},
    {216, 15, "end where", [](F& f) { f.set("IMAGE", 14, "1.0"); }},
    {217, 15, "sum", [](F& f) { f.set("LTYPE", 40, "20.0", 4); }},
    {218, 15, "width", [](F& f) { f.putBehind("LWPOLYLINE", 20, {{40, "1.0"}, {41, "1.0"}}); }},
    {219, 15, "first group", [](F& f) { f.drop("LWPOLYLINE", 90); f.putBehind("LWPOLYLINE", 70, {{90, "2"}});
     }},
    {219, 24, "97", [](F&) {}, [](std::string& t) { replaceFirst(t, "97\n0\n97\n0\n", "97\n0\n"); }},
    {220, 15, "40", [](F& f) { f.put("CIRCLE", {{40, "3.0"}}); }},
    {221, 15, "behind", [](F& f) { f.put("LINE", {{39, "1.0"}}, 2); }},
    {221, 15, "without", [](F& f) { f.drop("LINE", 1001, 2); }},
    {222, 15, "not closed", [](F& f) { f.put("LINE", {{1002, "{"}}, 2); }},
    {223, 15, "twice", [](F& f) { f.put("LINE", {{1001, "ACAD"}}, 2); }},
    {224, 15, "bytes", [](F& f) { f.put("LINE", DxfGroups(80, {1000, std::string(250, 'x')}), 2); }},
    {225, 15, "not closed", [](F& f) { f.putBehind("LINE", 8, {{102, "{APP"}}, 2); }},
    {226, 21, "nesting", [](F& f) { f.drop("MULTILEADER", 303); }},
    // handles
    {301, 15, "missing", [](F& f) { f.drop("CIRCLE", 5); }},
    {302, 15, "already", [](F& f) { f.set("CIRCLE", 5, "40"); }},
    {303, 15, "0", [](F& f) { f.set("CIRCLE", 5, "0"); }},
    {304, 15, "4G", [](F& f) { f.set("CIRCLE", 5, "4G"); }},
    {305, 15, "$HANDSEED", [](F& f) { f.set("CIRCLE", 5, "200"); }},
    {306, 15, "missing", [](F& f) { f.drop("MLINESTYLE", 330); }},
    {307, 15, "does not exist", [](F& f) { f.set("CIRCLE", 330, "1FF"); }},
    {308, 15, "BLOCK_RECORD", [](F& f) { f.set("CIRCLE", 330, "35"); }},
    {309, 15, "back", [](F& f) { f.before("DICTIONARY", {{0, "DICTIONARY"}, {5, "1F1"}, {330, "1F2"}, {100,
     "AcDbDictionary"}, {0, "DICTIONARY"}, {5, "1F2"}, {330, "1F1"}, {100, "AcDbDictionary"}}, 2); }},
    {310, 15, "1FF", [](F& f) { f.set("MLINE", 340, "1FF"); }},
    {311, 15, "1FF", [](F& f) { f.put("LINE", {{1005, "1FF"}}, 2); }},
    {312, 15, "MLINESTYLE", [](F& f) { f.set("MLINE", 340, "35"); }},
    // names
    {401, 15, "WALLS", [](F& f) { f.set("CIRCLE", 8, "WALLS"); }},
    {402, 15, "DOTS", [](F& f) { f.set("LINE", 6, "DOTS", 2); }},
    {403, 15, "ROMANS", [](F& f) { f.set("MTEXT", 7, "ROMANS"); }},
    {404, 15, "ISO", [](F& f) { f.set("LEADER", 3, "ISO"); }},
    {405, 15, "WINDOW", [](F& f) { f.set("INSERT", 2, "WINDOW", 2); }},
    {406, 15, "MYAPP", [](F& f) { f.set("LINE", 1001, "MYAPP", 2); }},
    {407, 15, "ByLayer", [](F& f) { f.cut("LTYPE", 2); }},
    {408, 15, "Acad", [](F& f) { f.before("ENDTAB", {{0, "APPID"}, {5, "1F0"}, {330, "9"}, {100,
     "AcDbSymbolTableRecord"}, {100, "AcDbRegAppTableRecord"}, {2, "Acad"}, {70, "0"}}, 7); f.set("TABLE",
     70, "2", 7); }},
    {409, 15, "/", [](F& f) { f.set("LTYPE", 2, "A/B", 4); f.set("LINE", 6, "A/B", 2); }},
    {409, 14, " ", [](F& f) { f.set("LTYPE", 2, "A B", 4); f.set("LINE", 6, "A B", 2); }},
    {410, 14, "32", [](F& f) { f.set("LTYPE", 2, std::string(32, 'A'), 4); f.set("LINE", 6, std::string(32,
     'A'), 2); }},
    {411, 15, "empty", [](F& f) { f.set("LTYPE", 2, "", 4); f.drop("LINE", 6, 2); }},
    {412, 15, "blank", [](F& f) { f.set("LTYPE", 2, "AB ", 4); f.set("LINE", 6, "AB ", 2); }},
    // blocks
    {501, 15, "GATE", [](F& f) { addBlock(f, "GATE", 0, "DOOR"); f.cut("BLOCK_RECORD", 6);
     for (DxfGroup& g : f.groups) if (g.code == 330 && g.value == "10") g.value = "3C"; }},
    {502, 15, "GATE", [](F& f) { addBlock(f, "GATE", 0, "DOOR"); f.cutNamed("BLOCK", "GATE", "ENDBLK"); }},
    {503, 15, "Paper", [](F& f) { f.set("BLOCK_RECORD", 340, "91"); }},
    {504, 15, "WALL", [](F& f) { addBlock(f, "GATE", 0, "WALL"); addBlock(f, "WALL", 10, "GATE");
     f.set("TABLE", 70, "9", 9); }},
    {505, 15, "*D9", [](F& f) { f.set("DIMENSION", 2, "*D9"); }},
    {506, 18, "*T9", [](F& f) { f.set("ACAD_TABLE", 2, "*T9"); }},
    {507, 15, "ENTITIES", [](F& f) { f.before("ENDBLK", kLine); }},
    {508, 15, "GATE", [](F& f) { f.set("BLOCK", 3, "GATE", 3); }},
    {509, 15, "path", [](F& f) { f.set("BLOCK", 70, "4", 3); }},
    {510, 15, "67", [](F& f) { f.putBehind("CIRCLE", 8, {{67, "1"}}); }},
    // markers and groups
    {601, 15, "AcDbEntity", [](F& f) { f.drop("CIRCLE", 100); f.drop("CIRCLE", 8); }},
    {602, 15, "AcDbText", [](F&) {}, [](std::string& t) { replaceFirst(t, "31\n0.0\n100\nAcDbText\n73\n0\n",
     "31\n0.0\n"); }},
    {603, 15, "AcDbCircle", [](F& f) { f.putBehind("CIRCLE", 8, {{100, "AcDbCircle"}}); }},
    {604, 15, "AcDbVertex", [](F&) {}, [](std::string& t) { replaceFirst(t,
     "100\nAcDbVertex\n100\nAcDbPolyFaceMeshVertex\n10\n0.0\n20\n0.0\n30\n0.0\n70\n192\n",
     "100\nAcDbPolyFaceMeshVertex\n10\n0.0\n20\n0.0\n30\n0.0\n70\n192\n100\nAcDbVertex\n"); }},
    {605, 9, "older", [](F& f) { f.putBehind("CIRCLE", 5, {{100, "AcDbEntity"}}); }},
    {606, 15, "AcDbArc", [](F& f) { f.put("CIRCLE", {{100, "AcDbArc"}}); }},
    {606, 15, "flags (70)", [](F& f) { f.drop("VERTEX", 70); }},
    {607, 15, "40", [](F& f) { f.drop("CIRCLE", 40); }},
    {607, 15, "390", [](F& f) { f.drop("LAYER", 390); }},
    {607, 15, "alignment", [](F& f) { f.drop("TEXT", 11); f.drop("TEXT", 21); f.drop("TEXT", 31); }},
    {608, 15, "41", [](F& f) { f.drop("MTEXT", 41); }},
    {609, 15, "2004", [](F& f) { f.put("LAYER", {{420, "255"}}); }},
    {610, 15, "44", [](F& f) { f.put("CIRCLE", {{44, "1.0"}}); }},
    {611, 9, "MTEXT", [](F& f) { f.before("CIRCLE", {{0, "MTEXT"}, {5, "1F0"}, {8, "0"}, {10, "0.0"}, {20,
     "0.0"}, {30, "0.0"}, {40, "1.0"}, {71, "1"}, {1, "x"}}); }},
    {612, 9, "FOO", [](F& f) { f.before("CIRCLE", {{0, "FOO"}, {5, "1F0"}, {8, "0"}}); }},
    {613, 15, "IMAGE", [](F& f) { f.cut("CLASS"); }},
    {614, 15, "280 expected", [](F& f) { f.putBehind("CLASS", 90, {{91, "1"}}); }},
    {615, 15, "IMAGE", [](F& f) { f.set("CLASS", 281, "0"); }},
    {616, 15, "74", [](F& f) { f.put("TABLE", {{74, "1"}}, 2); }},
    {616, 9, "330", [](F& f) { f.put("TABLE", {{330, "0"}}, 2); }},
    {617, 15, "340", [](F& f) { f.set("TABLE", 71, "2", 8); }},
    {618, 15, "62", [](F& f) { f.putBehind("CIRCLE", 330, {{62, "1"}}); }},
    // encoding
    {701, 15, "1252", [](F& f) { f.set("TEXT", 1, "a\x81"); }},
    {702, 21, "UTF-8", [](F& f) { f.set("TEXT", 1, "a\xC3"); }},
    {703, 15, "\\U+00", [](F& f) { f.set("TEXT", 1, "a\\U+00"); }},
    {704, 15, "UTF-8", [](F& f) { f.set("TEXT", 1, "\xC3\xA9"); }},
    {705, 15, "ANSI_9", [](F&) {}, [](std::string& t) { replaceFirst(t, "ANSI_1252", "ANSI_9"); }},
    // objects
    {801, 15, "root", [](F& f) { f.before("DICTIONARY", {{0, "DICTIONARY"}, {5, "1F0"}, {330, "C"}, {100,
     "AcDbDictionary"}}); }},
    {802, 15, "ACAD_GROUP", [](F& f) { f.set("DICTIONARY", 3, "ACAD_GRUPPE"); }},
    {803, 15, "ACAD_MLINESTYLE", [](F&) {}, [](std::string& t) { replaceFirst(t, "ACAD_MLINESTYLE", "OTHER");
     }},
    {804, 15, "twice", [](F& f) { f.put("DICTIONARY", {{3, "acad_group"}, {350, "D"}}); }},
    {805, 15, "belongs", [](F& f) { f.set("MLINESTYLE", 330, "D"); }},
    {806, 15, "Sheet", [](F&) {}, [](std::string& t) { replaceFirst(t, "1\nPaper\n", "1\nSheet\n"); }},
    {807, 15, "ACAD_IMAGE_DICT", [](F& f) { f.set("IMAGEDEF", 330, "96"); },
     [](std::string& t) { replaceFirst(t, "3\nPHOTO\n350\n97\n", ""); }},
    {808, 15, "reactor", [](F& f) { f.drop("IMAGE", 360); }},
    {809, 15, "entities", [](F& f) { f.put("DICTIONARY", {{3, "G"}, {350, "1F0"}}, 2); f.before("DICTIONARY",
     {{0, "GROUP"}, {5, "1F0"}, {330, "D"}, {100, "AcDbGroup"}, {300, ""}, {70, "0"}, {71, "1"}}, 3); }},
    {810, 15, "no handle", [](F& f) { f.put("DICTIONARY", {{3, "EMPTY"}}); }},
    // header
    {901, 9, "$ACADVER", [](F&) {}, [](std::string& t) { replaceFirst(t, "9\n$ACADVER\n1\nAC1009\n", ""); }},
    {902, 32, "AC1099", [](F&) {}, [](std::string& t) { replaceFirst(t, "AC1032", "AC1099"); }},
    {903, 15, "$FOO", [](F& f) { f.put("SECTION", {{9, "$FOO"}, {70, "1"}}); }},
    {904, 15, "its code", [](F&) {}, [](std::string& t) { replaceFirst(t, "$EXTNAMES\n290",
     "$EXTNAMES\n280"); }},
    {905, 15, "2010", [](F& f) { f.put("SECTION", {{9, "$DIMTXTDIRECTION"}, {70, "0"}}); }},
    {906, 15, "$HANDSEED", [](F&) {}, [](std::string& t) { replaceFirst(t, "9\n$HANDSEED\n5\n200\n", ""); }},
    {907, 15, "ISO", [](F&) {}, [](std::string& t) { replaceFirst(t, "$DIMSTYLE\n2\nSTANDARD",
     "$DIMSTYLE\n2\nISO"); }},
    {908, 21, "1FF", [](F&) {}, [](std::string& t) { replaceFirst(t, "347\nA0\n", "347\n1FF\n"); }},
    {909, 15, "twice", [](F& f) { f.put("SECTION", {{9, "$CLAYER"}, {8, "0"}}); }},
    {910, 15, "first", [](F& f) { f.putBehind("SECTION", 2, {{9, "$LTSCALE"}, {40, "1.0"}}); }},
};
// clang-format on

} // namespace

std::span<const Fault> oneFaultFiles() {
    return kFaults;
}

std::string faultyText(const Fault& fault) {
    DxfFile file = validFile(fault.version);
    fault.make(file);
    std::string text = file.text();
    if (fault.edit) fault.edit(text);
    return text;
}
