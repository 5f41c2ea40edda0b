#include "dx_pattern_walk.h"

#include "ds_layer.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../dimension/dx_write_dimension.h"
#include "../hatch/dx_write_hatch.h"
#include "../host/dx_host.h"
#include "../sections/sections_state.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "../solid/dx_write_3d.h"
#include "../solid/solid_state.h"
#include "../text/dx_write_text.h"
#include "dx_codes.h"
#include "dx_element_chains.h"
#include "dx_layer_choice.h"
#include "dx_unwritten.h"
#include "dx_write_blocks.h"
#include "dx_write_images.h"
#include "dx_write_placed.h"
#include "mt.h"
#include "uo.h"

int DxWriteMatrix(int ownerPat, Mat32 matrix) {
    MtIdentMat(matrix);
    return DxBlockMatrixMode ? DxGetPatMatrix(ownerPat, matrix, true) : 0;
}

// ---- one pattern -----------------------------------------------------------------------------------

void DxShowPattern() {
    if (DxPatCounter++ % 100 == 1)
        DxDisplay(UtFormat("%d %s", DxPatCounter, DxPatNames[DX_PAT_NAME].c_str()));
}

static int writeChains(int pat) {
    const int before = DxEntityCount;
    const int error = DxWritePatElPoly(pat, DX_KIND_ELEMENT, DxWritePoly, pat);
    if (!error && DxEntityCount > before) return DxAddLayer(DxActLayer.view());
    return error;
}

static int writeDimensions(int pat) {
    if (DxWriteVersion == DX_FORMAT_EASY && !DxPatternToBlock) return DxWritePatSimpleDim(pat);
    if (DxDimInBlock && DxWriteAsoDim && DxWriteVersion != DX_FORMAT_EASY) return DxWritePatDim(pat, 0);
    return 0;
}

/// Whether the pattern itself is hidden, not its layer alone.
int DxIsInvisible(int pat) {
    if (!DxLayerStates || DxCiPatIsVisible2d(pat)) return 0;
    bool isLayerVisible = true;
    DsLayerApi::GetLayerLook(DxPatNames[DX_PAT_LAYER], nullptr, &isLayerVisible, nullptr);
    return isLayerVisible ? 1 : 0;
}

int DxWritePat(int pat) {
    DxShowPattern();
    DxWriteInvisible = DxIsInvisible(pat);
    int error = DxCiWritePatBitmap(pat, &DxBlockOpen);
    if (!error) error = DxWritePatHatch(pat, 0);
    if (!error) error = writeChains(pat);
    if (!error) error = DxWritePatArr(pat);
    if (!error) error = writeDimensions(pat);
    return error ? error : DxWritePatText(pat);
}

static int writeContent(int pat) {
    int error = DxPatsOneWork ? DxWritePat(pat) : 0;
    if (error) return error;
    // The blocks of an EASY target stand ahead of the section that turns to 2D.
    const bool takesSpace = DxMiscCheckVersion(DX_LEVEL_3D), isInSpace = DxModus == 3 && takesSpace;
    if (!isInSpace || !DxWriteClouds) DxCountUnwritten(pat, DX_UNWRITTEN_CLOUD);
    if (!takesSpace) return DxCountUnwritten(pat, DX_UNWRITTEN_3D);
    if (!isInSpace) return DxWriteFlatPat(pat, &DxEntityCount, &DxBlockOpen, &DxBlockLayer);
    return DxWrite3dPat(pat, &DxEntityCount, &DxBlockOpen, &DxBlockLayer);
}

/// A copy of a block is written without its pattern's placement, where an INSERT can give that back.
static int settleMatrixMode(int pat) {
    DxBlockMatrixMode = 0;
    if (!DxBlockCopies) return 0;
    DX_PLACEMENT placement;
    const int error = DxPlacementOfPattern(pat, placement);
    DxBlockMatrixMode = !error && DxHoldsUntransformed(pat, placement);
    return error == DX_ERR_ARGUMENT ? 0 : error;
}

/// The block of the INSERT whose attributes the pattern holds; empty for other patterns.
static UtCString insertOf(int pat) {
    UtCString block;
    if (!DxInsertAttr || UoGetSingleAttr(pat, DX_INSERT_ATTRIBUTE, &block) != 0) return {};
    return block;
}

static int writeAsBlock(int pat) {
    DxBlockBufferWanted = DxBlockCopies;
    if (const int error = settleMatrixMode(pat)) return error;
    if (const UtCString block = insertOf(pat); !block.IsEmpty()) DxPatNames[DX_PAT_NAME] = block;
    DxCheckBlockname(DxPatNames[DX_PAT_NAME]);
    DxBlockOpen = 0;
    DxBlockLayer = "0";
    int error = writeContent(pat);
    if (DxBlockOpen) {
        const int ended = DxWriteBlockEnd(DxBlockOpen);
        if (!error) error = ended;
        if (!error) error = DxAddBlock(DxPatNames[DX_PAT_NAME], DxBlockLayer, pat);
    }
    DxBlockMatrixMode = DxBlockBufferWanted = 0;
    return error;
}

int DxWritePattern(int pat, int mode) {
    if (pat == DxHeaderPat) return 0; // the kept header variables are no content of the drawing
    if (const int error = DxPatGetInfo(pat)) return error;
    DxEntityCount = 0;
    if (mode == DX_PATTERN_AS_BLOCK) return writeAsBlock(pat);
    DxBlockOpen = 1; // nothing opens a block
    if (mode == DX_PATTERN_DIRECTLY) return writeContent(pat);
    return DxPatsOneWork && DxWriteAsoDim ? DxWritePatDim(pat, 1) : 0;
}

// ---- the passes ------------------------------------------------------------------------------------

int DxWriteBlockPass() {
    int pat = -1;
    int insert = 0;
    int error = DxWriteDefinitions();
    if (!error) error = Dxovpat(145, &pat);
    for (; !error; error = error ? error : Dxovpat(145, &pat)) {
        if (DxLeavesAsInsert(pat, &insert)) continue;
        error = DxPatSetLayerAttribs(pat, 0, DX_KIND_ELEMENT);
        if (!error && (DxPatternToBlock || DxWriteVersion != DX_FORMAT_EASY)) {
            error = DxWriteDimBlock(pat);
            if (!error && DxWriteHatch == 2) error = DxWriteHatchBlock(pat);
        }
        if (!error)
            error = DxPatternToBlock || !insertOf(pat).IsEmpty() ? DxWritePattern(pat, DX_PATTERN_AS_BLOCK)
                                                                 : DxPlainPats.add(pat);
    }
    return error == DX_ERR_NO_MORE ? 0 : error;
}

/// What the block pass settled for pattern `pat`; `plain` and `block` keep their places from pattern to
/// pattern.
static int writeEntitiesOf(int pat, std::size_t& plain, std::size_t& block) {
    if (int insert = 0; DxLeavesAsInsert(pat, &insert)) return insert == pat ? DxWritePlacedInsert(pat) : 0;
    for (; plain < DxPlainPats.size() && DxPlainPats[plain] <= pat; ++plain)
        if (DxPlainPats[plain] == pat)
            if (const int error = DxWritePattern(pat, DX_PATTERN_DIRECTLY)) return error;
    for (; block < DxBlockList.size() && DxBlockList[block].pattern <= pat; ++block)
        if (DxBlockList[block].pattern == pat)
            if (const int error = DxWriteInsert(DxBlockList[block])) return error;
    if (DxDimInBlock || DxWriteVersion == DX_FORMAT_EASY) return 0;
    return DxWritePattern(pat, DX_PATTERN_DIMENSIONS);
}

int DxWriteEntityPass() {
    std::size_t plain = 0;
    std::size_t block = 0;
    int pat = -1;
    int error = Dxovpat(145, &pat);
    while (!error) {
        error = writeEntitiesOf(pat, plain, block);
        if (!error) error = Dxovpat(145, &pat);
    }
    return error == DX_ERR_NO_MORE ? 0 : error;
}
