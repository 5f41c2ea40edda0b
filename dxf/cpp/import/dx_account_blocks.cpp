#include "dx_account_blocks.h"

#include "../session/dx_documents.h"
#include "dx_account_place.h"
#include "dx_entity_walk.h"
#include "import_state.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::string_view PAPER_SPACE = "*PAPER_SPACE", MODEL_SPACE = "*MODEL_SPACE";

bool beginsWith(std::string_view name, std::string_view upper) {
    return name.size() >= upper.size() &&
           std::equal(upper.begin(), upper.end(), name.begin(),
                      [](char u, unsigned char c) { return u == std::toupper(c); });
}

/// Anonymous blocks belong to what they were made for, as arrow heads do.
bool isOfUser(const DX_BLOCK_TYPE& block) {
    constexpr int externalReference = 4;
    const std::string_view name = block.name.view();
    return block.entities > 0 && !name.empty() && name[0] != '*' && name[0] != '_' &&
           !(block.flags & externalReference);
}

/// Entities of a space, without the viewport that is the sheet itself.
long entitiesOf(const DX_BLOCK_TYPE& block) {
    constexpr int idOfViewport = 69;
    if (DxReadSeek(block.filePos)) return 0;
    long count = 0;
    bool isViewport = false;
    DxPair pair;
    while (!DxReadPair(pair)) {
        if (pair.code == 0) {
            if (DxEndsEntities(pair.text, "ENDBLK")) break;
            ++count;
            isViewport = pair.text == "VIEWPORT";
        } else if (isViewport && pair.code == idOfViewport) {
            if (DxAtoi(pair.text) == 1) --count;
        }
    }
    return count;
}

void addRow(std::string kind, DxReason reason, long count, const DX_BLOCK_TYPE& first,
            std::string_view name) {
    DxUnseen& row = DxReport.unseen.emplace_back();
    row.kind = std::move(kind);
    row.reason = reason;
    row.count = count;
    row.example = DxExampleAt({first.document, first.filePos});
    row.example.handle = first.handle;
    row.example.name = name;
}

std::string_view layoutName(const DxfDocument& document, const DX_BLOCK_TYPE& block) {
    for (const DX_BLOCK_RECORD_TYPE& record : document.tables.blockRecords)
        if (record.name.view() == block.name.view())
            if (const DX_LAYOUT_TYPE* layout = document.objects.layoutOf(record)) return layout->name.view();
    return block.name.view();
}

} // namespace

void DxAccountBlocks() {
    DxfDocument* const document = DxDocuments.current_;
    if (!document) return;
    const DX_BLOCK_TYPE* first = nullptr;
    long count = 0;
    for (const DX_BLOCK_TYPE& block : document->blocks) {
        if (block.isCounted || block.document != document) continue;
        const std::string_view name = block.name.view();
        if (isOfUser(block)) {
            if (!first) first = &block;
            ++count;
        } else if (beginsWith(name, PAPER_SPACE) || beginsWith(name, MODEL_SPACE)) {
            if (const long entities = block.entities > 0 ? entitiesOf(block) : 0)
                addRow("LAYOUT", DxReason::OtherSpace, entities, block, layoutName(*document, block));
        }
    }
    if (count) addRow("BLOCK", DxReason::NotInserted, count, *first, first->name.view());
}
