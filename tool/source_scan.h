// A quick look through a text DXF ahead of its import, for what the import's configuration depends on.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// A line type of the TABLES section. Texts of the scan are UTF-8, with escapes as they stand.
struct SourceLineType {
    std::string name;
    std::string description;
    std::vector<double> dashes; ///< drawing units: positive dash, negative gap, 0 dot
};

/// A layer of the TABLES section.
struct SourceLayer {
    std::string name, lineType;
    int color = 7; ///< negative: off
    int flags = 0;
    int plot = 1;
    int lineWeight = -3;
};

struct SourceScan {
    int version = 1009;          ///< number of $ACADVER
    bool hasEndlessLine = false; ///< longer than any in a drawing
    int codePage = 1252;         ///< Windows code page of $DWGCODEPAGE
    int insUnits = 0;
    double paperBaseX = 0, paperBaseY = 0; ///< $PINSBASE
    double lineTypeScale = 1;
    int inchLayouts = 0, otherLayouts = 0;  ///< layouts of paper, by the unit that they are plotted in
    std::vector<SourceLineType> lineTypes;  ///< in the order of the table
    std::vector<SourceLayer> layers;        ///< in the order of the table
    std::vector<std::string> lineTypesUsed; ///< each spelling in group 6 once
    std::vector<std::string> fontFiles;     ///< of text styles, each once
};

/// Looks through the bytes of a file once. Anything at all may stand in them; what isn't understood is
/// passed over. Lists are kept up to a few thousand entries.
SourceScan scanSource(std::string_view bytes);

} // namespace tool
