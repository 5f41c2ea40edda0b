#include "dx_select.h"

#include "../export/dx_hidden_lines.h"
#include "dx_session.h"

#include "co.h"
#include "go.h"
#include "uo.h"
#include "ut.h"

static int DxStarted = 0; // the one-time start has been tried; lives as long as the library

namespace {

constexpr int PARTNER = 4;

/// Texts that the configuration partner keeps between sessions, and the macro variables they stand in.
struct Remembered {
    const char* key;
    const char* variable;
};
constexpr Remembered ACT_NAME = {"dxf.act_name", "$DxfActName"};
constexpr Remembered ACT_CONFIG = {"dxf.act_config", "$DxfActConf"};

int readRemembered(const Remembered& item) {
    UtCString text;
    if (CoGetStringFromPartner(PARTNER, "cad", "glob", item.key, &text)) return 0;
    return UoPutMacVarS(item.variable, text);
}

void writeRemembered(const Remembered& item) {
    UtCString text;
    if (UoGetMacVarS(item.variable, &text) || text.IsEmpty()) return;
    CoChgStringFromPartner(PARTNER, "cad", "glob", item.key, text);
}

int readActiveConfig() {
    UtCString custom;
    if (UoGetMacVarS("$DxfCustomConf", &custom) == 0 && !custom.IsEmpty())
        return UoPutMacVarS(ACT_CONFIG.variable, custom);
    return readRemembered(ACT_CONFIG);
}

/// Places the masks over the main window. One that the host hasn't is passed over.
int placeMasks() {
    constexpr int KEEP_SIZE = -32768;
    int x = 0, y = 0;
    if (const int error = GoDoGetMdiClientPosEx(PARTNER, &x, &y)) return error;
    for (const char* name : {"dxf_load", "dxf_store"}) {
        int id = 0;
        if (GoMaskGetIdOrCreateEx(PARTNER, "", name, &id)) continue;
        if (const int error = GoMaskSetPixelEx(PARTNER, id, x, y, KEEP_SIZE, KEEP_SIZE)) return error;
    }
    return 0;
}

int startPartners() {
    if (const int error = CoConnectPartner(PARTNER, 0)) return error;
    if (const int error = readRemembered(ACT_NAME)) return error;
    if (const int error = readActiveConfig()) return error;
    if (const int error = GoPartnerOpenEx(PARTNER, ":khd-dxf")) return error;
    if (const int error = GoRsrcSetProgramEx(PARTNER, "dxf", "", "", "int", "dxf", "", "", "", ""))
        return error;
    return placeMasks();
}

int startLibrary() {
    DxDisplay(UtFormat("%s %s - %s", "DXF", "1700", "15"));
    DxStarted = 1;
    UtSetMemoryParameter("C");
    DxInitialize();
    return startPartners();
}

UtCString configName() {
    UtCString name;
    if (UoGetMacVarS("$DxfConfig", &name) || name.IsEmpty()) name = "$HD_U/$HD_VE/int/dxf/dflt/Dxf.conf";
    return UtPathEnvToAbs(name);
}

void showMask(const char* name) {
    int id = 0;
    if (GoMaskGetIdOrCreateEx(PARTNER, "", name, &id) == 0) GoMaskShowEx(PARTNER, id);
}

void writePartnersBack() {
    writeRemembered(ACT_NAME);
    writeRemembered(ACT_CONFIG);
}

void importIn(int modus, const UtCString& config, const UtCString& fileName) {
    DxModus = modus;
    DxReadDXF(config, fileName);
}

void exportIn(int modus, const UtCString& config, const UtCString& fileName) {
    DxModus = modus;
    DxWriteDXF(config, fileName);
}

void hideLines() {
    const int error = DxHiddPats();
    if (error) DxBeep(DxMsg(5705, error));
    UoPutMacVarD("&DxfStat", error);
}

} // namespace

int DxfSelect(int /*reserved*/, int operation, const UtCString& fileName) {
    if (!DxStarted && operation >= 1 && operation <= 999) {
        if (const int error = startLibrary()) return error;
    }
    const UtCString config = configName();
    switch (operation) {
    case DX_IMPORT_2D:
        importIn(2, config, fileName);
        writePartnersBack();
        break;
    case DX_EXPORT_2D:
        exportIn(2, config, fileName);
        writePartnersBack();
        break;
    case DX_IMPORT_3D: importIn(3, config, fileName); break;
    case DX_EXPORT_3D: exportIn(3, config, fileName); break;
    case DX_HIDDEN_LINE_PATTERNS: hideLines(); break;
    case DX_MASK_TRANS: showMask("DxfTrans"); break;
    case DX_MASK_LOAD: showMask("dxf_load"); break;
    case DX_MASK_STORE: showMask("dxf_store"); break;
    default: break;
    }
    return 0;
}
