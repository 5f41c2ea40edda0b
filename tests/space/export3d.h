// An export in 3D.
#pragma once

#include "../export/exported.h"

/// Exports the open drawing in 3D with a configuration.
inline Exported export3d(const std::string& config) {
    const TempDir folder;
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    host::session().texts["$DxfConfig"] = folder.write("out.dxd", config);
    DxfSelect(0, DX_EXPORT_3D, folder.file("out.dxf").c_str());
    Exported result;
    result.stat = host::session().numbers["&DxfStat"];
    result.protocol = folder.read("dxf.proto");
    result.text = folder.read("out.dxf");
    result.pairs = pairsOf(result.text);
    result.report = validate::validateFile(folder.file("out.dxf"));
    return result;
}
