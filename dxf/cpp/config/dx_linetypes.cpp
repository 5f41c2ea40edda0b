#include "dx_linetypes.h"

#include "../import/import_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "dx_colors.h"

#include <algorithm>

namespace {

/// A dash pattern that a name stands for, lengths as DXF gives them: dash positive, gap negative, dot 0.
struct BuiltInLinetype {
    std::string_view names[3]; ///< English name, German names
    std::string_view description;
    double totalLength;
    int elementCount;
    double dashes[6];
};

// clang-format off
constexpr BuiltInLinetype BUILT_IN[] = {
    {{"CONTINUOUS", "AUSGEZOGEN", {}}, "Solid line", 0.0, 0, {}},
    {{"DASHED", "STRICHLINIE", "GESTRICHELT"}, "__ __ __ __ __ __ __ __ __ __ __ __ __ __ __ ",
     0.75, 2, {0.5, -0.25}},
    {{"HIDDEN", "VERDECKT", {}}, "_ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _ _",
     0.375, 2, {0.25, -0.125}},
    {{"CENTER", "MITTE", {}}, "____ _ ____ _ ____ _ ____ _ ____ _ ____ _ ____",
     2.0, 4, {1.25, -0.25, 0.25, -0.25}},
    {{"PHANTOM", {}, {}}, "_____ _ _ _____ _ _ _____ _ _ _____ _ _ ____",
     2.5, 6, {1.25, -0.25, 0.25, -0.25, 0.25, -0.25}},
    {{"DOT", "PUNKT", {}}, "...............................................",
     0.25, 2, {0.0, -0.25}},
    {{"DASHDOT", "STRICHPUNKT", {}}, "__ . __ . __ . __ . __ . __ . __ . __ . __ . __",
     1.0, 4, {0.5, -0.25, 0.0, -0.25}},
    {{"BORDER", "RAND", {}}, "__ __ . __ __ . __ __ . __ __ . __ __ . __ __",
     1.75, 6, {0.5, -0.25, 0.5, -0.25, 0.0, -0.25}},
    {{"DIVIDE", "GETRENNT", {}}, "__ . . __ . . __ . . __ . . __ . . __ . . __",
     1.25, 6, {0.5, -0.25, 0.0, -0.25, 0.0, -0.25}},
};
// clang-format on
constexpr int ALIGNMENT_A = 65; // the character code that group 72 always holds

const BuiltInLinetype& findBuiltIn(std::string_view name, std::string_view alias) {
    for (const BuiltInLinetype& row : BUILT_IN)
        for (const std::string_view known : row.names)
            if (!known.empty() && (known == name || known == alias)) return row;
    return BUILT_IN[0];
}

bool equalsIgnoringCase(std::string_view text, std::string_view upper) {
    return text.size() == upper.size() &&
           std::equal(text.begin(), text.end(), upper.begin(),
                      [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b; });
}
bool isByBlock(std::string_view name) {
    return equalsIgnoringCase(name, "BYBLOCK");
}
bool isByLayer(std::string_view name) {
    return name.empty() || equalsIgnoringCase(name, "BYLAYER");
}

/// The line type that the INSERTs around an entity give it, from the innermost outwards.
std::string_view findBlockLinetype() {
    const int top = std::min(DxBlockLevel, static_cast<int>(DxInsertStack.size()) - 1);
    for (int level = top; level >= 0; --level) {
        const std::string_view name = DxInsertStack[static_cast<std::size_t>(level)].lineType.view();
        if (!isByBlock(name)) return name;
    }
    return {};
}

} // namespace

void DxInitLType(DX_LTYPE_TYPE* lineType) {
    *lineType = DX_LTYPE_TYPE{};
    lineType->alignment = ALIGNMENT_A;
}

void DxInitLinetypes(std::string_view name, std::string_view alias, int index) {
    DX_LTYPE_TYPE& record = DxDocuments.currentTables().lineTypes[static_cast<std::size_t>(index)];
    const BuiltInLinetype& row = findBuiltIn(name, alias);
    record.description.assign(row.description);
    record.elementCount = row.elementCount;
    record.totalLength = row.totalLength;
    std::copy(row.dashes, row.dashes + row.elementCount, record.dashes);
    record.flags = 0;
    record.alignment = ALIGNMENT_A;
}

int DxAddLinetype(int number, std::string_view name) {
    DX_LTYPE_TYPE record;
    DxInitLType(&record);
    record.number = number;
    record.name.assign(name);
    record.description.assign("Solid line");
    return DxDocuments.currentTables().lineTypes.add(record);
}

std::string_view DxFirstLinetype() {
    const auto& lineTypes = DxDocuments.currentTables().lineTypes;
    return lineTypes.empty() ? std::string_view() : lineTypes[0].name.view();
}

int DxResolveLinetype(const DX_ENTITY_BASE_TYPE& entity, std::string_view layerLineType) {
    constexpr int UNKNOWN = 1;
    std::string_view name = entity.lineType.view();
    if (isByBlock(name)) name = findBlockLinetype();
    if (isByLayer(name)) {
        const bool onLayerZero = entity.layer.empty() || entity.layer.view() == "0";
        name = DxBlockLevel > 0 && onLayerZero ? DxActLt.view() : layerLineType;
    }
    if (name.empty()) name = DxFirstLinetype();
    if (const int* number = DxLtToCadIndex.find(DxLtToCad, name)) return *number;
    if (DxLtToCadIndex.learnUnknown(name, UNKNOWN)) DxProtoMsg(DxMsg(5704, std::string(name).c_str()), 1);
    return UNKNOWN;
}
