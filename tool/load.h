// Bringing an input, a DXF file or a drawing file, into the open drawing.
#pragma once

#include "options.h"

#include "dx_report.h"
#include "passport_scan.h"
#include "source_scan.h"

#include <string>
#include <vector>

namespace tool {

/// What became of an input.
struct Loaded {
    bool imported = false;              ///< a DXF file, not a drawing file
    int stat = 0;                       ///< outcome: 0 or the error's number
    std::string error;                  ///< why nothing could be loaded at all, in words
    std::vector<std::string> messages;  ///< all that the run reported, in order
    std::vector<std::string> important; ///< those of them that call for attention, and the tool's own
    DxImportReport report;
    SourceScan scan;       ///< of a DXF file that was imported to be kept
    PassportScan passport; ///< where it is asked for
    double seconds = 0;
};

/// What to say of a DWG when no program is named that converts it.
std::string missingConverter(const std::string& name);

/// Why the file of --config can't be read; empty where it can, or none is given. The module would go on
/// without.
std::string whyNoConfig(const Options& options);

/// The macro variables of --set, for the run to come; a run uses most of them up.
void setUserVariables(const Options& options);

/// Makes the open drawing a fresh one and loads the input into it. "-" is standard input. `isAlone`: no
/// other input is being worked on at the same time, so that a progress bar may be shown.
Loaded loadInput(const std::string& input, const Options& options, bool isAlone);

/// What the host said of pictures that it can't show or write.
std::vector<std::string> pictureFaults();

/// Tells the messages on standard error, as far as the options ask for them.
/// Result: STATUS_DONE, or STATUS_FAILED when the input ended with an error.
int tellOutcome(const std::string& input, const Loaded& loaded, const Options& options);

} // namespace tool
