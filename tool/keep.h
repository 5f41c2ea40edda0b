// The command's own behaviour: nothing of a file is lost. The configuration keep.dxd with what the
// file itself brings, and the drawing's own pens and line types behind it.
#pragma once

#include "drawing/drawing.h"
#include "dx_additions.h"
#include "source_scan.h"

#include <map>
#include <optional>
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

/// What the plan adds to the configuration file `keep`. None when that can't be read.
std::optional<DxConfigAdditions> keepAdditions(const KeepPlan& plan, const std::string& keep);

/// Gives the imported drawing the line types of the plan and the RGB of each colour that it uses: pen n is
/// DXF colour n.
void applyKeeping(const KeepPlan& plan, const SourceScan& scan, host::Drawing& drawing);

} // namespace tool
