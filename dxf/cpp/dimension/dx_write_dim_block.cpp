// The blocks of dimensions, and dimensions as plain entities.
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../export/dx_block_table.h"
#include "../export/dx_layer_choice.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_blocks.h"
#include "../export/dx_write_entities.h"
#include "../session/session_state.h"
#include "dimension_state.h"
#include "dx_codes.h"
#include "dx_dim_measure.h"
#include "dx_write_dim_look.h"
#include "dx_write_dimension.h"

#include <vector>

namespace {

/// A definition point that the kind of dimension needs and the host hasn't is an error.
int definitionPoints(const DX_DIM_OUT& out, std::vector<RPT>& points) {
    const RPT* refs = out.dim.refs;
    const OV_DIM_PT *first = DxDimFind(3, out.dim.points, 1), *second = DxDimFind(3, out.dim.points, 2);
    const bool isOrdinate = out.family >= 51 && out.family <= 53 && out.dim.points.size() == 2;
    if (out.family == OV_DIM_RADIUS) {
        if (!first) return DX_ERR_WRITE;
        points = {{first->x, first->y}, refs[2]};
    } else if (out.family == OV_DIM_DIAMETER) {
        if (!first || !second) return DX_ERR_WRITE;
        points = {{second->x, second->y}, {first->x, first->y}};
    } else if (out.family == OV_DIM_ANGLE || out.family == OV_DIM_ARC) {
        points = {refs[0], refs[1], refs[2]};
    } else if (isOrdinate) {
        points = {refs[1], refs[0]};
    } else {
        points = {refs[0], refs[1]};
    }
    return 0;
}

int writeDefinitionPoints(const DX_DIM_OUT& out) {
    constexpr int pen = 7, lineType = 0;
    std::vector<RPT> points;
    Mat32 matrix;
    int error = definitionPoints(out, points);
    if (!error) error = DxWriteMatrix(out.pat, matrix);
    for (std::size_t i = 0; i < points.size() && !error; ++i)
        error = DxWritePoint(points[i].x, points[i].y, pen, lineType, matrix);
    return error;
}

/// A block that an INSERT places is one like others, with pens and line types of its own.
bool isPlaced(const DX_DIM_OUT& out) {
    return out.isFree || !DxWriteAsoDim || DxWriteVersion == DX_FORMAT_EASY;
}

UtCString blockName(bool placed) {
    if (!placed) return UtFormat("*D%d", DxDimBlockNo++);
    UtCString name = UtFormat("FREE_DIM_%d", DxFreeDimNo++);
    DxCheckBlockname(name);
    return name;
}

int writeTexts(DX_DIM_OUT& out, bool placed) {
    int error = DxDimWriteValue(out, false);
    if (!error && (placed || DxWriteTol)) error = DxDimWriteTolerance(out);
    return error;
}

int writeContent(DX_DIM_OUT& out, bool placed) {
    DxBlockOpen = 0;
    DxBlockType = placed ? DX_BLOCK_PLAIN : DX_BLOCK_DIMENSION;
    int error = DxDimWriteLines(out);
    const bool hasMore = !placed || out.textRow != OV_DIM_NO_TEXT;
    if (!error && hasMore) error = DxDimOpenBlock();
    // An import draws the text of what is made of lines as it draws others.
    if (out.family >= 51 && out.family <= 53) DxBlockType = DX_BLOCK_PLAIN;
    if (!error) error = writeTexts(out, placed);
    DxBlockType = DX_BLOCK_DIMENSION;
    if (!error && !out.isFree && DxBlockOpen) error = writeDefinitionPoints(out);
    return error;
}

int writeBlock(DX_DIM_OUT& out) {
    if (const int error = DxPatSetLayerAttribs(out.pat, out.row, DX_KIND_DIMENSION)) return error;
    const bool placed = isPlaced(out);
    const UtCString ofPattern = DxPatNames[DX_PAT_NAME], name = blockName(placed);
    DxPatNames[DX_PAT_NAME] = name;
    int error = writeContent(out, placed);
    const bool isWritten = DxBlockOpen != 0;
    if (isWritten) {
        const int ended = DxWriteBlockEnd(DxBlockOpen);
        if (!error) error = ended;
        if (!error && placed) error = DxAddBlock(name, DxBlockLayer, out.pat);
        if (!error) error = DxAddLayer(DxActLayer.view());
    }
    DxPatNames[DX_PAT_NAME] = ofPattern;
    return error;
}

int writePlainly(DX_DIM_OUT& out) {
    int error = DxPatSetLayerAttribs(out.pat, out.row, DX_KIND_DIMENSION);
    if (!error) error = DxDimWriteLines(out);
    if (!error) error = DxDimWriteValue(out, true);
    if (!error) error = DxDimWriteTolerance(out);
    return error ? error : DxAddLayer(DxActLayer.view());
}

template <class Write>
int forEachDimension(int pat, Write write) {
    DX_DIM_OUT out;
    out.pat = pat;
    int error = DxDimNextOut(out);
    for (; !error; error = error ? error : DxDimNextOut(out)) error = write(out);
    return error == DX_ERR_NO_MORE ? 0 : error;
}

} // namespace

int DxWriteDimBlock(int pat) {
    DxBlockType = DX_BLOCK_DIMENSION;
    int error = DxPatGetInfo(pat);
    if (!error && DxPatsOneWork) error = forEachDimension(pat, writeBlock);
    DxBlockType = DX_BLOCK_PLAIN;
    return error;
}

int DxWritePatSimpleDim(int pat) {
    return forEachDimension(pat, writePlainly);
}
