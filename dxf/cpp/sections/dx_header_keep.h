// Header variables that a drawing keeps from the file it came from: a pattern of its own holds them as a text
// of lines "NAME=value,value".
#pragma once

#include "ut_string.h"

#include <vector>

/// Keeps the file's variables that "Dxf.var" lists, with the reader just behind the name of the HEADER
/// section; it stands at the section's end then. At most 400 lines of at most 80 bytes. 0 or the reader's
/// error.
int DxHeaderMakeDrawingHeader();
/// The lines that the drawing keeps; none when it keeps nothing. Sets DxHeaderPat. 0 or the
/// host's error.
int DxHeaderReadDrawingHeader(std::vector<UtCString>* lines);
