#pragma once
// A small valid DXF of any version, group by group, for tests that break it in one place.

#include "dxf_text.h"

#include <string>
#include <utility>
#include <vector>

/// The groups of a file; each change names the record by its kind and says which of that kind, from 1.
class DxfFile {
public:
    DxfGroups groups;

    DxfFile& set(const std::string& record, int code, const std::string& value, int nth = 1);
    DxfFile& drop(const std::string& record, int code, int nth = 1);
    /// Adds groups at the end of the record.
    DxfFile& put(const std::string& record, const DxfGroups& more, int nth = 1);
    /// Adds groups behind the first group of this code.
    DxfFile& putBehind(const std::string& record, int code, const DxfGroups& more, int nth = 1);
    /// Adds groups in front of the record.
    DxfFile& before(const std::string& record, const DxfGroups& more, int nth = 1);
    /// Removes the whole record.
    DxfFile& cut(const std::string& record, int nth = 1);
    /// Removes a section, a table or a block with all it holds: from the record with this name to the one
    /// that ends it.
    DxfFile& cutNamed(const std::string& record, const std::string& name, const std::string& end);
    /// The groups from the record with this name to the one that ends it.
    DxfGroups copyNamed(const std::string& record, const std::string& name, const std::string& end);

    std::string text() const;

private:
    size_t find(const std::string& record, int nth) const;
    size_t findGroup(const std::string& record, int code, int nth) const;
    std::pair<size_t, size_t> rangeNamed(const std::string& record, const std::string& name,
                                         const std::string& end) const;
};

/// The file for 9 (AC1009), 12, 14, 15, 18, 21, 24, 27 or 32.
DxfFile validFile(int version);
