#include "dx_config.h"

#include "../session/dx_protocol.h"
#include "../session/dx_reader.h"
#include "dx_config_lines.h"
#include "dx_config_rows.h"
#include "dx_scan.h"
#include "uo.h"

static constexpr int END_OF_FILE = 9003;
static constexpr const char* SPECIAL_FILE = "$HD_U/$VE/int/dxf/dflt/spezfont.dxd";

/// Reads the sections of an open file up to "#EOF".
static int readSections(FILE* file, int isExport) {
    std::string line;
    while (DxReadConfigLine(file, line)) {
        if (!line.starts_with('#')) continue;
        const std::string header(DxTrimmed(line));
        if (header == "#EOF") return 0;
        int count = 0;
        if (header != "#FLAGS-START") {
            if (!DxReadConfigLine(file, line)) break;
            count = DxAtoi(line);
        }
        if (const int error = DxConfigDecode(file, header, count, isExport, 0)) return error;
    }
    return END_OF_FILE;
}

int DxReadConfig(const UtCString& name, int isExport) {
    const DxConfigFile file(UtFileOpen(name, "r"));
    int error = 0;
    if (file) {
        DxSkipByteOrderMark(file.get());
        error = readSections(file.get(), isExport);
    } else {
        DxProtoMsg(UtFormat("Can't open Configurefile %s !", name.c_str()), 1);
    }
    if (file && !error) error = DxReadSpezConfig(UoSubstOVPath(SPECIAL_FILE), isExport);
    if (!error) error = DxTakeAdditions(isExport);
    DxReadUserLtScale();
    return error;
}
