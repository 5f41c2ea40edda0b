// Attributes on their way out: their names, and those that a block's INSERT carries.
#pragma once

#include "dx_insert.h"
#include "ut_string.h"

#include <vector>

void DxAttribInit(); ///< Reads the name pairs of the file "write_attr", if there is one.
void DxAttribEnd();  ///< Frees names and what was gathered.
/// DXF name of a host attribute; empty for one that isn't written.
UtCString DxAttribConvert(const UtCString& hostName);
/// Keeps a copy for the block that is being written. 0 or 1001.
int DxAttribAdd(const DX_ATTRIB_TYPE* attrib);
/// Hands over what was gathered.
int DxAttribMove(std::vector<DX_ATTRIB_TYPE>* attribs);
