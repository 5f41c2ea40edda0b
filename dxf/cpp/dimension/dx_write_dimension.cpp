// DIMENSION entities on their way out. They have no text of their own: the block shows it.
#include "dx_write_dimension.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../export/dx_layer_choice.h"
#include "../export/dx_origin_walk.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_entities.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "../session/session_state.h"
#include "../text/dx_write_text.h"
#include "../text/text_state.h"
#include "dimension_state.h"
#include "dx_codes.h"
#include "dx_dim_decode.h"
#include "dx_dim_measure.h"
#include "dx_write_dim_look.h"

#include <cmath>
#include <string>

namespace {

enum TypeFlag : int {
    TYPE_ORDINATE_WITHOUT_LINE = 6,
    TYPE_ROTATED = 128, // the text stands where it was put
    TYPE_DIAMETER = 131,
    TYPE_RADIUS = 132,
    TYPE_ANGLE = 133,
    TYPE_ORDINATE_Y = 134,
    TYPE_ORDINATE_X = 198,
};

/// Degrees of the direction from one point to another, 0 up to below 360.
double direction(const RPT& from, const RPT& to) {
    double angle = 0;
    DxGetAngle(from.x, from.y, to.x, to.y, &angle);
    return angle < 0 ? angle + 360 : angle;
}

int writePoint(int code, const RPT& p, bool withZ = true) {
    DxWriteDouble(code, p.x);
    DxWriteDouble(code + 10, p.y);
    return withZ ? DxWriteDoubleVer(DX_LEVEL_3D, code + 20, 0.0) : DxWriteError();
}

/// A point whose z is at its default.
int writeFlat(int code, const RPT& p) {
    return writePoint(code, p, DxFullGroups != 0);
}

/// The groups of one DIMENSION that its kind rules.
class DimensionGroups {
public:
    DimensionGroups(const DX_DIM_OUT& out, const DX_DIM_STYLE& style)
        : out_(out), refs_(out.dim.refs), style_(style), tip1_(DxDimFind(3, out.dim.points, 1)),
          tip2_(DxDimFind(3, out.dim.points, 2)) {}

    int write() const {
        switch (out_.family) {
        case OV_DIM_ANGLE:
        case OV_DIM_ARC: return tip1_ ? angular() : DxWriteError();
        case OV_DIM_RADIUS: return tip1_ ? radius() : DxWriteError();
        case OV_DIM_DIAMETER: return tip1_ && tip2_ ? diameter() : DxWriteError();
        case 51:
        case 52:
        case 53: return out_.dim.points.empty() ? DxWriteError() : ordinate();
        default: return tip1_ && tip2_ ? linear() : withoutLine();
        }
    }

private:
    RPT tip1() const { return DxDimPoint(*tip1_); }
    RPT tip2() const { return DxDimPoint(*tip2_); }
    int textPoint(bool withZ) const {
        return withZ ? writePoint(11, out_.dim.textPos) : writeFlat(11, out_.dim.textPos);
    }

    /// The point on the arc half-way between two points on the legs.
    RPT onArc(const RPT& first, const RPT& second) const {
        const RPT& centre = refs_[2];
        const double radius = DxDimDistance(tip1(), centre);
        double from = direction(centre, first);
        const double to = direction(centre, second);
        if (to < from) from -= 360;
        const double middle = (from + to) / 2 / DX_DEGREES;
        return {centre.x + radius * std::cos(middle), centre.y + radius * std::sin(middle)};
    }

    int angular() const {
        RPT first, second;
        DxDimGetAngRefPoints(refs_, out_.dim.points, &first, &second);
        writePoint(10, onArc(first, second));
        textPoint(false);
        DxWriteInt(70, TYPE_ANGLE);
        double textAngle = 0;
        if (out_.textRow != OV_DIM_NO_TEXT)
            if (const int error = DxDimparGetTextAngle(out_.pat, out_.textRow, &textAngle)) return error;
        DxWriteDoubleVer(DX_LEVEL_3D, 53, std::round(textAngle * 1e4) / 1e4);
        DxWriteSubClass("AcDb3PointAngularDimension");
        writePoint(13, first);
        writePoint(14, second);
        return writePoint(15, refs_[2]);
    }

    int radius() const {
        writePoint(10, refs_[2]);
        textPoint(true);
        DxWriteInt(70, TYPE_RADIUS);
        DxWriteSubClass("AcDbRadialDimension");
        writePoint(15, tip1());
        const double length = DxDimparGetLineLen(out_, &style_);
        return length != 0 ? DxWriteDouble(40, length) : DxWriteError();
    }

    int diameter() const {
        writeFlat(10, tip1());
        textPoint(false);
        DxWriteInt(70, TYPE_DIAMETER);
        DxWriteSubClass("AcDbDiametricDimension");
        return writeFlat(15, tip2());
    }

    int ordinate() const {
        const OV_DIM_PT &first = out_.dim.points.front(), &last = out_.dim.points.back();
        bool isX = out_.family == 51;
        if (out_.parts.value == "0" && out_.dim.points.size() > 1) // at the origin only the leader tells
            isX = !(std::abs(last.y - first.y) < std::abs(last.x - first.x));
        writePoint(10, refs_[0]);
        textPoint(true);
        DxWriteInt(70, isX ? TYPE_ORDINATE_X : TYPE_ORDINATE_Y);
        DxWriteSubClass("AcDbOrdinateDimension");
        writePoint(13, DxDimPoint(first));
        return writePoint(14, DxDimPoint(last));
    }

    int linear() const {
        writePoint(10, tip1());
        textPoint(true);
        DxWriteInt(70, TYPE_ROTATED);
        DxWriteSubClass("AcDbAlignedDimension");
        writePoint(13, refs_[0]);
        writePoint(14, refs_[1]);
        DxWriteDouble(50, DxDimSamePoint(tip1(), tip2()) ? 0.0 : direction(tip1(), tip2()));
        return DxWriteSubClass("AcDbRotatedDimension");
    }

    int withoutLine() const {
        if (out_.dim.points.size() < 2) return DxWriteError();
        writeFlat(10, refs_[0]);
        writeFlat(13, DxDimPoint(out_.dim.points[0]));
        writeFlat(14, DxDimPoint(out_.dim.points[1]));
        DxWriteInt(70, TYPE_ORDINATE_WITHOUT_LINE);
        return textPoint(false);
    }

    const DX_DIM_OUT& out_;
    const RPT* refs_;
    const DX_DIM_STYLE& style_;
    const OV_DIM_PT *tip1_, *tip2_;
};

/// A dimension whose pen has no colour in the file isn't written.
int writeDim(const UtCString& block, const DX_DIM_OUT& out, const DX_DIM_STYLE& style, int pen) {
    const DX_WRITE_LOOK look = DxWriteLookOf(pen, 1);
    if (!look.isShown) return 0;
    DxWriteEntityStart("DIMENSION", DxActLayer);
    DxWriteColor(look.style.colour);
    DxWriteSubClass("AcDbDimension");
    DxWriteString(2, block);
    if (DxMiscCheckVersion(DX_LEVEL_3D)) DxWriteString(3, style.name);
    ++DxEntityCount;
    return DimensionGroups(out, style).write();
}

int textPen(const DX_WRITE_TEXT& text) {
    return DxColAttr && DxDimTextColor ? DxDimTextColor : text.parm.pen;
}

/// What the block doesn't show: the tolerance, unless it is in the style, and the text's frame.
int writeBeside(const DX_DIM_OUT& out, const DX_WRITE_TEXT& text) {
    if (out.tolRow != OV_DIM_NO_TEXT && !DxWriteTol)
        if (const int error = DxWriteDimTol(out)) return error;
    return out.textRow == OV_DIM_NO_TEXT ? 0 : DxWriteBalloon(out.pat, out.textRow, text.ext);
}

/// A dimension that leaves as the entity that it was made from, with its block's new name.
int writeKept(const UtCString& block, const DX_DIM_OUT& out, const DxOriginWalk& origins) {
    ++DxEntityCount;
    DX_KEPT_CHANGES changes;
    changes.blockName = block;
    for (const RPT& p : out.dim.refs) DxStoreMaxXY(p.x, p.y);
    if (const int error = DxWriteKept(origins.entities(), changes)) return error;
    return DxAddLayer(DxActLayer.view());
}

int writeOne(DX_DIM_OUT& out, int mode, DxOriginWalk& origins) {
    if (const int error = DxPatSetLayerAttribs(out.pat, out.row, DX_KIND_DIMENSION)) return error;
    if (out.isFree) return 0;
    if (const int error = DxDimOpenBlock()) return error;
    const UtCString block = UtFormat("*D%d", DxDimEntityNo++);
    if (origins.at(out.row)) return writeKept(block, out, origins);
    DxDimparCheckTol(out.sets.txt, out.sets.tol.kind, out.parts, &out.tolRow);
    DxFinishPending = 0; // the block has the text
    DX_DIM_STYLE style;
    if (const int error = DxDimparCadToDxf(out, &style)) return error;
    DX_WRITE_TEXT text;
    text.parm.pen = out.sets.txt.pen;
    if (out.textRow != OV_DIM_NO_TEXT)
        if (const int error = DxReadPatText(out.pat, out.textRow, 0, text)) return error;
    int error = writeDim(block, out, style, textPen(text));
    if (!error && (mode == DX_DIM_BY_ITSELF || DxDimInBlock)) error = writeBeside(out, text);
    return error ? error : DxAddLayer(DxActLayer.view());
}

} // namespace

int DxWritePatDim(int pat, int mode) {
    DX_DIM_OUT out;
    out.pat = pat;
    DxOriginWalk origins(pat, OV_DIMENSIONS);
    int error = DxDimNextOut(out);
    for (; !error; error = error ? error : DxDimNextOut(out)) error = writeOne(out, mode, origins);
    return error == DX_ERR_NO_MORE ? 0 : error;
}
