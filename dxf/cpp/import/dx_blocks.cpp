#include "dx_blocks.h"

#include "../config/dx_layers.h"
#include "../config/dx_linetypes.h"
#include "../sections/dx_header_import.h"
#include "../sections/dx_objects_import.h"
#include "../sections/dx_section.h"
#include "../sections/dx_tables_import.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "blocks_state.h"
#include "import_state.h"

#include <new>
#include <string>

namespace {

constexpr int EXTERNAL_REFERENCE = 4;
constexpr int LONGEST_VALUE = 2048;
constexpr int END_OF_FILE = 9003;
constexpr int TABLE_FULL = 2360;
constexpr int NOT_OPENED = 9001;

/// Groups of a BLOCK that were there; the others come from its layer.
struct Given {
    bool colour = false;
    bool lineType = false;
};

void takeGroup(const DxPair& pair, DX_BLOCK_TYPE& rec, Given& given) {
    switch (pair.code) {
    case 1: rec.path = DxHostText(pair.text); break;
    case 2: rec.name.assign(pair.text); break;
    case 5: rec.handle = DxHexToU32(pair.text); break;
    case 6:
        rec.lineType.assign(pair.text);
        given.lineType = true;
        break;
    case 8: rec.layer.assign(pair.text); break;
    case 10: rec.base.x = DxfReadConvDouble(pair.text); break;
    case 20: rec.base.y = DxfReadConvDouble(pair.text); break;
    case 30: rec.base.z = DxfReadConvDouble(pair.text); break;
    case 62:
        rec.color = DxAtoi(pair.text);
        given.colour = true;
        break;
    case 70: rec.flags = DxAtoi(pair.text); break;
    default: break;
    }
}

void takeFromLayer(DX_BLOCK_TYPE& rec, const Given& given) {
    const DX_LAYER_TYPE* layer = DxFindLayer(rec.layer.view());
    if (!given.colour) rec.color = layer ? layer->color : 8;
    if (given.lineType) return;
    if (layer)
        rec.lineType = layer->lineType;
    else
        rec.lineType.assign(DxFirstLinetype());
}

/// Notes what the entities of a block are, while the section is scanned.
class ContentScan {
public:
    explicit ContentScan(DX_BLOCK_TYPE& block) : block_(block) {}

    void take(const DxPair& pair) {
        if (pair.code == 0) {
            isInsert_ = pair.text == "INSERT";
            block_.entities += 1;
        } else if (pair.code == 2 && isInsert_) {
            isInsert_ = false;
            addInsert(pair.text);
        }
    }

private:
    void addInsert(std::string_view name) {
        auto& inserts = block_.inserts;
        if (!inserts.empty() && inserts.back().block == name)
            ++inserts.back().count;
        else
            inserts.push_back({std::string(name), 1});
    }

    DX_BLOCK_TYPE& block_;
    bool isInsert_ = false;
};

/// Reads up to the next block or the end of the section, which `pair` holds then.
int scanContent(DX_BLOCK_TYPE& block, DxPair& pair) {
    ContentScan scan(block);
    for (bool ended = false;;) {
        if (const int error = DxReadPair(pair, 161, DxShowsPercent())) return error;
        if (pair.code == 0 && (pair.text == "BLOCK" || pair.text == "ENDSEC")) return 0;
        ended = ended || (pair.code == 0 && pair.text == "ENDBLK");
        if (!ended) scan.take(pair);
    }
}

/// The sections of an external reference's file up to its ENTITIES, which become the block's, and what stands
/// behind them. Such a file may end behind its ENTITIES.
int readReferencedFile(DX_BLOCK_TYPE& block) {
    int error = DxReadUntil(0, "SECTION");
    if (!error) error = DxIgnoreSections();
    if (!error) error = DxReadReferenceHeader();
    if (!error) error = DxIgnoreSections();
    if (!error) error = DxReadTableSection(0);
    if (!error) error = DxIgnoreSections();
    if (!error) error = DxReadBlockSection();
    if (!error) error = DxIgnoreSections();
    if (error) return error;
    DxfDocument& document = DxDocuments.requireCurrent();
    document.entitiesPos = DxReadTell();
    block.document = &document;
    block.filePos = document.entitiesPos;
    error = DxReadUntil(0, "SECTION");
    if (!error) error = DxIgnoreSections();
    if (!error) error = DxReadObjectsSection();
    return error == END_OF_FILE ? 0 : error;
}

/// Whether the entities of this document are those that are being read: the main file's always are.
bool isBeingDrawn(const DxfDocument& document) {
    if (!document.parent.Get()) return true;
    for (int level = DxBlockLevel; level >= 1; --level) {
        const DX_BLOCK_TYPE* block = DxInsertStack[static_cast<std::size_t>(level)].block;
        if (block && block->flags & EXTERNAL_REFERENCE && block->document == &document) return true;
    }
    return false;
}

} // namespace

int DxReadBlock(DX_BLOCK_TYPE* rec) {
    *rec = DX_BLOCK_TYPE{};
    Given given;
    DxPair pair;
    for (;;) {
        const std::int32_t before = DxReadTell();
        if (const int error = DxReadPair(pair, LONGEST_VALUE)) return error;
        if (pair.code == 0) {
            takeFromLayer(*rec, given);
            return DxReadSeek(before);
        }
        takeGroup(pair, *rec, given);
    }
}

int DxSetBlock(DX_BLOCK_TYPE* rec) {
    DxfDocument& document = DxDocuments.requireCurrent();
    rec->filePos = DxReadTell();
    rec->document = &document;
    try {
        document.addBlock(*rec);
    } catch (const std::bad_alloc&) {
        return TABLE_FULL;
    }
    return 0;
}

int DxReadBlockSection() {
    bool found = false;
    const int error = DxEnterSection("BLOCKS", found);
    if (error || !found) return error;
    DxPair pair;
    for (;;) {
        if (pair.code == 0 && pair.text == "ENDSEC") return DxReadUntil(0, "SECTION");
        if (pair.code == 0 && pair.text == "BLOCK") {
            DX_BLOCK_TYPE block;
            if (const int end = DxReadBlock(&block)) return end;
            if (const int full = DxSetBlock(&block)) return full;
            if (const int end = scanContent(DxDocuments.requireCurrent().blocks.back(), pair)) return end;
        } else if (const int end = DxReadPair(pair, 161, DxShowsPercent())) {
            return end;
        }
    }
}

int DxReadXRefBlocks(DX_BLOCK_TYPE& block) {
    const bool isResolved = block.filePos == block.document->entitiesPos;
    if (DxfDocument* const open = isResolved ? block.document : DxDocuments.findOpen(block.path)) {
        if (open->entitiesPos < 0 || isBeingDrawn(*open)) return NOT_OPENED; // no drawing, or a ring
        block.document = open;
        block.filePos = open->entitiesPos;
        return 0;
    }
    DX_SAVE save;
    DxSaveActPos(&save);
    if (!DxDocuments.open(block.path, "rb")) return NOT_OPENED;
    const int error = readReferencedFile(block);
    const int restored = DxRestoreActPos(&save);
    return error ? error : restored;
}

void DxGetBlock(std::string_view name, DxfEntityFileReference& reference) {
    DX_BLOCK_TYPE* block = DxDocuments.current_ ? DxDocuments.current_->findBlockOutwards(name) : nullptr;
    if (!block) return;
    if (block->flags & EXTERNAL_REFERENCE && DxReadXRefBlocks(*block) != 0) {
        DxProtoMsg(UtFormat("External reference %s can't be read!", block->path.c_str()), 1);
        return;
    }
    reference.block = block;
    DxReadDropPending();
    reference.place.emplace(block->document->file.Get(), block->filePos, "ENDBLK", 0);
}

bool DxWantDefinition(const DX_BLOCK_TYPE& block) {
    constexpr int externalReference = 4;
    const DxfDocument* const document = DxDocuments.current_;
    if ((block.flags & externalReference) || !document || block.document != document ||
        document->parent.Get())
        return false;
    const auto [name, isNew] = DxDefinitionNames.emplace(block.name.view());
    if (isNew) DxDefinitionsWanted.push_back(*name);
    return true;
}
