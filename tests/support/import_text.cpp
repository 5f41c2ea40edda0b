#include "import_text.h"

#include "drawing/dump.h"
#include "dx_select.h"
#include "services/session.h"

#include <algorithm>
#include <cstdlib>

bool ImportResult::hasMessage(const std::string& part) const {
    return std::any_of(messages.begin(), messages.end(),
                       [&](const std::string& line) { return line.find(part) != std::string::npos; });
}

bool ImportResult::hasLine(const std::string& line) const {
    return ("\n" + protocol).find("\n" + line + "\n") != std::string::npos;
}

ImportResult importFile(const TempDir& folder, const std::string& name, const ImportOptions& options) {
    setenv("HD_WORK_DIR", folder.path().c_str(), 1);
    if (!options.keepsSession) host::resetSession();
    host::Session& session = host::session();
    for (const auto& [variable, value] : options.numbers) session.numbers[variable] = value;
    for (const auto& [variable, value] : options.texts) session.texts[variable] = value;
    for (const auto& [file, content] : options.files) folder.write(file, content);
    const std::string config = options.config.empty() ? "#EOF\n" : options.config;
    session.texts["$DxfConfig"] = folder.write(options.configName, config);
    session.messageArea.clear();

    DxfSelect(0, options.in3d ? DX_IMPORT_3D : DX_IMPORT_2D, name.empty() ? "" : folder.file(name).c_str());

    ImportResult result;
    result.stat = session.numbers["&DxfStat"];
    result.messages = session.messageArea;
    result.protocol = folder.read("dxf.proto");
    result.dump = host::dumpDrawing(host::openDrawing());
    return result;
}

ImportResult importText(const std::string& dxf, const ImportOptions& options) {
    const TempDir folder;
    folder.write("drawing.dxf", dxf);
    return importFile(folder, "drawing.dxf", options);
}
