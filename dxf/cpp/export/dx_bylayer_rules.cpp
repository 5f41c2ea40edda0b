#include "dx_bylayer_rules.h"

#include "../session/dx_messages.h"
#include "ci.h"
#include "ci_objects.h"
#include "ci_text.h"
#include "go.h"
#include "ut.h"
#include "ut_excel.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>

namespace {

/// Keys that belong to one kind of pattern.
struct KeyObject {
    std::string_view key, object;
};
constexpr KeyObject KEY_OBJECTS[] = {
    {"windowaxis", "windowplan"}, {"dooraxis", "doorplan"},     {"wallhatch", "wallplan"},
    {"walluncut", "wallplan"},    {"columnhatch", "columnvol"},
};

UtCString objectOf(const UtCString& key) {
    for (const KeyObject& row : KEY_OBJECTS)
        if (key.str() == row.key) return UtCString(row.object);
    return {};
}

unsigned leadingNumber(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    unsigned value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

void splitPenAndLineType(const UtCString& cell, DxLayerRule& rule) {
    const std::string& text = cell.str();
    const auto comma = text.find(',');
    rule.pen = leadingNumber(text);
    if (comma != std::string::npos) rule.lineType = leadingNumber(std::string_view(text).substr(comma + 1));
}

UtCString withLayer(const UtCString& target, const UtCString& layer) {
    std::string text = target.str();
    for (auto at = text.find("<>"); at != std::string::npos; at = text.find("<>", at + layer.Len()))
        text.replace(at, 2, layer.str());
    return text;
}

UtCString attribute(const DsCsr& cursor, const char* name) {
    UtCString value;
    CiPat(0).GetAttr(cursor, name, &value);
    return value;
}

} // namespace

/// What the scan looks at in a pattern.
struct DxCiByLayerTable::PatternFacts {
    DsCsr cursor;
    UtCString layer, object;
    bool axisTest = false;
    int cutPen = 0, cutLineType = 0; ///< of the cut edge of a wall, 0: unknown
};

int DxCiByLayerTable::read(const UtCString& path) {
    UtExcel sheet;
    if (!UtIsFile(path) || sheet.Open(path) != 0) {
        const UtCString words = DxMsg(5809, path.c_str());
        GoDoShowErrorEx(4, words);
        return 0;
    }
    int error = sheet.Load();
    if (!error) error = sheet.SetActWorksheet(1);
    for (int row = 2; !error; ++row) {
        UtCString key;
        if (sheet.ReadCellString(row, 1, &key) != 0 || key.IsEmpty()) break;
        DxLayerRule rule;
        rule.key = key.Lower();
        rule.object = objectOf(rule.key);
        UtCString pens;
        if (sheet.ReadCellString(row, 2, &rule.layer) != 0) rule.layer = UtCString();
        if (sheet.ReadCellString(row, 3, &pens) != 0) pens = UtCString();
        splitPenAndLineType(pens, rule);
        error = sheet.ReadCellString(row, 4, &rule.target);
        if (!error) rules_.push_back(std::move(rule));
    }
    sheet.Close();
    return error;
}

/// The first rule of this key whose layer is empty or the pattern's.
const DxLayerRule* DxCiByLayerTable::named(const char* key, const PatternFacts& facts) const {
    for (const DxLayerRule& rule : rules_)
        if (rule.key == key && (rule.layer.IsEmpty() || rule.layer == facts.layer)) return &rule;
    return nullptr;
}

const DxLayerRule* DxCiByLayerTable::elementRule(const PatternFacts& facts, const DsCsr& element) const {
    int pen = 0;
    short lineType = 0;
    unsigned char info = 0;
    CiElem elements(0);
    if (elements.GetParams(element, &pen, &lineType, &info) != 0) return nullptr;
    UtCString object;
    if (facts.axisTest && elements.GetAttr(element, "object", &object) == 0 && object == "centerline")
        if (const auto* rule = named(facts.object == "windowplan" ? "windowaxis" : "dooraxis", facts))
            return rule;
    if (facts.cutPen && pen == facts.cutPen && lineType == facts.cutLineType)
        if (const auto* rule = named("walluncut", facts)) return rule;
    if (pen <= 0) return nullptr;
    for (const DxLayerRule& rule : rules_)
        if (rule.key == "element" && (rule.layer.IsEmpty() || rule.layer == facts.layer) &&
            (rule.pen == 0 || rule.pen == static_cast<unsigned>(pen)) &&
            (rule.lineType == 0 || (rule.lineType & 0xFFFFU) == static_cast<unsigned short>(lineType)))
            return &rule;
    return nullptr;
}

void DxCiByLayerTable::scanElements(const PatternFacts& facts) {
    CiElem elements(0);
    DsCsr element = facts.cursor;
    int type = 0;
    for (int end = elements.First(element, &type); !end; end = elements.Next(element, &type)) {
        if (type < 2 || type > 4) continue;
        if (const auto* rule = elementRule(facts, element))
            elements_.push_back({element.Get().elRow, withLayer(rule->target, facts.layer)});
    }
}

void DxCiByLayerTable::addClass(int objectClass, const DxLayerRule* rule, const PatternFacts& facts) {
    if (rule) wholeClasses_.push_back({objectClass, withLayer(rule->target, facts.layer)});
}

void DxCiByLayerTable::scan(int pat) {
    wholeClasses_.clear();
    elements_.clear();
    pat_ = pat;
    PatternFacts facts;
    if (DsCursorFromPatNo(pat, &facts.cursor) != 0) return;
    facts.layer = attribute(facts.cursor, "layer");
    facts.object = attribute(facts.cursor, "object");
    if (facts.object == "dxf-export") facts.object = attribute(facts.cursor, "obsource");
    bool matches = false;
    for (const DxLayerRule& rule : rules_)
        matches = matches || rule.layer == facts.layer || rule.object == facts.object;
    if (!matches) return;

    const bool window = facts.object == "windowplan";
    const bool door = facts.object == "doorplan";
    const bool wall = facts.object == "wallplan";
    facts.axisTest = window || door;
    DsCsr parent;
    if (wall && CiPat(0).GetParent(facts.cursor, parent) == 0 &&
        (attribute(parent, "object") == "wall" || attribute(parent, "obsource") == "wall")) {
        int cut = 0;
        int pen = 0;
        int lineType = 0;
        if (std::sscanf(attribute(parent, "heightcut").c_str(), "%d,%d,%d", &cut, &pen, &lineType) == 3 &&
            cut > 0) {
            facts.cutPen = pen;
            facts.cutLineType = lineType;
        }
    }
    scanElements(facts);

    // A rule of a class must name the pattern's layer; the rules of walls, doors and windows may leave it
    // open.
    const auto general = [&](const char* key) {
        const DxLayerRule* found = nullptr;
        for (const DxLayerRule& rule : rules_)
            if (!found && rule.key == key && rule.layer == facts.layer) found = &rule;
        return found;
    };
    const auto special = [&](const char* key, const char* otherwise) {
        const DxLayerRule* rule = key ? named(key, facts) : nullptr;
        return rule ? rule : general(otherwise);
    };
    DsCsr content = facts.cursor;
    if (CiHatch(0).First(content) == 0)
        addClass(DX_OB_HATCH,
                 special(wall                          ? "wallhatch"
                         : facts.object == "columnvol" ? "columnhatch"
                                                       : nullptr,
                         "hatch"),
                 facts);
    content = facts.cursor;
    if (CiText(0).First(content) == 0)
        addClass(DX_OB_TEXT, special(window ? "windowtext" : door ? "doortext" : nullptr, "text"), facts);
    content = facts.cursor;
    if (CiArrow(0).First(content) == 0) addClass(DX_OB_ARROW, general("arrow"), facts);
}

UtCString DxCiByLayerTable::lookUp(int pat, int row, int kind) {
    if (pat != pat_) scan(pat);
    static constexpr int CLASSES[] = {DX_OB_ELEMENT, DX_OB_TEXT, DX_OB_HATCH, 0, DX_OB_ARROW, 0};
    const int objectClass = kind >= 0 && kind <= 5 ? CLASSES[kind] : 0;
    if (!objectClass) return {};
    for (const DxLayerClass& result : wholeClasses_)
        if (result.objectClass == objectClass) return result.name;
    if (objectClass != DX_OB_ELEMENT) return {};
    const auto found = std::lower_bound(elements_.begin(), elements_.end(), row,
                                        [](const ElementName& e, int wanted) { return e.row < wanted; });
    return found == elements_.end() || found->row != row ? UtCString() : found->name;
}
