#include "dx_config.h"

#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "uo.h"

#include <cmath>
#include <limits>

namespace {

/// How a switch takes the number of its macro variable.
enum class Kind { Truth, Rounded };

struct Switch {
    const char* variable;
    Kind kind;
    int* target;
};

// clang-format off
constexpr Switch SWITCHES[] = {
    {"&DxfDimUsrTxt",            Kind::Truth,   &DxDimUsrTxt},
    {"&DxfNoPolyWidth",          Kind::Truth,   &DxNoPolyWidth},
    {"&DxfReadPdMode",           Kind::Rounded, &DxPdMode},
    {"&DxfJoinTexts",            Kind::Rounded, &DxJoinTexts},
    {"&Dxf3dLines",              Kind::Truth,   &Dx3dLines},
    {"&Dxf3DSolidsAsSubObjects", Kind::Truth,   &DxSolidsAsSubObjects},
};
// clang-format on

/// Adds 0.5 and cuts; numbers beyond the range of int, and what is no number, count as 0.
int roundToInt(double value) {
    const double rounded = std::trunc(value + 0.5);
    const bool fits = std::abs(rounded) <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(rounded) : 0;
}

bool isSet(const char* variable) {
    double value = 0;
    return UoGetMacVarD(variable, &value) == 0 && value != 0;
}

void reportMode(const UtCString& mode) {
    DxProtoMsg(DxMsg(5760, mode.c_str()), 1);
}

void readReadSpace() {
    double parsesExtended = 0;
    double space = 0;
    if (UoGetMacVarD("&DxfParseExt", &parsesExtended) || parsesExtended != 0) return;
    if (UoGetMacVarD("&DxfPaper", &space)) return;
    DxReadSpace = space == 0 ? 0 : space == 1 ? 1 : 2;
    UtCString loadInto;
    if (UoGetMacVarS("$DxfLoadInto", &loadInto) == 0 && loadInto == "True") DxReadSpace = 0;
    DxReportReadSpace();
}

} // namespace

void DxReportReadSpace() {
    static constexpr const char* MODES[] = {"MODELSPACE", "PAPERSPACE", "MODELSPACE + PAPERSPACES"};
    DxProtoMsg(DxMsg(5760, MODES[DxReadSpace == 0 || DxReadSpace == 1 ? DxReadSpace : 2]), 0);
}

void DxReadSwitches(int /*isExport*/) {
    if (isSet("&DxfByLayer")) {
        DxUseByLayer = 1;
        reportMode("BYLAYER");
    }
    if (isSet("&DxfColAttr")) {
        DxColAttr = 1;
        reportMode(DxMsg(5761));
    }
    readReadSpace();
    for (const Switch& row : SWITCHES) {
        double value = 0;
        if (UoGetMacVarD(row.variable, &value)) continue;
        *row.target = row.kind == Kind::Truth ? value != 0 : roundToInt(value);
    }
    DxReadUserLtScale();
}

void DxReadUserLtScale() {
    double scale = 0;
    if (UoGetMacVarD("&DxfUserLtScale", &scale) == 0 && scale > 0) DxLtScale = scale;
}

void DxReadBlockCopies() {
    constexpr int ACAD14 = 6; // versions count backwards
    const bool canCopy = DxIsExport && DxPatternToBlock && DxWriteVersion <= ACAD14 && DxModus != 3 &&
                         !DxDimInBlock && DxWriteHatch != 2;
    double copies = 0;
    if (!canCopy || UoGetMacVarD("&DxfBlockCopies", &copies)) return;
    DxBlockCopies = roundToInt(copies);
    if (DxBlockCopies) reportMode("BLOCK-COPY");
}
