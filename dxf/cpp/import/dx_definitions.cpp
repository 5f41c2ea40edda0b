#include "dx_definitions.h"

#include "../host/dx_host.h"
#include "../host/dx_host_origin.h"
#include "../session/session_state.h"
#include "blocks_state.h"
#include "dx_blocks.h"
#include "dx_entity_section.h"
#include "dx_entity_walk.h"
#include "dx_insert_level.h"
#include "import_state.h"
#include "mt.h"

#include <utility>

namespace {

/// The head of a block as its file has it.
std::string headOf(const DX_BLOCK_TYPE& block) {
    return UtFormat("BLOCK\n8\n%s\n70\n%d\n10\n%.17g\n20\n%.17g\n30\n%.17g\n", block.layer.c_str(),
                    block.flags, block.base.x, block.base.y, block.base.z)
        .str();
}

/// While a block is drawn as a definition: its own coordinates, without the drawing shift.
class DefinitionScope {
public:
    explicit DefinitionScope(const DX_BLOCK_TYPE& block)
        : shiftX_(std::exchange(DxShiftX, 0.0)), shiftY_(std::exchange(DxShiftY, 0.0)),
          counts_(std::exchange(DxCountEntities, 0)), space_(std::exchange(DxActSpace, 0)) {
        DxOpenDefinition = UoDefinitionAdd(block.name.view());
        DxActPat = 0; // the pass has ended, and its last pattern may be gone
        DxOriginDepth = 1;
        DxDefinitionText = headOf(block);
        UoDefinitionOpen(DxOpenDefinition);
    }
    ~DefinitionScope() {
        UoDefinitionText(DxOpenDefinition, DxDefinitionText);
        UoDefinitionOpen(0);
        DxOriginDepth = DxOpenDefinition = 0;
        DxShiftX = shiftX_;
        DxShiftY = shiftY_;
        DxCountEntities = counts_;
        DxActSpace = space_;
    }
    DefinitionScope(const DefinitionScope&) = delete;
    DefinitionScope& operator=(const DefinitionScope&) = delete;

private:
    double shiftX_, shiftY_;
    int counts_, space_;
};

/// The block's own level: layer 0 and ByBlock stay what they are.
DX_INSERT_LEVEL levelOf(const DX_BLOCK_TYPE& block) {
    DX_INSERT_LEVEL level = DxActLevel;
    level.depth = 1;
    level.block = level.topBlock = &block;
    level.layer.assign("0");
    level.space = DxActSpace;
    level.isHidden = 0;
    return level;
}

int drawBlock(const DX_BLOCK_TYPE& block) {
    const DefinitionScope definition(block);
    int error = 0;
    {
        const DxInsertScope scope(levelOf(block));
        Mat44 identity;
        Mt44Ident(identity);
        error = scope.error() ? scope.error() : DxDrawCAD("ENDBLK", identity);
        scope.endEntities();
    }
    const int flushed = DxElemQueuePat < 0 ? 0 : DxCiElemDrawPat();
    const int cleared = DxClearPatterns();
    return error ? error : flushed ? flushed : cleared;
}

int drawDefinition(const std::string& name) {
    DX_SAVE save;
    DxSaveActPos(&save);
    DxfEntityFileReference reference;
    DxGetBlock(name, reference);
    if (!reference.block) return DxRestoreActPos(&save);
    const int error = drawBlock(*reference.block);
    if (error) return error;
    const int restored = DxRestoreActPos(&save);
    reference.place->Disarm();
    return restored;
}

} // namespace

int DxDrawDefinitions() {
    int error = 0;
    while (!error && DxDefinitionsDrawn < DxDefinitionsWanted.size()) {
        const std::string name = DxDefinitionsWanted[DxDefinitionsDrawn++];
        error = drawDefinition(name);
    }
    return error;
}
