// Readers of the table records: each is entered behind 0 / its kind, ends at the next group 0, which it hands
// back, and adds the record to the current tables. 0, the reader's error, or 2360 for a table that can't
// grow.
#pragma once

#include <string>
#include <unordered_map>

/// Finds rows of a table by name while the section is read; made anew for each section.
using DxNameIndex = std::unordered_map<std::string, int>;

struct DxTableNames {
    DxNameIndex lineTypes; ///< upper-cased names
    DxNameIndex styles;
};

int DxReadLayer(DxTableNames& names);
int DxReadLType(DxTableNames& names);
int DxReadStyle(DxTableNames& names);
int DxReadView(DxTableNames& names);
int DxReadDimStyle(DxTableNames& names);
int DxReadBlockRecord(DxTableNames& names);
