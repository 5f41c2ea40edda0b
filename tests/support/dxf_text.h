// A builder of DXF texts: what a test reads is the drawing it writes.
//
//   dxf().header("AC1015").layer("A", 3).entity("LINE", {{8, "A"}, {10, "0"}, {20, "0"}, {11, "5"}, {21,
//   "0"}}).text()
#pragma once

#include <map>
#include <string>
#include <vector>

struct DxfGroup {
    int code;
    std::string value;
};
using DxfGroups = std::vector<DxfGroup>;

/// The lines of groups, with the given line end.
std::string dxfLines(const DxfGroups& groups, const std::string& lineEnd = "\n");

class DxfText {
public:
    /// $ACADVER, and any further variables: groups of code 9 and what belongs to them.
    DxfText& header(const std::string& version, const DxfGroups& variables = {});
    DxfText& layer(const std::string& name, int color, const std::string& lineType = "CONTINUOUS",
                   int flags = 0);
    /// A record of table `table`, beginning with its 0 / table.
    DxfText& record(const std::string& table, const DxfGroups& groups);
    /// A block with the groups of its entities, each beginning with its code 0.
    DxfText& block(const std::string& name, const DxfGroups& entities, const DxfGroups& head = {});
    DxfText& entity(const std::string& name, const DxfGroups& groups);
    /// Groups in ENTITIES as they stand.
    DxfText& raw(const DxfGroups& groups);
    /// A whole section of another kind, behind HEADER and ahead of TABLES (unless `last`).
    DxfText& section(const std::string& name, const DxfGroups& groups, bool last = false);
    DxfText& lineEnd(const std::string& text);

    std::string text() const;

private:
    DxfGroups header_, blocks_, entities_, early_, late_;
    std::map<std::string, DxfGroups> tables_;
    std::string lineEnd_ = "\n";
};

DxfText dxf();
