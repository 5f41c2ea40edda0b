#include "dx_tables_import.h"

#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_section.h"
#include "dx_tables_read.h"

#include <algorithm>
#include <iterator>

namespace {

/// Records are told apart by their own group 0 text; the tables' names say nothing.
struct RecordKind {
    std::string_view name;
    int (*read)(DxTableNames&);
    bool onImport, onTemplate;
};

constexpr RecordKind kinds[] = {
    {"LAYER", DxReadLayer, true, true},        {"LTYPE", DxReadLType, false, true},
    {"STYLE", DxReadStyle, true, false},       {"VIEW", DxReadView, true, false},
    {"DIMSTYLE", DxReadDimStyle, true, false}, {"BLOCK_RECORD", DxReadBlockRecord, true, false},
};

void readRecord(std::string_view name, unsigned long mode, DxTableNames& names) {
    const auto* kind =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const RecordKind& k) { return k.name == name; });
    if (kind == std::end(kinds) || !(mode == DX_TABLES_TEMPLATE ? kind->onTemplate : kind->onImport)) return;
    kind->read(names); // what ends the file is met again by the next read; a record without room is lost
}

/// Passes over the table's name and its first field, but not over a group 0.
int skipTableHead() {
    DxPair pair;
    for (int i = 0; i < 2; ++i) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0) {
            DxUnGetLine();
            return 0;
        }
    }
    return 0;
}

/// Reads records up to 0 / "ENDTAB", or to "ENDSEC" of a section that lacks it, which sets `atEnd`.
int readTable(unsigned long mode, DxTableNames& names, bool& atEnd) {
    if (const int error = skipTableHead()) return error;
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code != 0) continue;
        atEnd = pair.text == "ENDSEC";
        if (atEnd || pair.text == "ENDTAB") return 0;
        readRecord(pair.text, mode, names);
    }
}

} // namespace

int DxReadTableSection(unsigned long mode) {
    bool found = false;
    if (const int error = DxEnterSection("TABLES", found, "TABLE"); error || !found) return error;
    DxTableNames names;
    const DxTables& tables = DxDocuments.currentTables();
    for (std::size_t i = tables.lineTypes.size(); i-- > 0;) {
        DX_NAME name = tables.lineTypes[i].name;
        DxUpperName(name);
        names.lineTypes[std::string(name.view())] = static_cast<int>(i);
    }
    for (std::size_t i = tables.styles.size(); i-- > 0;) {
        names.styles[std::string(tables.styles[i].name.view())] = static_cast<int>(i);
    }
    DxPair pair;
    bool atEnd = false;
    while (!atEnd) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code != 0) continue;
        if (pair.text == "TABLE") {
            if (const int error = readTable(mode, names, atEnd)) return error;
        } else {
            atEnd = pair.text == "ENDSEC";
        }
    }
    return DxReadUntil(0, "SECTION");
}
