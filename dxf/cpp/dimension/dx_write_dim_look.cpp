#include "dx_write_dim_look.h"

#include "../config/config_state.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_blocks.h"
#include "../export/dx_write_entities.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../session/session_state.h"
#include "../text/dx_write_text.h"
#include "../text/text_state.h"
#include "dx_codes.h"
#include "uo_elem.h"

namespace {

enum ElementType { DRAW = 1, MOVE = 2, CLOCKWISE = 3, COUNTER_CLOCKWISE = 4 };

/// The walk along the lines of one dimension.
class LineWriter {
public:
    explicit LineWriter(const Mat32 matrix) : matrix_(matrix) {}

    int run(int linePat) {
        UO_ELEM element{};
        element.patNo = linePat;
        int error = Dxovelem(DX_ELEM_FIRST, &element);
        while (!error) {
            error = take(element);
            if (!error) error = Dxovelem(DX_ELEM_NEXT, &element);
        }
        return error == DX_ERR_NO_MORE ? 0 : error;
    }

private:
    int take(const UO_ELEM& e) {
        int error = 0;
        if (e.type == MOVE)
            isPending_ = true;
        else if (e.type == DRAW || e.type == CLOCKWISE || e.type == COUNTER_CLOCKWISE)
            error = write(e);
        previous_ = e.end;
        return error;
    }

    int write(const UO_ELEM& e) {
        if (const int error = DxDimOpenBlock()) return error;
        if (isPending_) DxStoreMaxXYZ(previous_.x, previous_.y, 0.0);
        isPending_ = false;
        ++DxEntityCount;
        const int pen = DxColAttr && DxDimArrowColor ? DxDimArrowColor : e.pen;
        if (e.type == DRAW)
            return DxWriteLine(previous_.x, previous_.y, e.end.x, e.end.y, pen, e.lineType, matrix_);
        return DxWriteArc(e.type, previous_.x, previous_.y, e.end.x, e.end.y, e.centre.x, e.centre.y, pen,
                          e.lineType, matrix_);
    }

    const double (*matrix_)[2];
    RPT previous_{0, 0};
    bool isPending_ = true;
};

int textPen() {
    return DxColAttr ? DxDimTextColor : 0;
}

int writeText(const DX_WRITE_TEXT& text) {
    if (text.lines.empty()) return 0;
    if (const int error = DxDimOpenBlock()) return error;
    ++DxEntityCount;
    return DxWriteText(text);
}

} // namespace

int DxDimOpenBlock() {
    if (DxBlockOpen) return 0;
    const int error = DxWriteBlockStart(DxBlockOpen);
    DxBlockLayer = UtCString(DxActLayer.view());
    return error;
}

int DxDimWriteLines(const DX_DIM_OUT& out) {
    Mat32 matrix;
    if (const int error = DxWriteMatrix(out.pat, matrix)) return error;
    int linePat = 0;
    if (const int error = DxovDimLines(out.pat, out.row, &linePat)) return error;
    const int error = LineWriter(matrix).run(linePat);
    const int released = DxovReleaseLines(linePat);
    return error ? error : released;
}

int DxDimWriteValue(DX_DIM_OUT& out, bool withFrame) {
    if (out.textRow == OV_DIM_NO_TEXT) return 0;
    DX_WRITE_TEXT text;
    if (const int error = DxReadPatText(out.pat, out.textRow, textPen(), text)) return error;
    if (withFrame)
        if (const int error = DxWriteBalloon(out.pat, out.textRow, text.ext)) return error;
    const std::size_t length = out.parts.value.size();
    DxDimparCheckTol(out.sets.txt, out.sets.tol.kind, out.parts, &out.tolRow);
    if (!text.lines.empty()) text.lines.back() += out.parts.value.substr(length);
    const int error = writeText(text);
    DxFinishPending = 0; // not for a text that follows
    return error;
}

int DxDimWriteTolerance(const DX_DIM_OUT& out) {
    if (out.tolRow == OV_DIM_NO_TEXT) return 0;
    DX_WRITE_TEXT text;
    const int error = DxReadPatText(out.pat, out.tolRow, textPen(), text);
    return error ? error : writeText(text);
}

int DxWriteDimTol(const DX_DIM_OUT& out) {
    DX_WRITE_TEXT text;
    if (const int error = DxReadPatText(out.pat, out.tolRow, textPen(), text)) return error;
    if (text.lines.empty()) return 0;
    constexpr int one = 1;
    if (out.sets.tol.kind == one)
        text.lines = {out.parts.upper};
    else
        text.lines = {" " + out.parts.upper, " " + out.parts.lower};
    return writeText(text);
}
