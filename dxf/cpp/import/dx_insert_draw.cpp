// Draw stage of INSERT: the block's entities are read again from the file, under the INSERT's placement.
#include "../config/config_state.h"
#include "../config/dx_layer_patterns.h"
#include "../config/dx_layers.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../host/dx_host_origin.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "blocks_state.h"
#include "dx_attributes.h"
#include "dx_blocks.h"
#include "dx_expansion.h"
#include "dx_insert_import.h"
#include "dx_insert_level.h"
#include "dx_spaces.h"
#include "import_state.h"
#include "ov.h"
#include "uo.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>

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
    bool isFrozen;
};

double factor(double scale) {
    return scale == 0 ? 1 : scale;
}

/// Whether the matrix takes the plane's axes, as they are seen in the drawing, to axes of one length at right
/// angles, or nearly so.
bool keepsCircles(const Mat44 m) {
    constexpr double tolerance = 0.001;
    const auto dot = [](const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1]; };
    const double xx = dot(m[0], m[0]), yy = dot(m[1], m[1]);
    const double most = tolerance * std::max(xx, yy);
    return std::fabs(xx - yy) <= 2 * most && std::fabs(dot(m[0], m[1])) <= most;
}

/// The INSERT being drawn has patterns of its own, and `depth` is that of what it draws itself.
bool isPlaced(int depth) {
    return DxActPlaced.firstEntry >= 0 && depth == DxOriginDepth + 1;
}

/// Colour and line type that ByBlock stands for within the block; `level` has those around it.
void settleByBlock(const DX_INSERT_TYPE& insert, int layerColour, DX_INSERT_LEVEL& level) {
    const std::string_view lineType = insert.base.lineType.view();
    if (lineType.empty() || equalsIgnoringCase(lineType, "ByLayer"))
        level.lineType = DxInsertLt;
    else if (!equalsIgnoringCase(lineType, "ByBlock"))
        level.lineType.assign(lineType);
    if (insert.base.color < 0 || insert.base.color == 256)
        level.color = layerColour;
    else if (insert.base.color != 0)
        level.color = insert.base.color;
}

/// The place within the block, whose entities go through `matrix`.
DX_INSERT_LEVEL levelOf(const DX_INSERT_TYPE& insert, const DX_BLOCK_TYPE& block, const InsertLayer& layer,
                        const Mat44 matrix) {
    DX_INSERT_LEVEL level = DxActLevel;
    level.block = &block;
    if (++level.depth == 1) {
        level.topBlock = &block;
        level.space = insert.base.paperSpace;
    }
    settleByBlock(insert, layer.colour, level);
    level.layer = layer.name;
    if (DxKeepsHidden() && (layer.isFrozen || insert.base.invisible != 0)) level.isHidden = 1;
    level.hasAttributePat = DxBlockToPattern || isPlaced(level.depth);
    level.keepsPattern = 0;
    DX_BLOCK_PLACEMENT& placement = level.placement;
    placement.scaleX *= factor(insert.scaleX);
    placement.scaleY *= factor(insert.scaleY);
    placement.scaleZ *= factor(insert.scaleZ);
    placement.rotation += insert.rotation;
    placement.isEven = keepsCircles(matrix);
    return level;
}

/// The pattern of this INSERT, with the names of block and layer where the configuration wants them.
int beginPattern(const DX_INSERT_TYPE& insert, const InsertLayer& layer) {
    if (DxBlockToPattern)
        if (const int error = DxNewPat(0)) return error;
    DxActLevel.attributePat = isPlaced(DxBlockLevel) ? DxActPlaced.firstEntry : DxActPatIndex;
    if (!DxBlockToPattern) return 0;
    if (const char* name = DxAttributeOfOrder(DxBlockOrder, "block"))
        UoSetSingleAttr(DxActPat, name, insert.blockName.view());
    DxNameLayerOfPattern(layer.name);
    if (DxBlockOrder != DX_ORDER_GROUP && !(DxLayerToPattern && DxLayerOrder == DX_ORDER_GROUP) && DxTopBlock)
        UoSetSingleAttr(DxActPat, "#G", DxTopBlock->name.view());
    return 0;
}

int drawEntities(DX_BLOCK_TYPE& block, const Mat44 matrix, bool viewportsOnly) {
    const char* end = block.flags & EXTERNAL_REFERENCE ? "ENDSEC" : "ENDBLK";
    return viewportsOnly ? DxDrawVP(end, matrix) : DxDrawBlockEntities(block, end, matrix);
}

/// The block's entities, then the INSERT's attributes: for both, ByBlock and layer 0 mean this INSERT.
int drawLevel(const DX_INSERT_TYPE& insert, DX_BLOCK_TYPE& block, const InsertLayer& layer, const Mat44 m,
              bool viewportsOnly) {
    Mat44 matrix;
    if (const int error = DxInsertBlockTrans(&insert, &block, m, matrix)) return error;
    const DxInsertScope scope(levelOf(insert, block, layer, matrix));
    DxPatternScope pattern;
    int error = scope.error();
    if (!error && !DxCheckPass) error = beginPattern(insert, layer);
    if (!error && !DxHoldsNothing(block)) error = drawEntities(block, matrix, viewportsOnly);
    if (!error) error = pattern.leave();
    if (error) return error;
    scope.endEntities();
    return DxInsertDrawAttribs(&insert, m);
}

/// An INSERT that is to leave as itself gets a pattern of its own, and what it draws other ones than the
/// layers have.
int beginPlaced(const DX_BLOCK_TYPE& block, DX_LAYER_TYPE& layer) {
    const bool begins =
        DxPlacedWanted && !DxCheckPass && DxBlockLevel == DxOriginDepth && DxActPlaced.firstEntry < 0;
    if (!begins || !DxWantDefinition(block)) return 0;
    DxPatternScope around;
    const int error = DxEnterPlacedPattern(layer);
    return error ? error : around.leave();
}

bool isTooDeep() {
    if (DxBlockLevel < DX_DEEPEST_BLOCK) return false;
    if (!DxDepthReported)
        DxProtoMsg(
            UtFormat("Blocks nest deeper than %d levels, deeper INSERTs are ignored!", DX_DEEPEST_BLOCK), 1);
    DxDepthReported = 1;
    return true;
}

void reportEndless(const DX_BLOCK_TYPE& block) {
    DxProtoMsg(
        UtFormat("Block %s inserts so many others that it would never be drawn whole!", block.name.c_str()),
        1);
}

/// Lets a walk stop within a block that would never end. It is told, whether measured or drawn.
class EndlessBlock {
public:
    explicit EndlessBlock(DX_BLOCK_TYPE& block) : block_(block) {
        if (DxEntitiesLeft != 0) return; // the block around it
        DxEntitiesLeft = most_ = DxMostEntities(block);
        isOutermost_ = most_ != 0;
        if (isOutermost_ && DxExpandedEntities(block) > DX_ENDLESS_BLOCK) reportEndless(block);
    }
    EndlessBlock(const EndlessBlock&) = delete;
    EndlessBlock& operator=(const EndlessBlock&) = delete;
    ~EndlessBlock() {
        if (!isOutermost_) return;
        DxCountRing(block_, most_ - DxEntitiesLeft);
        DxEntitiesLeft = 0;
    }
    /// Behind a walk that was stopped: rings show only then that they have no end.
    void tellStop() const {
        if (isOutermost_ && DxEntitiesLeft == 0) reportEndless(block_);
    }

private:
    const DX_BLOCK_TYPE& block_;
    long most_ = 0;
    bool isOutermost_ = false;
};

int leaveOut(DxReason reason) {
    DxNoteReason(reason);
    return 0;
}

void reportStop(const DX_BLOCK_TYPE& block) {
    DxProtoMsg(UtFormat("Stopped while block %s was drawn.", block.name.c_str()), 1);
}

} // namespace

int DxCheckRecursion(const DX_NAME& block) {
    const DX_BLOCK_TYPE* found =
        DxDocuments.current_ ? DxDocuments.current_->findBlockOutwards(block.view()) : nullptr;
    for (int level = DxBlockLevel; found && level >= 1; --level) {
        if (!DxIsDrawnAt(level, *found)) continue;
        const UtCString name(block.view());
        DxProtoMsg(DxMsg(level == DxBlockLevel ? 5717 : 5719, name.c_str()), 1);
        DxProtoMsg(DxMsg(5718), 1);
        return 0;
    }
    return 1;
}

int DxDrawInsert(const DX_INSERT_TYPE* rec, const Mat44 m, int viewportsOnly) {
    if (isTooDeep()) return leaveOut(DxReason::TooDeep);
    if (!DxCheckRecursion(rec->blockName)) return leaveOut(DxReason::Recursive);
    InsertLayer layer{};
    DX_LAYER_TYPE* record = nullptr;
    if (!DxSetActLayer(&rec->base, &layer.colour, &DxInsertLt, &record)) return 0;
    constexpr int frozen = 1;
    layer.name = DxActLayer;
    layer.isFrozen = record && (record->flags & frozen) && !DxAllLayers;
    if (!record)
        if (const int error = DxPenltAddLayer(layer.name.view(), layer.colour, DxInsertLt.view(), &record))
            return error;
    DX_SAVE save;
    DxSaveActPos(&save);
    DxfEntityFileReference reference;
    DxGetBlock(rec->blockName.view(), reference);
    if (!reference.block) {
        DxProtoMsg(DxMsg(5703, rec->blockName.c_str()), 1);
        DxNoteReason(DxReason::NoBlock);
        return DxRestoreActPos(&save);
    }
    const EndlessBlock endless(*reference.block);
    int error = viewportsOnly ? 0 : beginPlaced(*reference.block, *record);
    // In a definition an INSERT only stands for what it would draw.
    const bool isDrawn = !DxOpenDefinition || !isPlaced(DxBlockLevel + 1);
    if (!error && isDrawn) error = drawLevel(*rec, *reference.block, layer, m, viewportsOnly != 0);
    if (error == STOPPED) endless.tellStop();
    if (!error) {
        if (!DxCheckPass) DxEntityDrawn = 1;
        error = DxRestoreActPos(&save);
        reference.place->Disarm();
    } else if (error == STOPPED && DxBlockLevel == 0 && !DxCheckPass) {
        reportStop(*reference.block);
    }
    return error;
}

/// Each instance of an array, row by row. The attributes stand where the first one has them.
static int drawArray(const DX_INSERT_TYPE& rec, const Mat44 m) {
    const double angle = rec.rotation * std::numbers::pi / 180;
    const double c = std::cos(angle), s = std::sin(angle);
    const int columns = std::max(rec.columns, 1), rows = std::max(rec.rows, 1);
    DX_INSERT_TYPE instance = rec;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const double x = column * rec.columnSpacing, y = row * rec.rowSpacing;
            instance.position.x = rec.position.x + c * x - s * y;
            instance.position.y = rec.position.y + s * x + c * y;
            if (const int error = DxDrawInsert(&instance, m, 0)) return error;
            instance.attribs.clear();
        }
        if (DxAskForStop()) return STOPPED;
    }
    return 0;
}

int DxDrawInsertRow(const DX_INSERT_TYPE* rec, const Mat44 m) {
    const bool isArray = DxInsertArrays && (rec->columns > 1 || rec->rows > 1);
    const int error = isArray ? drawArray(*rec, m) : DxDrawInsert(rec, m, 0);
    int code = 0;
    ov3dfunc(&code);
    return error;
}

int DxInsertDrawAttribs(const DX_INSERT_TYPE* rec, const Mat44 m) {
    for (const DX_ATTRIB_TYPE& attrib : rec->attribs)
        if (const int error = DxDrawAttrib(&attrib, m)) return error;
    return 0;
}
