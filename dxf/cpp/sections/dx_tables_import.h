// The TABLES section on import, and the tables' own functions.
#pragma once

#include "dx_tables.h"
#include "ut_string.h"

#include <string_view>

/// What DxReadTableSection reads.
enum DxTableMode : unsigned long {
    DX_TABLES_IMPORT = 0,   ///< LAYER, STYLE, VIEW, DIMSTYLE, BLOCK_RECORD
    DX_TABLES_TEMPLATE = 1, ///< LAYER, LTYPE: a template of an export
};

/// Reads the TABLES section into the current tables of the document. Entered behind 0 / "SECTION", leaves the
/// reader behind the next one. A missing section is a warning; a record that the tables have no room for is
/// lost. 0 or the reader's error.
int DxReadTableSection(unsigned long mode);

/// Adds a text style, or replaces the one of that name; `index` tells where. 0 or 2360.
int DxTableAddStyle(const DX_STYLE_TYPE* rec, int* index);
/// Finds a style of equal height, factors, angle, marks and fonts. 0 or 1005.
int DxTableGetStyleIndex(const DX_STYLE_TYPE& rec, int& index);
/// Cleans a font file name: lower-case, without ".shx" and what follows, without its path.
void DxConvStyleFilename(std::string_view source, DX_NAME* target);

int DxTableAddBlockRecord(std::string_view name, unsigned long handle, unsigned long layoutHandle,
                          unsigned long third); ///< 0 or 2360.

/// Stores a value of a dimension style by its group number; groups that it hasn't are ignored.
void DxfReadDimStyleValue(DX_DIM_STYLE* rec, int code, std::string_view value);
