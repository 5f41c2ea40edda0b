#include "dx_write_placed.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../config/dx_names.h"
#include "../dimension/dx_write_dimension.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_numbers.h"
#include "../session/session_state.h"
#include "dx_block_table.h"
#include "dx_codes.h"
#include "dx_layer_choice.h"
#include "dx_pattern_walk.h"
#include "dx_write_blocks.h"
#include "dx_write_entities.h"
#include "dx_write_origin.h"
#include "export_state.h"
#include "origin.h"
#include "ov.h"
#include "uo.h"

namespace {

/// Blocks hold other blocks than those of patterns only when patterns aren't blocks themselves.
bool isWanted() {
    return DxKeepBlocks && DxModus == 2 && !DxPatternToBlock && !DxBlockCopies && !DxUseByLayer &&
           DxWriteVersion != DX_FORMAT_EASY;
}

int numberOf(std::string_view block) {
    const auto found = DxDefinitionNumbers.find(std::string(block));
    return found == DxDefinitionNumbers.end() ? 0 : found->second;
}

/// Number of the definition that an INSERT's pattern was drawn from, when it can leave as an INSERT; else 0.
int definitionOf(int pat) {
    bool isIntact = false;
    std::string_view text;
    if (UoPlacedGet(pat, &isIntact, &text) != 0 || !isIntact) return 0;
    const std::vector<DX_KEPT_ENTITY> entities = DxKeptEntities(text);
    return DxCanWriteKept(entities) ? numberOf(entities.front().value(2)) : 0;
}

int rememberedDefinitionOf(int pat) {
    const auto [entry, isNew] = DxPlacedDefinitions.try_emplace(pat, 0);
    if (isNew) entry->second = definitionOf(pat);
    return entry->second;
}

/// Walks the patterns of a definition, or of the drawing's content (0).
template <class Visit>
int eachPattern(int definition, Visit visit) {
    const int around = UoDefinitionOpen(definition);
    int pat = -1;
    int error = Dxovpat(145, &pat);
    while (!error) {
        error = visit(pat);
        if (!error) error = Dxovpat(145, &pat);
    }
    UoDefinitionOpen(around);
    return error == DX_ERR_NO_MORE ? 0 : error;
}

void indexDefinitions() {
    UtCString name;
    std::string_view text;
    for (int number = 1; UoDefinitionGet(number, &name, &text) == 0; ++number)
        DxDefinitionNumbers.emplace(name.str(), number);
}

/// The definitions that are inserted from one, or from the content, behind those that are known.
int addInserted(int from, std::vector<int>& definitions) {
    return eachPattern(from, [&](int pat) {
        const int definition = rememberedDefinitionOf(pat);
        if (definition && DxDefinitionBlocks.try_emplace(definition).second)
            definitions.push_back(definition);
        return 0;
    });
}

/// The name of a block in the file. The star of a name that nobody gave stays.
UtCString blockName(const UtCString& name) {
    const bool isAnonymous =
        name.str().starts_with('*') && !name.Upper().str().starts_with("*D"); // of dimensions
    UtCString own(isAnonymous ? name.str().substr(1) : name.str());
    DxCheckName(own);
    UtCString full((isAnonymous ? "*" : "") + own.str());
    if (DxFindBlockCounter(full)) DxCheckBlockname(full);
    return full;
}

int writeHead(const DX_KEPT_ENTITY& block, const UtCString& name) {
    constexpr int anonymousOrWithAttributes = 3;
    DxOwnerHandle = DxGetNextReference();
    const std::string_view layer = block.value(8);
    DxWriteEntityStart("BLOCK", layer.empty() ? std::string_view("0") : layer);
    DxWriteSubClass("AcDbBlockBegin");
    DxWriteString(2, name);
    DxWriteInt(70, DxAtoi(block.value(70)) & anonymousOrWithAttributes);
    for (const int code : {10, 20, 30}) DxWriteDouble(code, DxAtof(block.value(code)));
    DxWriteString(3, name);
    DxWriteString(1, "");
    return DxTableAddBlockRecord(name.str(), DxOwnerHandle, 0, 0);
}

int writeAttributeDefinitions(const std::vector<DX_KEPT_ENTITY>& entities) {
    for (std::size_t i = 1; i < entities.size(); ++i) {
        const std::vector<DX_KEPT_ENTITY> one{entities[i]};
        if (!DxCanWriteKept(one)) continue;
        UtCString layer(one.front().value(8).empty() ? std::string_view("0") : one.front().value(8));
        DxCheckName(layer);
        DxActLayer.assign(layer.str());
        DxAddLayer(layer.str());
        if (const int error = DxWriteKept(one, {})) return error;
    }
    return 0;
}

int writePattern(int pat) {
    if (rememberedDefinitionOf(pat)) return DxWritePlacedInsert(pat);
    int error = DxWritePattern(pat, DX_PATTERN_DIRECTLY);
    if (!error && !DxDimInBlock) error = DxWritePattern(pat, DX_PATTERN_DIMENSIONS);
    return error;
}

int writeDefinition(int number) {
    UtCString name;
    std::string_view text;
    if (const int error = UoDefinitionGet(number, &name, &text)) return error;
    const std::vector<DX_KEPT_ENTITY> entities = DxKeptEntities(text);
    const UtCString& blockName = DxDefinitionBlocks[number];
    int error = eachPattern(number, DxWriteDimBlock);
    if (!error) error = writeHead(entities.front(), blockName);
    if (!error) error = writeAttributeDefinitions(entities);
    if (!error) error = eachPattern(number, writePattern);
    int open = 1;
    const int ended = DxWriteBlockEnd(open);
    return error ? error : ended;
}

std::vector<std::pair<std::string, std::string>> attributesOf(int pat) {
    std::vector<std::pair<std::string, std::string>> attributes;
    UtCString name, value;
    const std::string prefix(DxAttrPrefix);
    for (int i = 0; UoGetAttr(pat, i, &name, &value) == 0; ++i)
        if (name.str().starts_with(prefix))
            attributes.emplace_back(name.str().substr(prefix.size()), value.str());
    return attributes;
}

} // namespace

bool DxLeavesAsInsert(int pat, int* insert) {
    if (!isWanted()) return false;
    *insert = UoPlacedOwner(pat);
    return *insert && rememberedDefinitionOf(*insert);
}

int DxWriteDefinitions() {
    if (!isWanted()) return 0;
    indexDefinitions();
    std::vector<int> definitions;
    int error = addInserted(0, definitions);
    for (std::size_t i = 0; !error && i < definitions.size(); ++i)
        error = addInserted(definitions[i], definitions);
    for (const int number : definitions) {
        UtCString name;
        std::string_view text;
        if (!error) error = UoDefinitionGet(number, &name, &text);
        if (error) return error;
        DxDefinitionBlocks[number] = blockName(name);
        error = DxAddBlock(DxDefinitionBlocks[number], "0", -1);
    }
    for (auto number = definitions.rbegin(); !error && number != definitions.rend(); ++number)
        error = writeDefinition(*number);
    return error;
}

int DxWritePlacedInsert(int pat) {
    if (const int error = DxPatGetInfo(pat)) return error;
    if (const int error = DxPatSetLayerAttribs(pat, 0, DX_KIND_ELEMENT)) return error;
    DxWriteInvisible = DxIsInvisible(pat);
    std::string_view text;
    if (const int error = UoPlacedGet(pat, nullptr, &text)) return error;
    const std::vector<DX_KEPT_ENTITY> entities = DxKeptEntities(text);
    const auto attributes = attributesOf(pat);
    const UtCString& block = DxDefinitionBlocks[rememberedDefinitionOf(pat)];
    DxStoreMaxXY(DxAtof(entities.front().value(10)), DxAtof(entities.front().value(20)));
    DX_KEPT_CHANGES changes;
    changes.blockName = block;
    changes.attributes = &attributes;
    if (const int error = DxWriteKept(entities, changes)) return error;
    return DxAddLayer(DxActLayer.view());
}
