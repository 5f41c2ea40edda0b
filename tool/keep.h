// The command's own behaviour: nothing of a file is lost. A configuration for the run, made from keep.dxd and
// what the file itself brings, and the drawing's own pens and line types behind it.
#pragma once

#include "drawing/drawing.h"
#include "source_scan.h"

#include <map>
#include <string>
#include <vector>

namespace tool {

struct KeepPlan {
    int paperUnit = 3; ///< host unit of paper space
    /// Line types by host number (2 … 62; 1 is continuous), dash lengths in the file's drawing units.
    std::map<int, SourceLineType> lineTypes;
    /// Each spelling of a name in the file and its number.
    std::vector<std::pair<std::string, int>> spellings;
    /// TrueType fonts that styles name by their file alone: the file as the module's tables have it, the
    /// face.
    std::vector<std::pair<std::string, std::string>> fonts;
    std::vector<std::string> notes; ///< what doesn't fit, in words for the user
};

/// Settles numbers for the line types of a file, in the order of its table, those without a definition last.
KeepPlan planKeeping(const SourceScan& scan);

/// Writes the configuration of the run: the content of the file `keep`, then what the plan adds.
/// False when a file can't be read or written.
bool writeKeepConfig(const KeepPlan& plan, const std::string& keep, const std::string& target);

/// Gives the imported drawing the line types of the plan and the RGB of each colour that it uses: pen n is
/// DXF colour n.
void applyKeeping(const KeepPlan& plan, const SourceScan& scan, host::Drawing& drawing);

} // namespace tool
