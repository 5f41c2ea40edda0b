// What the last import met in its file and what became of it, and what it and the last export told: for
// reports to the user.
#pragma once

#include "dx_unseen.h"
#include "rpt.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// What became of the entities of one kind: what was read is drawn, hidden or lost.
struct DxEntityTally {
    long read = 0;    ///< met in the section, or in the block
    long drawn = 0;   ///< gave something to the host
    long hidden = 0;  ///< the file itself doesn't show them: layers that are off, invisible entities
    long lost = 0;    ///< kinds without a reader, another space, no size
    long skipped = 0; ///< hidden and lost ones
    long waiting = 0; ///< of paper space, while model space is drawn
};

/// What became of the dimensions of the ENTITIES section.
struct DxDimensionTally {
    long associative = 0; ///< dimensions that know what they measure
    long free = 0;        ///< dimensions of drawn lines and texts
    long blocks = 0;      ///< the content of their block
    long chained = 0;     ///< of the associative ones: in a chain with others
};

/// A picture that an image of the drawing names.
struct DxImageReport {
    std::string file; ///< as the drawing names it
    bool found = false;
};

/// One text that a run told the user.
struct DxReportMessage {
    std::string text;
    int level = 0; ///< 1: also in the host's message area, with a beep; 0: in the protocol only
};

struct DxImportReport {
    std::string version; ///< $ACADVER as it stands, empty without one
    int codePage = 1252; ///< Windows code page of the file's strings
    int insUnits = 0;    ///< $INSUNITS
    RPT3 insBase{0, 0, 0};
    std::vector<DxReportMessage> messages; ///< in the order of the run, each text once
    std::vector<std::string> recovered;    ///< files in whose place a repaired twin was read
    /// By the text of group 0, in the file's bytes. Beyond 1000 unknown names the rest counts under "…".
    std::map<std::string, DxEntityTally, std::less<>> entities;
    /// The same of blocks, without those of the section: once for each block that is drawn, however often.
    std::map<std::string, DxEntityTally, std::less<>> blockEntities;
    std::vector<DxUnseen> unseen; ///< what is hidden or lost, by kind and reason, in the order of its finding
    DxDimensionTally dimensions;
    std::vector<DxImageReport> images; ///< in the order of their drawing; one file may stand more than once
};

struct DxExportReport {
    std::vector<DxReportMessage> messages; ///< as those of an import
};

/// The report of the import that ran last, or of the one that is running. Each import starts a new one.
DxImportReport DxGetImportReport();
/// The report of the export that ran last, or of the one that is running.
DxExportReport DxGetExportReport();
/// Forgets the last import.
void DxResetImportReport();
