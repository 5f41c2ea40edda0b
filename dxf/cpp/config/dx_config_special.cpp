#include "dx_config_rows.h"

#include "../session/dx_reader.h"
#include "dx_config_lines.h"
#include "dx_scan.h"
#include "ut.h"

int DxReadSpezConfig(const UtCString& name, int isExport) {
    const DxConfigFile file(UtFileOpen(name, "r"));
    if (!file) return 0;
    DxSkipByteOrderMark(file.get());
    std::string line;
    while (DxReadConfigLine(file.get(), line)) {
        const std::string header(DxTrimmed(line));
        if (header == "#EOF") break;
        if (!line.starts_with("#CHAR")) continue;
        if (!DxReadConfigLine(file.get(), line)) break;
        if (const int error = DxConfigDecode(file.get(), header, DxAtoi(line), isExport, 1)) return error;
    }
    return 0;
}
