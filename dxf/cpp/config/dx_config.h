// Configuration files and macro variables.
#pragma once

#include "config_state.h"

#include <cstdio>

int DxReadConfig(const UtCString& name, int isExport);      ///< A ".dxd" file.
int DxReadDefaultFile(const UtCString& name, int isExport); ///< The older keyword file.
int DxUnitNameToCAD(const char* name);                      ///< Host unit code of a unit word, 0 for none.
/// Reads the macro variables that are switches of a session; once ahead of the configuration.
void DxReadSwitches(int isExport);
/// Builds the conversion tables behind the configuration: colours, fills, line types.
int DxBuildTables();
