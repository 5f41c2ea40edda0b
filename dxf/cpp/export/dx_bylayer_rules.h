// The rules of the classification and their match on one pattern.
#pragma once

#include "ds.h"
#include "ut_string.h"

#include <vector>

/// A row of the spreadsheet.
struct DxLayerRule {
    UtCString key;         ///< lower case
    UtCString object;      ///< kind of pattern that the key belongs to, empty for any
    UtCString layer;       ///< wanted "layer" attribute, empty for any
    unsigned pen = 0;      ///< 0: any
    unsigned lineType = 0; ///< 0: any
    UtCString target;      ///< layer name; "<>" stands for the pattern's "layer"
};

/// Object classes of classified content.
enum DxObjectClass : int { DX_OB_ELEMENT = 206, DX_OB_TEXT = 210, DX_OB_HATCH = 215, DX_OB_ARROW = 225 };

/// What a scan found for every element of a class.
struct DxLayerClass {
    int objectClass = 0;
    UtCString name;
};

/// The rule list and the results of the pattern that was asked for last.
class DxCiByLayerTable {
public:
    /// Reads the rules. 0, or the spreadsheet's error for a row without a target; a file that isn't there is
    /// shown in a dialog and leaves the table empty.
    int read(const UtCString& path);
    /// The layer name for an element of a pattern, empty for none.
    UtCString lookUp(int pat, int row, int kind);

private:
    struct PatternFacts;
    struct ElementName {
        int row;
        UtCString name;
    };
    void scan(int pat);
    void scanElements(const PatternFacts& facts);
    const DxLayerRule* elementRule(const PatternFacts& facts, const DsCsr& element) const;
    const DxLayerRule* named(const char* key, const PatternFacts& facts) const;
    void addClass(int objectClass, const DxLayerRule* rule, const PatternFacts& facts);

    std::vector<DxLayerRule> rules_;
    // Results of pattern pat_.
    std::vector<DxLayerClass> wholeClasses_;
    std::vector<ElementName> elements_; ///< ascending rows
    int pat_ = -1;
};
