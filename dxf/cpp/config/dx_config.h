// Configuration files and macro variables.
#pragma once

#include "config_state.h"

#include <cstdio>
#include <string_view>

/// Reads a ".dxd" file and the special file for characters behind it. A file that can't be opened is reported
/// and leaves all defaults: 0. Non-zero for a file without "#EOF" and for a table that couldn't grow.
int DxReadConfig(const UtCString& name, int isExport);
/// Reads the older keyword file: `name`.read or `name`.write if there is one, else `name`. 1006 for a line
/// that can't be understood, which ends the reading.
int DxReadDefaultFile(const UtCString& name, int isExport);
/// Takes one line of the older file. 0 or 1006.
int DxDecodeLine(std::string_view line);
/// Takes one entry of ORDER for an element class; an unknown word changes nothing.
void DxDecodeOrder(int elementClass, std::string_view text);
/// Host unit code of a unit word, judged by its first letters; 0 for none.
int DxUnitNameToCAD(std::string_view name);

/// Reads the macro variables that are switches of a session; once ahead of the configuration.
void DxReadSwitches(int isExport);
/// &DxfUserLtScale, which overrides LT_SCALE; at the end of a configuration.
void DxReadUserLtScale();
/// &DxfBlockCopies of an export that can have copies of blocks; behind the configuration.
void DxReadBlockCopies();
/// Tells the protocol which spaces DxReadSpace stands for.
void DxReportReadSpace();
/// Builds the conversion tables behind the configuration: colours, fills, line types. 0 or the host's
/// allocation error.
int DxBuildTables();
