#include "dx_header_export.h"

#include "../config/config_state.h"
#include "../export/export_state.h"
#include "../import/dx_extents.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "dx_header_keep.h"
#include "dx_placeholders.h"
#include "dx_template.h"
#include "ge.h"
#include "sections_state.h"

#include <algorithm>

namespace {

const char* templateName() {
    static constexpr const char* NAMES[] = {"header_easy", "header_32", "header_27", "header_24",
                                            "header_21",   "header_18", "header_15", "header_12"};
    return DxWriteVersion >= 1 && DxWriteVersion <= 7 ? NAMES[DxWriteVersion] : NAMES[0];
}

/// What a drawing without content has for extents.
constexpr double UNSET = 1e20;

} // namespace

RPT3 DxWrittenExtMin() {
    return DxIsExtentsUnInizialized() ? RPT3{UNSET, UNSET, UNSET} : DxExtMin;
}
RPT3 DxWrittenExtMax() {
    return DxIsExtentsUnInizialized() ? RPT3{-UNSET, -UNSET, -UNSET} : DxExtMax;
}

namespace {

// ---- the header that stands in for a missing template ----------------------------------------------

int writePointFix(const char* name, const RPT3& p) {
    DxWriteString(9, name);
    DxWriteDoubleFix(10, p.x);
    DxWriteDoubleFix(20, p.y);
    return DxWriteDoubleFix(30, p.z);
}

struct BuiltIn {
    const char* name;
    int code;
    double value;
    bool real;
};

constexpr BuiltIn AHEAD_OF_STYLE[] = {
    {"$ORTHOMODE", 70, 0, false}, {"$REGENMODE", 70, 1, false}, {"$FILLMODE", 70, -1, false},
    {"$QTEXTMODE", 70, 0, false}, {"$DRAGMODE", 70, 2, false},  {"$LTSCALE", 40, 1.0, true},
    {"$OSMODE", 70, 0, false},    {"$ATTMODE", 70, 1, false},   {"$TRACEWID", 40, 0.05, true},
};
constexpr BuiltIn BEHIND_STYLE[] = {
    {"$CECOLOR", 62, 256, false},
    {"$LUNITS", 70, 2, false},
    {"$LUPREC", 70, 4, false},
    {"$AXISMODE", 70, 0, false},
};
constexpr BuiltIn BEHIND_AXIS[] = {
    {"$FILLETRAD", 40, 0.0, true}, {"$AUNITS", 70, 0, false},     {"$AUPREC", 70, 0, false},
    {"$ELEVATION", 40, 0.0, true}, {"$THICKNESS", 40, 0.0, true}, {"$LIMCHECK", 70, 0, false},
    {"$BLIPMODE", 70, 1, false},   {"$CHAMFERA", 40, 0.0, true},  {"$CHAMFERB", 40, 0.0, true},
    {"$SKPOLY", 70, 0, false},     {"$ANGBASE", 50, 0.0, true},   {"$ANGDIR", 70, 0, false},
    {"$PDMODE", 70, 0, false},     {"$PDSIZE", 40, 0.0, true},    {"$PLINEWID", 40, 0.0, true},
    {"$COORDS", 70, 0, false},
};

template <std::size_t N>
void writeRows(const BuiltIn (&rows)[N]) {
    for (const BuiltIn& row : rows) {
        DxWriteString(9, row.name);
        const bool fill = row.value < 0;
        if (row.real)
            DxWriteDouble(row.code, row.value);
        else
            DxWriteInt(row.code, fill ? DxFillMode : static_cast<int>(row.value));
    }
}

int writeNamed(const char* name, int code, const UtCString& value) {
    DxWriteString(9, name);
    return DxWriteString(code, value);
}

int writeBuiltInHeader() {
    const DxTables& tables = DxDocuments.currentTables();
    const UtCString lineType =
        tables.lineTypes.empty() ? UtCString() : UtCString(tables.lineTypes[0].name.view());
    DxWriteString(0, "SECTION");
    DxWriteString(2, "HEADER");
    DxWriteString(9, "$INSBASE");
    for (const int code : {10, 20, 30}) DxWriteDouble(code, 0.0);
    writePointFix("$EXTMAX", DxWrittenExtMax());
    writePointFix("$EXTMIN", DxWrittenExtMin());
    writePointFix("$LIMMAX", DxWrittenExtMax());
    writePointFix("$LIMMIN", DxWrittenExtMin());
    writeRows(AHEAD_OF_STYLE);
    writeNamed("$TEXTSTYLE", 7, "STANDARD");
    writeNamed("$CLAYER", 8, "0");
    writeNamed("$CELTYPE", 6, lineType);
    writeRows(BEHIND_STYLE);
    DxWriteString(9, "$AXISUNIT");
    for (const int code : {10, 20}) DxWriteDouble(code, 0.0);
    writeRows(BEHIND_AXIS);
    return DxWriteString(0, "ENDSEC");
}

} // namespace

int DxHeaderChgText(DxTemplate& source, int code, const UtCString& text, const std::vector<UtCString>& lines,
                    int* found) {
    *found = 0;
    for (const UtCString& line : lines) {
        std::string values = line.str();
        std::string name;
        UtGetNextPart(values, '=', name);
        if (name != text.str()) continue;
        *found = 1;
        DxProtoMsg(line, 0);
        auto count = std::count(values.begin(), values.end(), ',') + 1;
        DxWriteString(code, text);
        for (; count > 0; --count) {
            int valueCode = 0;
            std::string ignored;
            std::string value;
            if (!source.next(valueCode, ignored)) break;
            if (valueCode == 9 || valueCode == 0) {
                DxProtoMsg(DxMsg(5759, text.c_str()), 0);
                source.handBack();
                break;
            }
            UtGetNextPart(values, ',', value);
            DxWriteString(valueCode, value);
        }
        return DxWriteError();
    }
    return DxWriteError();
}

/// A reader takes a file without a unit for one in millimetres.
static void tellMissingUnit() {
    constexpr int millimetre = 3;
    if (DxFileInsUnits == 0 && DxUnit != millimetre)
        DxProtoMsg(UtFormat("The file doesn't say its unit: %s.", GeUnit(DxUnit, 1.0).name().c_str()), 1);
}

int DxWriteHeaderSection() {
    std::vector<UtCString> lines;
    if (const int error = DxHeaderReadDrawingHeader(&lines)) return DxWriteFail(error);
    DxTemplate source(templateName());
    if (!source.isOpen()) return writeBuiltInHeader();
    int code = 0;
    std::string value;
    while (!DxWriteError() && source.next(code, value)) {
        int found = 0;
        if (code == 9 && !lines.empty()) DxHeaderChgText(source, code, value, lines, &found);
        if (!found) DxWriteTemplatePair(code, value);
    }
    if (!DxWriteError()) tellMissingUnit();
    return DxWriteError();
}
