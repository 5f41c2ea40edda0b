// One import against the reference host: this file, these options, this drawing.
#pragma once

#include "dxf_text.h"
#include "temp_dir.h"

#include <map>
#include <string>
#include <vector>

struct ImportOptions {
    bool in3d = false;
    std::map<std::string, double> numbers;    ///< macro variables "&Name"
    std::map<std::string, std::string> texts; ///< macro variables "$Name"
    /// Content of a configuration file; empty: the module's defaults, by a ".dxd" file without settings.
    std::string config;
    std::string configName = "test.dxd"; ///< its name tells its format
    /// Files beside the drawing, by name.
    std::map<std::string, std::string> files;
    bool keepsSession = false; ///< into the drawing that is open, after the imports that came before
};

struct ImportResult {
    double stat = -1;                  ///< &DxfStat
    std::vector<std::string> messages; ///< lines of the host's message area
    std::string protocol;              ///< content of the protocol file
    std::string dump;                  ///< the drawing as text

    bool hasMessage(const std::string& part) const; ///< Some line of the message area has this part.
    bool hasLine(const std::string& line) const;    ///< The protocol has exactly this line.
};

/// Imports `dxf` as "drawing.dxf" into a fresh drawing of a fresh host.
ImportResult importText(const std::string& dxf, const ImportOptions& options = {});
/// The same with the file called `path`, which may not exist; relative to `folder`.
ImportResult importFile(const TempDir& folder, const std::string& name, const ImportOptions& options = {});
