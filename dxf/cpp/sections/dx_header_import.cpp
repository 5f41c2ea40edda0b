#include "dx_header_import.h"

#include "../config/config_state.h"
#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "dx_header_keep.h"
#include "dx_section.h"
#include "ge.h"
#include "sections_state.h"
#include "uo.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace {

/// Corners of the extents as they stand in the file, and whether they do.
struct Corner {
    RPT3 point{};
    bool seen = false;
};
enum CornerIndex { EXT_MIN, EXT_MAX, PAPER_EXT_MIN, PAPER_EXT_MAX, CORNER_COUNT };

struct Release {
    std::string_view version;
    const char* name;
};

constexpr Release releases[] = {
    {"AC1032", "AutoCAD Release 2018 - 2024"}, {"AC1027", "AutoCAD Release 2013 - 2017"},
    {"AC1024", "AutoCAD Release 2010 - 2012"}, {"AC1021", "AutoCAD Release 2007 - 2009"},
    {"AC1018", "AutoCAD Release 2004 - 2006"}, {"AC1015", "AutoCAD Release 2000 / 2002"},
    {"AC1014", "AutoCAD Release 14"},          {"AC1012", "AutoCAD Release 13"},
    {"AC1009", "AutoCAD Release 11 / 12"},     {"AC1006", "AutoCAD Release 10"},
    {"AC1004", "AutoCAD Release 9"},           {"AC1003", "AutoCAD Release 8/2.6"},
    {"AC1002", "AutoCAD Release 7/2.5"},
};

int versionOf(std::string_view text, int unknown) {
    return text.starts_with("AC") ? DxAtoi(text.substr(2)) : unknown;
}

void takeVersion(std::string_view text) {
    DxReport.version = text;
    const auto* known = std::find_if(std::begin(releases), std::end(releases),
                                     [&](const Release& release) { return release.version == text; });
    DxProtoMsg(DxMsg(5758, known != std::end(releases) ? UtCString(known->name) : DxHostText(text)), 0);
    DxFileVersion = versionOf(text, DxFileVersion);
}

bool beginsWithAnyCase(std::string_view text, std::string_view upperPrefix) {
    return text.size() >= upperPrefix.size() &&
           std::equal(upperPrefix.begin(), upperPrefix.end(), text.begin(),
                      [](char p, char c) { return p == (c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); });
}

/// "ANSI_1252" and "ISO8859-2" name code pages; other forms, such as "DOS850", don't.
int codePageOf(std::string_view text, int unknown) {
    constexpr int largest = 65535;
    constexpr std::string_view iso = "ISO8859-";
    constexpr int isoBase = 28590;
    const std::size_t digit = text.find_first_of("0123456789");
    if (digit == std::string_view::npos) return unknown;
    if (beginsWithAnyCase(text, "ANSI")) return std::min(DxAtoi(text.substr(digit)), largest);
    if (beginsWithAnyCase(text, iso))
        return isoBase + std::clamp(DxAtoi(text.substr(iso.size())), 0, largest - isoBase);
    return unknown;
}

void takeCodePage(std::string_view text) {
    DxCodePage = codePageOf(text, DxCodePage);
    DxReport.codePage = DxCodePage;
    DxProtoMsg(UtCString("CODEPAGE: ") + DxHostText(text), 0);
}

void takeAttMode(std::string_view text) {
    DxAttMode = DxAtoi(text);
}
void takeInsUnits(std::string_view text) {
    DxReport.insUnits = DxFileInsUnits = DxAtoi(text);
}

/// 2 in the configuration leaves the decision to the file.
void takeFillMode(std::string_view text) {
    if (DxFillMode == 2) DxFillMode = DxAtoi(text);
}

/// 1 in the configuration drops points whatever the file says.
void takePdMode(std::string_view text) {
    if (DxPdMode != 1) DxPdMode = DxAtoi(text);
}

/// A header variable that the import looks at: a text, a point or a corner of the extents.
struct Variable {
    std::string_view name;
    void (*take)(std::string_view text) = nullptr;
    RPT3* point = nullptr;
    int corner = -1;
    bool ucs = false; ///< counts with USE_UCS only
};

constexpr Variable textOf(std::string_view name, void (*take)(std::string_view)) {
    return {name, take, nullptr, -1, false};
}
constexpr Variable pointOf(std::string_view name, RPT3* point) {
    return {name, nullptr, point, -1, false};
}
constexpr Variable ucsOf(std::string_view name, RPT3* point) {
    return {name, nullptr, point, -1, true};
}
constexpr Variable cornerOf(std::string_view name, int corner) {
    return {name, nullptr, nullptr, corner, false};
}

constexpr Variable variables[] = {
    textOf("$ACADVER", takeVersion),        textOf("$ATTMODE", takeAttMode),
    textOf("$DWGCODEPAGE", takeCodePage),   textOf("$FILLMODE", takeFillMode),
    textOf("$INSUNITS", takeInsUnits),      textOf("$PDMODE", takePdMode),
    pointOf("$INSBASE", &DxHdrInsBase),     pointOf("$PINSBASE", &DxHdrPaperInsBase),
    ucsOf("$UCSORG", &DxHdrUcsOrg),         ucsOf("$UCSXDIR", &DxHdrUcsXDir),
    ucsOf("$UCSYDIR", &DxHdrUcsYDir),       ucsOf("$PUCSORG", &DxHdrPaperUcsOrg),
    ucsOf("$PUCSXDIR", &DxHdrPaperUcsXDir), ucsOf("$PUCSYDIR", &DxHdrPaperUcsYDir),
    cornerOf("$EXTMIN", EXT_MIN),           cornerOf("$EXTMAX", EXT_MAX),
    cornerOf("$PEXTMIN", PAPER_EXT_MIN),    cornerOf("$PEXTMAX", PAPER_EXT_MAX),
};

/// Three pairs of a point. The first two are consumed whatever their codes are; a third that isn't z is
/// handed back, so that a plane point doesn't swallow the next variable. `read` turns a text into a number.
int readPoint(RPT3& point, double (*read)(std::string_view)) {
    DxPair pair;
    if (const int error = DxReadPair(pair)) return error;
    if (pair.code == 10) point.x = read(pair.text);
    if (const int error = DxReadPair(pair)) return error;
    if (pair.code == 20) point.y = read(pair.text);
    if (const int error = DxReadPair(pair)) return error;
    if (pair.code == 30) {
        point.z = read(pair.text);
    } else {
        DxUnGetLine();
    }
    return 0;
}

int readVariable(std::string_view name, Corner (&corners)[CORNER_COUNT]) {
    const auto* variable = std::find_if(std::begin(variables), std::end(variables),
                                        [&](const Variable& v) { return v.name == name; });
    if (variable == std::end(variables) || (variable->ucs && !DxUseUcs)) return 0;
    if (variable->point) return readPoint(*variable->point, DxfReadConvDouble);
    if (variable->corner >= 0) {
        Corner& corner = corners[variable->corner];
        corner.seen = true;
        return readPoint(corner.point, DxAtof); // a corner out of bounds must be noticed, not become 0
    }
    DxPair pair;
    if (const int error = DxReadPair(pair)) return error;
    variable->take(pair.text);
    return 0;
}

int readVariables(Corner (&corners)[CORNER_COUNT]) {
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0 && pair.text == "ENDSEC") return 0;
        if (pair.code != 9) continue;
        if (const int error = readVariable(pair.text, corners)) return error;
    }
}

bool isUsable(const Corner& corner) {
    const auto inBounds = [](double value) { return std::fabs(value) < 1e19; };
    return corner.seen && inBounds(corner.point.x) && inBounds(corner.point.y) && inBounds(corner.point.z);
}

/// Takes over extents of the file if they are any good; else they stay "not known" and are measured.
void takeExtents(const Corner& low, const Corner& high, RPT3& min, RPT3& max) {
    if (!isUsable(low) || !isUsable(high)) return;
    min = low.point;
    max = high.point;
}

bool wantsExtentsOfFile() {
    double value = 0;
    return UoGetMacVarD("&DxfExt", &value) == 0 && value == 1;
}

bool wantsHeaderKept() {
    double value = 0;
    return UoGetMacVarD("&DxfHeader", &value) == 0 && value != 0;
}

} // namespace

int DxReadHeaderSection(Mat44 matrix) {
    DxDisplay(DxMsg(5715));
    bool found = false;
    if (const int error = DxEnterSection("HEADER", found); error || !found) return error;
    DX_SAVE start;
    DxSaveActPos(&start);

    Corner corners[CORNER_COUNT];
    const int error = readVariables(corners);
    DxReport.insBase = DxHdrInsBase;
    if (!error && wantsExtentsOfFile()) {
        takeExtents(corners[EXT_MIN], corners[EXT_MAX], DxHdrExtMin, DxHdrExtMax);
        takeExtents(corners[PAPER_EXT_MIN], corners[PAPER_EXT_MAX], DxHdrPaperExtMin, DxHdrPaperExtMax);
    }
    if (wantsHeaderKept()) {
        if (const int failed = DxRestoreActPos(&start)) return failed;
        DxHeaderMakeDrawingHeader();
    }
    if (error) return error;
    if (const int failed = DxReadUntil(0, "SECTION")) return failed;
    return DxUseUcs ? DxHeaderUcsToMat(DxHdrUcsOrg, DxHdrUcsXDir, DxHdrUcsYDir, matrix) : 0;
}

int DxReadReferenceHeader() {
    DxPair pair;
    if (const int error = DxReadPair(pair)) return error;
    if (pair.code != 2 || pair.text != "HEADER") {
        DxUnGetLine();
        return 0;
    }
    DxfDocument& document = DxDocuments.requireCurrent();
    document.version = DxFileVersion;
    document.codePage = DxCodePage;
    std::string variable;
    for (;;) {
        if (const int error = DxReadPair(pair)) return error;
        if (pair.code == 0 && pair.text == "SECTION") return 0;
        if (pair.code == 9) variable = pair.text;
        if (pair.code == 1 && variable == "$ACADVER") document.version = versionOf(pair.text, DxFileVersion);
        if (pair.code == 3 && variable == "$DWGCODEPAGE")
            document.codePage = codePageOf(pair.text, DxCodePage);
    }
}

int DxHeaderUcsToMat(const RPT3& origin, const RPT3& xDir, const RPT3& yDir, Mat44 matrix) {
    const auto from = [&](const RPT3& dir) {
        return RPT3{origin.x + dir.x, origin.y + dir.y, origin.z + dir.z};
    };
    GeMat44 frame(origin, from(xDir), from(yDir));
    frame.Invert();
    frame.CopyTo(matrix);
    return 0;
}
