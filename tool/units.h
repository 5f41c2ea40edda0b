// Length units of the command line and of DXF files.
#pragma once

#include <string>

namespace tool {

/// Host unit code of a word such as "mm" or "inch", 0 for none.
int unitFromWord(const std::string& word);
std::string unitWord(int code);

/// What a value of $INSUNITS means.
struct FileUnit {
    const char* name;   ///< English, for reports
    int code;           ///< host unit, the nearest where the host lacks it
    double inMm;        ///< its length; 0 where the file gives none
    bool exact = false; ///< the host has it
};
FileUnit unitOfFile(int insUnits);

} // namespace tool
