// What the command line asks for.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// Options of all commands that read drawings.
struct ReadOptions {
    bool threeD = false;
    std::string space = "model";        ///< model, paper, all
    std::string config;                 ///< configuration file that rules alone
    bool plain = false;                 ///< the module's own defaults
    bool center = false;                ///< middle of the extents at the origin
    int unit = 0;                       ///< host unit code that the numbers are in, 0: the file's
    int convertUnit = 0;                ///< host unit code that lengths are converted to, 0: stay
    bool strict = false;                ///< a loss fails the command
    std::vector<std::string> variables; ///< "&Name=number" or "$Name=text"
    std::size_t maxElements = 0;        ///< 0: the host's own limit
    bool passport = false;              ///< look for what a DXF file says of itself
};

/// Options of the command that judges files.
struct CheckOptions {
    std::string level = "note";     ///< mildest findings to show: error, warning, note
    std::vector<int> only, ignored; ///< rules by number
    bool repairs = false;           ///< write mended files
    std::string repaired;           ///< the mended file's name, empty with a folder for them
};

struct Options {
    ReadOptions read;
    CheckOptions check;
    std::vector<std::string> inputs;
    std::string output;    ///< file
    std::string directory; ///< for several inputs
    int jobs = 1;
    bool quiet = false, verbose = false;
    bool json = false, strict = false, dark = false;
    bool dumpModel = false, extractSolids = false; ///< of sat
    bool binary = false;                           ///< write binary DXF
    std::string paper;                             ///< of a picture: A0 … A5 or WxH in millimetres
    std::string scale = "fit";                     ///< of a picture on paper: 1:50, fit
    double margin = 10;                            ///< of a picture on paper, millimetres
    bool landscape = false;
    bool mono = false;          ///< all lines black
    bool allLayers = false;     ///< pictures show what isn't shown, too
    bool allViews = false;      ///< a picture, or a page, for each view
    bool legible = false;       ///< no colour too near to the background's
    std::string pictureType;    ///< png, svg, pdf; empty: by the picture's name
    std::string text;           ///< of SVG: text, outline; empty: outline
    std::vector<double> window; ///< x1, y1, x2, y2 of the model; empty: all of it
    int size = 1200;
    std::string view;
    std::vector<double> direction;      ///< of the viewer; empty: from above
    bool hidden = false, shade = false; ///< lines behind faces left out; faces lit
    std::string format;                 ///< of an export: ACAD32 … ACAD11, EASY; empty: the newest
    std::vector<std::string> confine;   ///< folders that the run is confined to; none: it isn't
    std::string language;               ///< "de", "en", empty: by the locale
};

/// Exit status of the command.
enum Status : int {
    STATUS_DONE = 0,
    STATUS_FAILED = 1, ///< an import or export ended with an error
    STATUS_USAGE = 2,  ///< wrong usage
};

// The commands, a file each. Result: the exit status.
int runImport(const Options& options);
int runRender(const Options& options);
int runInfo(const Options& options);
int runDump(const Options& options);
int runExport(const Options& options);
int runConvert(const Options& options);
int runSat(const Options& options);
int runValidateCommand(const Options& options);

} // namespace tool
