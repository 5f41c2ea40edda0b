// Draw stage of INSERT: the block's entities are read again from the file, under the INSERT's placement.
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../host/dx_host.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "blocks_state.h"
#include "dx_attributes.h"
#include "dx_blocks.h"
#include "dx_expansion.h"
#include "dx_insert_import.h"
#include "dx_spaces.h"
#include "import_state.h"
#include "ov.h"
#include "uo.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

namespace {

constexpr int STOPPED = 9009;
constexpr int EXTERNAL_REFERENCE = 4;

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

/// The layer that an INSERT stands on: on "0" within a block that of the INSERT around it.
struct InsertLayer {
    DX_NAME name;
    int colour;
};

/// What is put back behind an INSERT. After an error the import ends, and nothing is.
struct Outer {
    double scaleX = DxBlockScaleX, scaleY = DxBlockScaleY, scaleZ = DxBlockScaleZ;
    double rotation = DxBlockRotation;
    int isEven = DxBlockIsEven;
    int patIndex = DxActPatIndex;
    int pat = DxActPat;

    void restoreScales() const {
        DxBlockScaleX = scaleX;
        DxBlockScaleY = scaleY;
        DxBlockScaleZ = scaleZ;
        DxBlockRotation = rotation;
        DxBlockIsEven = isEven;
    }
    /// A pattern that was full within the block goes on in another one, which is the active one then.
    int restorePattern() const { return DxCheckPass ? 0 : DxReturnToPat(patIndex, pat); }
};

double factor(double scale) {
    return scale == 0 ? 1 : scale;
}

/// Whether the matrix takes the plane's axes to axes of one length at right angles, or nearly so.
bool keepsCircles(const Mat44 m) {
    constexpr double tolerance = 0.001;
    const auto dot = [](const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; };
    const double xx = dot(m[0], m[0]), yy = dot(m[1], m[1]);
    const double most = tolerance * std::max(xx, yy);
    return std::fabs(xx - yy) <= 2 * most && std::fabs(dot(m[0], m[1])) <= most;
}

void addPlacement(const DX_INSERT_TYPE& insert) {
    DxBlockScaleX *= factor(insert.scaleX);
    DxBlockScaleY *= factor(insert.scaleY);
    DxBlockScaleZ *= factor(insert.scaleZ);
    DxBlockRotation += insert.rotation;
}

/// Colour and line type that ByBlock stands for within the block.
void fillLevel(const DX_INSERT_TYPE& insert, int layerColour) {
    const auto level = static_cast<std::size_t>(DxBlockLevel);
    DX_INSERT_LEVEL& entry = DxInsertStack[level];
    const DX_INSERT_LEVEL& below = DxInsertStack[level - 1];
    entry.blockName = insert.blockName;
    const std::string_view lineType = insert.base.lineType.view();
    if (equalsIgnoringCase(lineType, "ByBlock"))
        entry.lineType = below.lineType;
    else if (lineType.empty() || equalsIgnoringCase(lineType, "ByLayer"))
        entry.lineType = DxInsertLt;
    else
        entry.lineType.assign(lineType);
    entry.color = insert.base.color;
    if (entry.color == 0)
        entry.color = below.color;
    else if (entry.color < 0 || entry.color == 256)
        entry.color = layerColour;
}

/// Name of the attribute that an order value stands for; null for the orders that name none.
const char* attributeOf(int order, const char* ownName) {
    static constexpr const char* NAMES[] = {"#G", "#E", "#K", "#M"};
    if (order >= DX_ORDER_GROUP && order <= DX_ORDER_NAME) return NAMES[order];
    return order == DX_ORDER_ATTR ? ownName : nullptr;
}

/// The pattern of this INSERT, with the names of block and layer where the configuration wants them.
int beginPattern(const DX_INSERT_TYPE& insert, const InsertLayer& layer) {
    if (!DxBlockToPattern) {
        DxBlockPatIndex = DxActPatIndex;
        return 0;
    }
    if (const int error = DxNewPat(0)) return error;
    DxBlockPatIndex = DxActPatIndex;
    if (const char* name = attributeOf(DxBlockOrder, "block"))
        UoSetSingleAttr(DxActPat, name, insert.blockName.view());
    if (DxLayerToPattern) {
        DX_NAME hostName = layer.name;
        DxTableConvLayer(1, &hostName);
        if (const char* name = attributeOf(DxLayerOrder, "layer"))
            UoSetSingleAttr(DxActPat, name, hostName.view());
    }
    if (DxBlockOrder != DX_ORDER_GROUP && !(DxLayerToPattern && DxLayerOrder == DX_ORDER_GROUP) && DxTopBlock)
        UoSetSingleAttr(DxActPat, "#G", DxTopBlock->name.view());
    return 0;
}

int enterLevel(const DX_INSERT_TYPE& insert, DX_BLOCK_TYPE& block, const InsertLayer& layer) {
    if (DxBlockLevel == 0) DxTopBlock = &block;
    ++DxBlockLevel;
    while (DxInsertStack.size() <= static_cast<std::size_t>(DxBlockLevel))
        if (const int error = DxInsertStack.add(DX_INSERT_LEVEL{})) return error;
    if (DxBlockLevel == 1) DxInsertSpace = insert.base.paperSpace;
    fillLevel(insert, layer.colour);
    return DxCheckPass ? 0 : beginPattern(insert, layer);
}

int drawEntities(DX_BLOCK_TYPE& block, const Mat44 matrix, bool viewportsOnly) {
    const char* end = block.flags & EXTERNAL_REFERENCE ? "ENDSEC" : "ENDBLK";
    return viewportsOnly ? DxDrawVP(end, matrix) : DxDrawBlockEntities(block, end, matrix);
}

/// The block's entities, then the INSERT's attributes: for both, ByBlock and layer 0 mean this INSERT.
int drawLevel(const DX_INSERT_TYPE& insert, DX_BLOCK_TYPE& block, const InsertLayer& layer, const Mat44 m,
              bool viewportsOnly) {
    const Outer outer;
    addPlacement(insert);
    Mat44 matrix;
    if (const int error = DxInsertBlockTrans(&insert, &block, m, matrix)) return error;
    DxBlockIsEven = keepsCircles(matrix);
    int error = enterLevel(insert, block, layer);
    const int attributePattern = DxBlockPatIndex; // INSERTs within the block have patterns of their own
    DxInsertLayer = layer.name;
    if (!error && !DxHoldsNothing(block)) error = drawEntities(block, matrix, viewportsOnly);
    if (!error) error = outer.restorePattern();
    if (!error) {
        outer.restoreScales();
        DxBlockPatIndex = attributePattern;
        DxInsertLayer = layer.name;
        error = DxInsertDrawAttribs(&insert, m);
    }
    --DxBlockLevel;
    return error;
}

bool isTooDeep() {
    if (DxBlockLevel < DX_DEEPEST_BLOCK) return false;
    if (!DxDepthReported)
        DxProtoMsg(
            UtFormat("Blocks nest deeper than %d levels, deeper INSERTs are ignored!", DX_DEEPEST_BLOCK), 1);
    DxDepthReported = 1;
    return true;
}

/// Lets a walk stop within a block that would never end. It is told, whether measured or drawn.
class EndlessBlock {
public:
    explicit EndlessBlock(DX_BLOCK_TYPE& block)
        : isOutermost_(DxEntitiesLeft == 0 && DxExpandedEntities(block) > DX_ENDLESS_BLOCK) {
        if (!isOutermost_) return;
        DxEntitiesLeft = DX_ENDLESS_BLOCK_SHARE;
        DxProtoMsg(UtFormat("Block %s inserts so many others that it would never be drawn whole!",
                            block.name.c_str()),
                   1);
    }
    EndlessBlock(const EndlessBlock&) = delete;
    EndlessBlock& operator=(const EndlessBlock&) = delete;
    ~EndlessBlock() {
        if (isOutermost_) DxEntitiesLeft = 0;
    }

private:
    bool isOutermost_;
};

void reportStop(const DX_BLOCK_TYPE& block) {
    DxProtoMsg(UtFormat("Stopped while block %s was drawn.", block.name.c_str()), 1);
}

} // namespace

int DxCheckRecursion(const DX_NAME& block) {
    for (int level = DxBlockLevel; level >= 1; --level) {
        if (std::strcmp(DxInsertStack[static_cast<std::size_t>(level)].blockName.s, block.s) != 0) continue;
        const UtCString name(block.view());
        DxProtoMsg(DxMsg(level == DxBlockLevel ? 5717 : 5719, name.c_str()), 1);
        DxProtoMsg(DxMsg(5718), 1);
        return 0;
    }
    return 1;
}

int DxDrawInsert(const DX_INSERT_TYPE* rec, const Mat44 m, int viewportsOnly) {
    if (isTooDeep() || !DxCheckRecursion(rec->blockName)) return 0;
    InsertLayer layer{};
    DX_LAYER_TYPE* record = nullptr;
    if (!DxSetActLayer(&rec->base, &layer.colour, &DxInsertLt, &record)) return 0;
    layer.name = DxActLayer;
    if (!record)
        if (const int error = DxPenltAddLayer(layer.name.view(), layer.colour, DxInsertLt.view(), &record))
            return error;
    DX_SAVE save;
    DxSaveActPos(&save);
    DxfEntityFileReference reference;
    DxGetBlock(rec->blockName.view(), reference);
    if (!reference.block) {
        DxProtoMsg(DxMsg(5703, rec->blockName.c_str()), 1);
        return DxRestoreActPos(&save);
    }
    const EndlessBlock endless(*reference.block);
    int error = drawLevel(*rec, *reference.block, layer, m, viewportsOnly != 0);
    if (!error) {
        if (!DxCheckPass) DxEntityDrawn = 1;
        error = DxRestoreActPos(&save);
        reference.place->Disarm();
    } else if (error == STOPPED && DxBlockLevel == 0 && !DxCheckPass) {
        reportStop(*reference.block);
    }
    if (DxTopBlock == reference.block && DxBlockLevel == 0) DxTopBlock = nullptr;
    return error;
}

int DxDrawInsertRow(const DX_INSERT_TYPE* rec, const Mat44 m) {
    const int error = DxDrawInsert(rec, m, 0);
    int code = 0;
    ov3dfunc(&code);
    return error;
}

int DxInsertDrawAttribs(const DX_INSERT_TYPE* rec, const Mat44 m) {
    for (const DX_ATTRIB_TYPE& attrib : rec->attribs)
        if (const int error = DxDrawAttrib(&attrib, m)) return error;
    return 0;
}
