#include "new_records.h"

#include "text.h"

namespace repair {

using validate::Version;

namespace {

/// A group that new records of a table get behind their name.
struct Row {
    std::string_view table;
    int code;
    std::string_view value;
    Version since = validate::kFirst;
};

constexpr Row kRows[] = {
    {"LTYPE", 70, "0"},
    {"LTYPE", 3, ""},
    {"LTYPE", 72, "65"},
    {"LTYPE", 73, "0"},
    {"LTYPE", 40, "0.0"},
    {"LAYER", 70, "0"},
    {"LAYER", 62, "7"},
    {"LAYER", 6, "CONTINUOUS"},
    {"LAYER", 370, "-3", Version::R2000},
    {"STYLE", 70, "0"},
    {"STYLE", 40, "0.0"},
    {"STYLE", 41, "1.0"},
    {"STYLE", 50, "0.0"},
    {"STYLE", 71, "0"},
    {"STYLE", 42, "2.5"},
    {"STYLE", 3, "txt"},
    {"STYLE", 4, ""},
    {"APPID", 70, "0"},
    {"DIMSTYLE", 70, "0"},
    {"BLOCK_RECORD", 340, "0", Version::R2000},
    {"VPORT", 70, "0"},
    {"VPORT", 10, "0.0"},
    {"VPORT", 20, "0.0"},
    {"VPORT", 11, "1.0"},
    {"VPORT", 21, "1.0"},
    {"VPORT", 12, "210.0"},
    {"VPORT", 22, "148.5"},
    {"VPORT", 13, "0.0"},
    {"VPORT", 23, "0.0"},
    {"VPORT", 14, "10.0"},
    {"VPORT", 24, "10.0"},
    {"VPORT", 15, "10.0"},
    {"VPORT", 25, "10.0"},
    {"VPORT", 16, "0.0"},
    {"VPORT", 26, "0.0"},
    {"VPORT", 36, "1.0"},
    {"VPORT", 17, "0.0"},
    {"VPORT", 27, "0.0"},
    {"VPORT", 37, "0.0"},
    {"VPORT", 40, "297.0"},
    {"VPORT", 41, "1.4"},
    {"VPORT", 42, "50.0"},
    {"VPORT", 43, "0.0"},
    {"VPORT", 44, "0.0"},
    {"VPORT", 50, "0.0"},
    {"VPORT", 51, "0.0"},
    {"VPORT", 71, "0"},
    {"VPORT", 72, "1000"},
    {"VPORT", 73, "1"},
    {"VPORT", 74, "3"},
    {"VPORT", 75, "0"},
    {"VPORT", 76, "0"},
    {"VPORT", 77, "0"},
    {"VPORT", 78, "0"},
};

struct Marker {
    std::string_view table, marker;
};
constexpr Marker kMarkers[] = {
    {"LTYPE", "AcDbLinetypeTableRecord"},    {"LAYER", "AcDbLayerTableRecord"},
    {"STYLE", "AcDbTextStyleTableRecord"},   {"APPID", "AcDbRegAppTableRecord"},
    {"DIMSTYLE", "AcDbDimStyleTableRecord"}, {"BLOCK_RECORD", "AcDbBlockTableRecord"},
    {"VPORT", "AcDbViewportTableRecord"},
};

void addMarker(const Document& document, Record& record, std::string_view marker) {
    if (document.atLeast(Version::R13)) record.pairs.push_back({100, marker, 0});
}

} // namespace

void setIds(Document& document, Record& record, uint64_t handle, uint64_t owner) {
    if (!document.atLeast(Version::R13)) return;
    const int code = handleCode(record.kind());
    if (Pair* own = record.handlePair())
        own->value = document.handlePair(code, handle).value;
    else
        record.insert(1, document.handlePair(code, handle));
    if (!document.atLeast(Version::R2000) && !record.ownerPair()) return;
    if (Pair* of = record.ownerPair())
        of->value = document.handlePair(330, owner).value;
    else
        record.insert(record.bodyStart(), document.handlePair(330, owner));
}

Table newTable(Document& document, std::string_view name) {
    Table table{Record{{{0, "TABLE", 0}, document.pair(2, std::string(name))}}};
    if (document.atLeast(Version::R13)) table.head.insert(2, document.handlePair(5, document.newHandle()));
    if (document.atLeast(Version::R2000)) table.head.pairs.push_back({330, "0", 0});
    addMarker(document, table.head, "AcDbSymbolTable");
    table.head.pairs.push_back({70, "0", 0});
    if (name == "DIMSTYLE" && document.atLeast(Version::R2000)) {
        addMarker(document, table.head, "AcDbDimStyleTable");
        table.head.pairs.push_back({71, "0", 0});
    }
    return table;
}

Record newTableRecord(Document& document, const Table& table, std::string_view name) {
    Record record{{{0, table.name(), 0}}};
    setIds(document, record, document.atLeast(Version::R13) ? document.newHandle() : 0, table.head.handle());
    addMarker(document, record, "AcDbSymbolTableRecord");
    for (const Marker& row : kMarkers)
        if (row.table == table.name()) addMarker(document, record, row.marker);
    record.pairs.push_back(document.pair(2, std::string(name)));
    for (const Row& row : kRows)
        if (row.table == table.name() && document.atLeast(row.since))
            record.pairs.push_back({row.code, row.value, 0});
    return record;
}

Block newBlock(Document& document, std::string_view name, uint64_t owner) {
    Block block{Record{{{0, "BLOCK", 0}}}, {}, Record{{{0, "ENDBLK", 0}}}};
    const bool paper = validate::upperCase(name).rfind("*PAPER_SPACE", 0) == 0;
    for (Record* record : {&block.begin, &block.end}) {
        setIds(document, *record, document.atLeast(Version::R13) ? document.newHandle() : 0, owner);
        addMarker(document, *record, "AcDbEntity");
        if (paper) record->pairs.push_back({67, "1", 0});
        record->pairs.push_back({8, "0", 0});
    }
    addMarker(document, block.begin, "AcDbBlockBegin");
    addMarker(document, block.end, "AcDbBlockEnd");
    const std::string_view kept = document.keep(std::string(name));
    const std::string_view flags = name.starts_with('*') && !paper ? "1" : "0";
    for (const Pair& pair : {Pair{2, kept}, Pair{70, flags}, Pair{10, "0.0"}, Pair{20, "0.0"},
                             Pair{30, "0.0"}, Pair{3, kept}, Pair{1, ""}})
        block.begin.pairs.push_back(pair);
    return block;
}

Record newObject(Document& document, std::string_view kind, std::string_view marker, uint64_t owner) {
    Record record{{{0, kind, 0}}};
    record.pairs.push_back(document.handlePair(5, document.newHandle()));
    record.pairs.push_back(document.handlePair(330, owner));
    if (!marker.empty()) record.pairs.push_back({100, marker, 0});
    return record;
}

} // namespace repair
