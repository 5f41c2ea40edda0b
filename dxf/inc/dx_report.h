// What the last import met in its file and what became of it: for reports to the user.
#pragma once

#include "rpt.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// What became of the entities of one kind in the ENTITIES section. Entities inside blocks aren't counted.
struct DxEntityTally {
    long read = 0;    ///< met in the section
    long drawn = 0;   ///< gave something to the host
    long skipped = 0; ///< all others: kinds without a reader, layers that are off, another space, no size
};

/// A picture that an image of the drawing names.
struct DxImageReport {
    std::string file; ///< as the drawing names it
    bool found = false;
};

struct DxImportReport {
    std::string version; ///< $ACADVER as it stands, empty without one
    int codePage = 1252; ///< Windows code page of the file's strings
    int insUnits = 0;    ///< $INSUNITS
    RPT3 insBase{0, 0, 0};
    /// By the text of group 0, in the file's bytes. Beyond 1000 unknown names the rest counts under "…".
    std::map<std::string, DxEntityTally, std::less<>> entities;
    std::vector<DxImageReport> images; ///< in the order of their drawing; one file may stand more than once
};

/// The report of the import that ran last, or of the one that is running. Each import starts a new one.
DxImportReport DxGetImportReport();
/// Forgets the last import.
void DxResetImportReport();
