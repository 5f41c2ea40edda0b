// What a host adds to the configuration of its next run, as values: a name of a drawing may hold what would
// mean something else in the lines of a configuration file.
#pragma once

#include <string>
#include <utility>
#include <vector>

struct DxConfigAdditions {
    /// A line of a data section such as "#LT-DXF-TO-CAD".
    struct Row {
        std::string section, left, right;
    };
    std::vector<std::pair<std::string, std::string>> flags; ///< key and value; they have the last word
    std::vector<Row> rows;                                  ///< behind those of the file, section by section
};

/// For the next import or export with a sectioned configuration; a run takes them and forgets them.
void DxSetConfigAdditions(DxConfigAdditions additions);
