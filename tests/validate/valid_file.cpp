#include "valid_file.h"

#include <sstream>
#include <stdexcept>

namespace {

// A line is a group ("8 0"), or a letter for groups that come together: S section, X its end, C class, T
// table, Z its end, R record, E entity, B block, K its end, O object. "@15" in front: since AC1015; "@12-14":
// from, to. Several groups stand in one line, divided by " ; ".
constexpr const char* kTemplate = R"(
S HEADER
9 $ACADVER ; 1 %V
9 $DWGCODEPAGE ; 3 ANSI_1252
9 $INSBASE ; 10 0.0 ; 20 0.0 ; 30 0.0
9 $LIMMIN ; 10 0.0 ; 20 0.0
9 $CLAYER ; 8 0
9 $DIMSTYLE ; 2 STANDARD
9 $HANDSEED ; 5 200
@15 9 $EXTNAMES ; 290 1
9 $UCSXDIR ; 10 1.0 ; 20 0.0 ; 30 0.0
@21 9 $CMATERIAL ; 347 A0
X
@12 S CLASSES
@14 C IMAGE AcDbRasterImage 1
@14 C IMAGEDEF AcDbRasterImageDef 0
@14 C IMAGEDEF_REACTOR AcDbRasterImageDefReactor 0
@14-14 C LWPOLYLINE AcDbPolyline 1
@14-14 C HATCH AcDbHatch 1
@15 C ACDBDICTIONARYWDFLT AcDbDictionaryWithDefault 0
@15-15 C ACDBPLACEHOLDER AcDbPlaceHolder 0
@15-15 C LAYOUT AcDbLayout 0
@18 C ACAD_TABLE AcDbTable 1
@18 C TABLESTYLE AcDbTableStyle 0
@21 C MATERIAL AcDbMaterial 0
@21 C MULTILEADER AcDbMLeader 1
@21 C MLEADERSTYLE AcDbMLeaderStyle 0
@24 C MESH AcDbSubDMesh 1
@12 X
S TABLES
T VPORT 8 1
R VPORT 30 8 AcDbViewportTableRecord
2 *ACTIVE ; 70 0 ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 1.0 ; 12 0.0 ; 22 0.0 ; 40 297.0 ; 41 1.5
Z
T LTYPE 5 3
@12 R LTYPE 31 5 AcDbLinetypeTableRecord
@12 2 BYBLOCK ; 70 0 ; 3 ; 72 65 ; 73 0 ; 40 0.0
@12 R LTYPE 32 5 AcDbLinetypeTableRecord
@12 2 BYLAYER ; 70 0 ; 3 ; 72 65 ; 73 0 ; 40 0.0
R LTYPE 33 5 AcDbLinetypeTableRecord
2 CONTINUOUS ; 70 0 ; 3 Solid line ; 72 65 ; 73 0 ; 40 0.0
R LTYPE 34 5 AcDbLinetypeTableRecord
2 DASHED ; 70 0 ; 3 Dashed ; 72 65 ; 73 2 ; 40 19.05 ; 49 12.7 ; @12 74 0 ; 49 -6.35 ; @12 74 0
Z
T LAYER 2 1
R LAYER 35 2 AcDbLayerTableRecord
2 0 ; 70 0 ; 62 7 ; 6 CONTINUOUS ; @15 370 -3 ; @15 390 F ; @21 347 A0
Z
T STYLE 3 1
R STYLE 36 3 AcDbTextStyleTableRecord
2 STANDARD ; 70 0 ; 40 0.0 ; 41 1.0 ; 50 0.0 ; 71 0 ; 42 2.5 ; 3 txt ; 4
Z
T VIEW 6 0
Z
T UCS 7 0
Z
T APPID 9 1
R APPID 37 9 AcDbRegAppTableRecord
2 ACAD ; 70 0
Z
T DIMSTYLE A 1
R DIMSTYLE 38 A AcDbDimStyleTableRecord
2 STANDARD ; 70 0 ; @12 340 36
Z
@12 T BLOCK_RECORD 1 5
@12 R BLOCK_RECORD 3A 1 AcDbBlockTableRecord
@12 2 *MODEL_SPACE ; @15 340 90
@12 R BLOCK_RECORD 3B 1 AcDbBlockTableRecord
@12 2 *PAPER_SPACE ; @15 340 91
@12 R BLOCK_RECORD 3C 1 AcDbBlockTableRecord
@12 2 DOOR ; @15 340 0
@12 R BLOCK_RECORD 3D 1 AcDbBlockTableRecord
@12 2 *D1 ; @15 340 0
@12 R BLOCK_RECORD 3E 1 AcDbBlockTableRecord
@12 2 *T1 ; @15 340 0
@12 Z
X
S BLOCKS
@12 B *MODEL_SPACE 20 3A 0
@12 K 21 3A
@12 B *PAPER_SPACE 22 3B 0
@12 K 23 3B
B DOOR 24 3C 0
E LINE 25 3C
@12 100 AcDbLine
10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 0.0 ; 31 0.0
K 26 3C
B *D1 27 3D 1
E POINT 28 3D
@12 100 AcDbPoint
10 0.0 ; 20 0.0 ; 30 0.0
K 29 3D
B *T1 2A 3E 1
E INSERT 2C 3E
@12 100 AcDbBlockReference
2 DOOR ; 10 0.0 ; 20 0.0 ; 30 0.0
K 2B 3E
X
S ENTITIES
E LINE 40 3A
6 DASHED ; 62 1 ; @15 370 25 ; @18 420 255 ; @12 100 AcDbLine
10 0.0 ; 20 0.0 ; 30 0.0 ; 11 10.0 ; 21 5.0 ; 31 0.0
1001 ACAD ; 1000 text ; 1002 { ; 1070 5 ; 1010 1.0 ; 1020 1.0 ; 1030 1.0 ; 1002 }
E CIRCLE 41 3A
@12 100 AcDbCircle
10 0.0 ; 20 0.0 ; 30 0.0 ; 40 2.5 ; 210 0.0 ; 220 0.0 ; 230 1.0
@14 E LWPOLYLINE 42 3A
@14 100 AcDbPolyline ; 90 2 ; 70 0 ; 43 0.0 ; 10 0.0 ; 20 0.0 ; 42 0.5 ; 10 1.0 ; 20 1.0 ; 42 0.0
E POLYLINE 43 3A
@12 100 AcDbPolyFaceMesh
66 1 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 70 64 ; 71 3 ; 72 1
E VERTEX 44 43
@12 100 AcDbVertex ; 100 AcDbPolyFaceMeshVertex
10 0.0 ; 20 0.0 ; 30 0.0 ; 70 192
E VERTEX 45 43
@12 100 AcDbVertex ; 100 AcDbPolyFaceMeshVertex
10 1.0 ; 20 0.0 ; 30 0.0 ; 70 192
E VERTEX 46 43
@12 100 AcDbVertex ; 100 AcDbPolyFaceMeshVertex
10 1.0 ; 20 1.0 ; 30 0.0 ; 70 192
E VERTEX 47 43
@12 100 AcDbFaceRecord
10 0.0 ; 20 0.0 ; 30 0.0 ; 70 128 ; 71 1 ; 72 2 ; 73 -3
E SEQEND 48 43
E INSERT 49 3A
@12 100 AcDbBlockReference
66 1 ; 2 DOOR ; 10 0.0 ; 20 0.0 ; 30 0.0
E ATTRIB 4A 49
@12 100 AcDbText
10 0.0 ; 20 0.0 ; 30 0.0 ; 40 2.5 ; 1 5
@12 100 AcDbAttribute
2 NUMBER ; 70 0
E SEQEND 4B 49
E TEXT 4C 3A
@12 100 AcDbText
10 0.0 ; 20 0.0 ; 30 0.0 ; 40 2.5 ; 1 Hello ; 72 1 ; 11 1.0 ; 21 0.0 ; 31 0.0
@12 100 AcDbText
73 0
@12 E MTEXT 4D 3A
@12 100 AcDbMText ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 40 2.5 ; 41 0.0 ; 71 1 ; 72 1 ; 3 chunk ; 1 text ; 7 STANDARD
@14 E HATCH 4E 3A
@14 100 AcDbHatch ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 210 0.0 ; 220 0.0 ; 230 1.0 ; 2 ANSI31 ; 70 0 ; 71 0 ; 91 2
@14 92 3 ; 72 1 ; 73 1 ; 93 2 ; 10 0.0 ; 20 0.0 ; 42 1.0 ; 10 1.0 ; 20 0.0 ; 42 1.0 ; 97 0
@14 92 1 ; 93 4 ; 72 1 ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0
@14 72 2 ; 10 0.0 ; 20 0.0 ; 40 1.0 ; 50 0.0 ; 51 90.0 ; 73 1
@14 72 3 ; 10 0.0 ; 20 0.0 ; 11 1.0 ; 21 0.0 ; 40 0.5 ; 50 0.0 ; 51 90.0 ; 73 1
@14 72 4 ; 94 1 ; 73 0 ; 74 0 ; 95 4 ; 96 2 ; 40 0.0 ; 40 0.0 ; 40 1.0 ; 40 1.0 ; 10 0.0 ; 20 0.0 ; 10 1.0 ; 20 1.0
@24 97 0
@14 97 0 ; 75 1 ; 76 1 ; 52 0.0 ; 41 1.0 ; 77 0 ; 78 1
@14 53 45.0 ; 43 0.0 ; 44 0.0 ; 45 -0.1 ; 46 0.1 ; 79 2 ; 49 1.0 ; 49 -1.0 ; 98 1 ; 10 0.5 ; 20 0.5
@18 450 0 ; 451 0 ; 460 0.0 ; 461 0.0 ; 452 0 ; 462 0.0 ; 453 0 ; 470
@12 E SPLINE 4F 3A
@12 100 AcDbSpline ; 70 8 ; 71 1 ; 72 4 ; 73 2 ; 74 0 ; 40 0.0 ; 40 0.0 ; 40 1.0 ; 40 1.0
@12 10 0.0 ; 20 0.0 ; 30 0.0 ; 10 1.0 ; 20 1.0 ; 30 0.0
@12 E LEADER 50 3A
@12 100 AcDbLeader ; 3 STANDARD ; 76 2 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 10 1.0 ; 20 1.0 ; 30 0.0 ; 73 0 ; 340 4D
E DIMENSION 51 3A
@12 100 AcDbDimension
2 *D1 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 11 0.0 ; 21 0.0 ; 31 0.0 ; 70 33 ; 3 STANDARD
@12 100 AcDbAlignedDimension
13 0.0 ; 23 0.0 ; 33 0.0 ; 14 1.0 ; 24 0.0 ; 34 0.0
@12 E MLINE 52 3A
@12 100 AcDbMline ; 2 STANDARD ; 340 95 ; 40 1.0 ; 70 0 ; 71 1 ; 72 1 ; 73 1 ; 10 0.0 ; 20 0.0 ; 30 0.0
@12 210 0.0 ; 220 0.0 ; 230 1.0 ; 11 0.0 ; 21 0.0 ; 31 0.0 ; 12 1.0 ; 22 0.0 ; 32 0.0 ; 13 0.0 ; 23 1.0 ; 33 0.0
@12 74 2 ; 41 0.5 ; 41 0.0 ; 75 0
@12 E XLINE 53 3A
@12 100 AcDbXline ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 0.0 ; 31 0.0
@14 E IMAGE 54 3A
@14 100 AcDbRasterImage ; 90 0 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 11 1.0 ; 21 0.0 ; 31 0.0 ; 12 0.0 ; 22 1.0 ; 32 0.0
@14 13 10.0 ; 23 10.0 ; 340 97 ; 70 7 ; 280 0 ; 281 50 ; 282 50 ; 283 0 ; 360 98 ; 71 2 ; 91 4
@14 14 0.0 ; 24 0.0 ; 14 9.0 ; 24 0.0 ; 14 9.0 ; 24 9.0 ; 14 0.0 ; 24 0.0
@18 E ACAD_TABLE 55 3A
@18 100 AcDbBlockReference ; 2 *T1 ; 10 0.0 ; 20 0.0 ; 30 0.0 ; 100 AcDbTable ; 342 A1 ; 343 3E
@18 11 1.0 ; 21 0.0 ; 31 0.0 ; 90 22 ; 91 1 ; 92 2 ; 141 5.0 ; 142 9.0 ; 142 9.0 ; 171 1 ; 171 1
@21 E MULTILEADER 56 3A
@21 100 AcDbMLeader ; 300 CONTEXT_DATA{ ; 40 1.0 ; 302 LEADER{ ; 304 LEADER_LINE{ ; 10 0.0 ; 20 0.0 ; 30 0.0
@21 305 } ; 303 } ; 301 } ; 340 A2 ; 341 32 ; 343 36
@24 E MESH 57 3A
@24 160 2 ; 310 0A0B ; 100 AcDbSubDMesh ; 71 2 ; 72 0 ; 91 0 ; 92 3 ; 10 0.0 ; 20 0.0 ; 30 0.0
@24 10 1.0 ; 20 0.0 ; 30 0.0 ; 10 1.0 ; 20 1.0 ; 30 0.0 ; 93 4 ; 90 3 ; 90 0 ; 90 1 ; 90 2
@24 94 1 ; 90 0 ; 90 1 ; 95 1 ; 140 0.0 ; 90 0
X
@12 S OBJECTS
@12 O DICTIONARY C 0 AcDbDictionary
@12 3 ACAD_GROUP ; 350 D ; 3 ACAD_MLINESTYLE ; 350 94 ; @15 3 ACAD_LAYOUT ; @15 350 1A
@15 3 ACAD_PLOTSTYLENAME ; 350 E
@14 3 ACAD_IMAGE_DICT ; 350 96
@18 3 ACAD_TABLESTYLE ; 350 A5
@21 3 ACAD_MATERIAL ; 350 A3 ; 3 ACAD_MLEADERSTYLE ; 350 A4
@12 O DICTIONARY D C AcDbDictionary
@12 O DICTIONARY 94 C AcDbDictionary
@12 3 STANDARD ; 350 95
@12 O MLINESTYLE 95 94 AcDbMlineStyle
@12 2 STANDARD ; 70 0 ; 3 ; 62 256 ; 51 90.0 ; 52 90.0 ; 71 1 ; 49 0.5 ; 62 256 ; 6 BYLAYER
@15 O DICTIONARY 1A C AcDbDictionary
@15 3 Model ; 350 90 ; 3 Paper ; 350 91
@15 O LAYOUT 90 1A AcDbPlotSettings
@15 2 none ; 100 AcDbLayout ; 1 Model ; 330 3A
@15 O LAYOUT 91 1A AcDbPlotSettings
@15 2 none ; 100 AcDbLayout ; 1 Paper ; 330 3B
@15 O ACDBDICTIONARYWDFLT E C AcDbDictionary
@15 3 Normal ; 350 F ; 100 AcDbDictionaryWithDefault ; 340 F
@15 0 ACDBPLACEHOLDER ; 5 F ; 330 E
@14 O DICTIONARY 96 C AcDbDictionary
@14 3 PHOTO ; 350 97
@14 O IMAGEDEF 97 96 AcDbRasterImageDef
@14 90 0 ; 1 photo.png ; 10 10.0 ; 20 10.0 ; 11 1.0 ; 21 1.0 ; 280 1 ; 281 0
@14 O IMAGEDEF_REACTOR 98 54 AcDbRasterImageDefReactor
@14 90 2 ; 330 54
@18 O DICTIONARY A5 C AcDbDictionary
@18 3 Standard ; 350 A1
@18 O TABLESTYLE A1 A5 AcDbTableStyle
@21 O DICTIONARY A3 C AcDbDictionary
@21 3 Global ; 350 A0
@21 O MATERIAL A0 A3 AcDbMaterial
@21 1 Global
@21 O DICTIONARY A4 C AcDbDictionary
@21 3 Standard ; 350 A2
@21 O MLEADERSTYLE A2 A4 AcDbMLeaderStyle
@12 X
0 EOF
)";

/// Whether the version is in a range such as "15", "-14" or "12-14".
bool isInRange(const std::string& range, int version) {
    const size_t dash = range.find('-');
    const std::string from = range.substr(0, dash),
                      to = dash == std::string::npos ? "" : range.substr(dash + 1);
    return (from.empty() || version >= std::stoi(from)) && (to.empty() || version <= std::stoi(to));
}

class Expander {
public:
    explicit Expander(int version) : version_(version) {}

    void line(std::string text) {
        if (text.empty() || (text[0] == '@' && !takeRange(text))) return;
        for (size_t at = 0; at != std::string::npos;) {
            const size_t end = text.find(" ; ", at);
            item(text.substr(at, end == std::string::npos ? end : end - at));
            at = end == std::string::npos ? end : end + 3;
        }
    }

    DxfFile file;

private:
    bool takeRange(std::string& text) const {
        const size_t blank = text.find(' ');
        const bool inside = isInRange(text.substr(1, blank - 1), version_);
        text.erase(0, blank + 1);
        return inside;
    }

    void add(int since, int code, const std::string& value) {
        if (version_ >= since) file.groups.push_back({code, value});
    }

    void item(std::string text) {
        if (text[0] == '@' && !takeRange(text)) return;
        if (!isalpha(static_cast<unsigned char>(text[0]))) {
            const size_t blank = std::min(text.find(' '), text.size());
            std::string value = blank < text.size() ? text.substr(blank + 1) : "";
            if (value == "%V") value = version_ == 9 ? "AC1009" : "AC10" + std::to_string(version_);
            add(0, std::stoi(text.substr(0, blank)), value);
            return;
        }
        std::istringstream words(text.substr(1));
        std::string a, b, c, d;
        words >> a >> b >> c >> d;
        expand(text[0], a, b, c, d);
    }

    void head(const std::string& kind, const std::string& handle, const std::string& owner, int handleSince) {
        add(0, 0, kind);
        add(handleSince, kind == "DIMSTYLE" ? 105 : 5, handle);
        add(15, 330, owner);
    }

    void expand(char letter, const std::string& a, const std::string& b, const std::string& c,
                const std::string& d) {
        switch (letter) {
        case 'S': add(0, 0, "SECTION"), add(0, 2, a); break;
        case 'X': add(0, 0, "ENDSEC"); break;
        case 'C':
            add(0, 0, "CLASS"), add(0, 1, a), add(0, 2, b), add(0, 3, "ObjectDBX Classes"), add(0, 90, "0");
            add(18, 91, "1"), add(0, 280, "0"), add(0, 281, c);
            break;
        case 'T':
            add(0, 0, "TABLE"), add(0, 2, a), add(12, 5, b), add(15, 330, "0"),
                add(12, 100, "AcDbSymbolTable");
            add(0, 70, c);
            if (a == "LTYPE" && version_ > 9) file.groups.back().value = "4";
            if (a == "LTYPE" && version_ == 9) file.groups.back().value = "2";
            if (a == "DIMSTYLE") add(15, 100, "AcDbDimStyleTable"), add(15, 71, "1"), add(15, 340, "38");
            break;
        case 'Z': add(0, 0, "ENDTAB"); break;
        case 'R': head(a, b, c, 12), add(12, 100, "AcDbSymbolTableRecord"), add(12, 100, d); break;
        case 'E': head(a, b, c, 9), add(12, 100, "AcDbEntity"), add(0, 8, "0"); break;
        case 'B':
            head("BLOCK", b, c, 12), add(12, 100, "AcDbEntity"), add(0, 8, "0"),
                add(12, 100, "AcDbBlockBegin");
            for (const DxfGroup& group :
                 {DxfGroup{2, a}, {70, d}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {3, a}, {1, ""}})
                file.groups.push_back(group);
            break;
        case 'K':
            head("ENDBLK", a, b, 9), add(12, 100, "AcDbEntity"), add(0, 8, "0"), add(12, 100, "AcDbBlockEnd");
            break;
        case 'O': head(a, b, c, 12), add(12, 100, d); break;
        default: throw std::logic_error("template");
        }
    }

    int version_;
};

} // namespace

DxfFile validFile(int version) {
    Expander expander(version);
    std::istringstream lines(kTemplate);
    for (std::string line; std::getline(lines, line);) expander.line(line);
    return expander.file;
}

size_t DxfFile::find(const std::string& record, int nth) const {
    for (size_t i = 0; i < groups.size(); ++i)
        if (groups[i].code == 0 && groups[i].value == record && --nth == 0) return i;
    throw std::logic_error("no record " + record);
}

size_t DxfFile::findGroup(const std::string& record, int code, int nth) const {
    for (size_t i = find(record, nth) + 1; i < groups.size() && groups[i].code != 0; ++i)
        if (groups[i].code == code) return i;
    throw std::logic_error("no group in " + record);
}

DxfFile& DxfFile::set(const std::string& record, int code, const std::string& value, int nth) {
    groups[findGroup(record, code, nth)].value = value;
    return *this;
}

DxfFile& DxfFile::drop(const std::string& record, int code, int nth) {
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(findGroup(record, code, nth)));
    return *this;
}

DxfFile& DxfFile::put(const std::string& record, const DxfGroups& more, int nth) {
    size_t at = find(record, nth) + 1;
    while (at < groups.size() && groups[at].code != 0) ++at;
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at), more.begin(), more.end());
    return *this;
}

DxfFile& DxfFile::putBehind(const std::string& record, int code, const DxfGroups& more, int nth) {
    const size_t at = findGroup(record, code, nth) + 1;
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(at), more.begin(), more.end());
    return *this;
}

DxfFile& DxfFile::before(const std::string& record, const DxfGroups& more, int nth) {
    groups.insert(groups.begin() + static_cast<std::ptrdiff_t>(find(record, nth)), more.begin(), more.end());
    return *this;
}

DxfFile& DxfFile::cut(const std::string& record, int nth) {
    const size_t at = find(record, nth);
    size_t end = at + 1;
    while (end < groups.size() && groups[end].code != 0) ++end;
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(at),
                 groups.begin() + static_cast<std::ptrdiff_t>(end));
    return *this;
}

std::pair<size_t, size_t> DxfFile::rangeNamed(const std::string& record, const std::string& name,
                                              const std::string& end) const {
    for (int nth = 1;; ++nth) {
        const size_t at = find(record, nth);
        if (groups[findGroup(record, 2, nth)].value != name) continue;
        size_t last = at;
        while (groups[last].code != 0 || groups[last].value != end) ++last;
        for (++last; last < groups.size() && groups[last].code != 0;) ++last;
        return {at, last};
    }
}

DxfFile& DxfFile::cutNamed(const std::string& record, const std::string& name, const std::string& end) {
    const auto [from, to] = rangeNamed(record, name, end);
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(from),
                 groups.begin() + static_cast<std::ptrdiff_t>(to));
    return *this;
}

DxfGroups DxfFile::copyNamed(const std::string& record, const std::string& name, const std::string& end) {
    const auto [from, to] = rangeNamed(record, name, end);
    return {groups.begin() + static_cast<std::ptrdiff_t>(from),
            groups.begin() + static_cast<std::ptrdiff_t>(to)};
}

std::string DxfFile::text() const {
    std::string text;
    for (const DxfGroup& group : groups) text += std::to_string(group.code) + "\n" + group.value + "\n";
    return text;
}
