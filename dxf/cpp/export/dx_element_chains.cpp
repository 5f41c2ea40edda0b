// From element chains to lines, arcs and polylines.
//
// A pattern reads like a pen plot: a Move begins a chain, Draws and Arcs go on from the last point. A
// polyline stays open across elements of different pen, line type and layer; only a Move, a full circle or
// the end of the pattern closes it. No closing flag is written: a closed chain ends on its first point.
#include "dx_element_chains.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "dx_codes.h"
#include "dx_layer_choice.h"
#include "dx_origin_walk.h"
#include "dx_write_blocks.h"
#include "dx_write_entities.h"
#include "mt.h"
#include "uo_elem.h"
#include "ut.h"

#include <cmath>

namespace {

constexpr int FIRST_ELEMENT = 0x8026;
constexpr int NEXT_ELEMENT = 0x8018;
constexpr int FIRST_ARROW = 0x8526;
constexpr int NEXT_ARROW = 0x8518;
enum ElementType { LINE = 1, MOVE = 2, CLOCKWISE = 3, COUNTER_CLOCKWISE = 4 };

/// One walk along the chains of a pattern.
class ChainWriter {
public:
    ChainWriter(int pat, int kind, int writePoly)
        : pat_(pat), kind_(kind), writePoly_(writePoly),
          origins_(kind == DX_KIND_ELEMENT ? pat : 0, OV_ELEMENTS) {}

    int run(int ownerPat) {
        if (const int error = DxWriteMatrix(ownerPat, matrix_)) return error;
        UO_ELEM element{};
        element.patNo = pat_;
        int error = UoElemS(FIRST_ELEMENT, &element);
        previous_ = element.end;
        while (!error) {
            error = UoElemS(NEXT_ELEMENT, &element);
            if (!error) error = take(element);
        }
        closePolyline();
        return error == DX_ERR_NO_MORE ? 0 : error;
    }

private:
    int take(const UO_ELEM& e) {
        int error = 0;
        const OV_ORIGIN* const origin = origins_.at(e.row);
        if (origin) {
            if (origin->first != keptRow_) error = writeKept(*origin, e);
            keptRow_ = origin->first;
            if (e.type != MOVE) DxStoreMaxXY(e.end.x, e.end.y);
            atFirstPoint_ = true;
        } else if (e.type == MOVE) {
            closePolyline();
            atFirstPoint_ = true;
        } else if (e.type >= LINE && e.type <= COUNTER_CLOCKWISE) {
            error = write(e);
            // Elsewhere the layer of the last element is that of all.
            if (!error && DxUseByLayer) error = DxAddLayer(DxActLayer.view());
        }
        previous_ = e.end;
        return error;
    }

    /// The entity that the elements from `e` on were made from.
    int writeKept(const OV_ORIGIN& origin, const UO_ELEM& e) {
        closePolyline();
        if (const int error = beginEntity(origin.first)) return error;
        if (!lookOf(e).isShown) return 0;
        return DxWriteKept(origins_.entities(), {});
    }

    int beginEntity(int row) {
        if (kind_ == DX_KIND_ELEMENT)
            if (const int error = chooseLayer(row)) return error;
        ++DxEntityCount;
        if (DxBlockOpen) return 0;
        const int error = DxWriteBlockStart(DxBlockOpen);
        DxBlockLayer = UtCString(DxActLayer.view());
        return error;
    }

    int write(const UO_ELEM& e) {
        if (const int error = beginEntity(e.row)) return error;
        if (atFirstPoint_) {
            DxStoreMaxXYZ(previous_.x, previous_.y, 0.0);
            atFirstPoint_ = false;
        }
        if (isFullCircle(e)) {
            closePolyline();
            return DxWriteArc(e.type, e.end, e.end, e.centre, tolerance_, lookOf(e), matrix_);
        }
        if (const int error = extendPolyline(e)) return error;
        return open_ ? 0 : writeSingly(e);
    }

    /// Within a pattern only the classification gives elements of one pen different looks.
    const DX_WRITE_LOOK& lookOf(const UO_ELEM& e) {
        KnownLook& known =
            looks_[(static_cast<unsigned>(e.pen) * 7 + static_cast<unsigned>(e.lineType)) % LOOKS];
        if (!known.isSet || known.pen != e.pen || known.lineType != e.lineType || DxUseByLayer)
            known = {true, e.pen, e.lineType, DxWriteLookOf(e.pen, e.lineType)};
        return known.look;
    }

    /// All elements of a pattern have the layer of its names; only the classification looks at the single
    /// element.
    int chooseLayer(int row) {
        if (layerChosen_ && !DxUseByLayer) return 0;
        layerChosen_ = true;
        return DxPatSetLayerAttribs(pat_, row, DX_KIND_ELEMENT);
    }

    bool isFullCircle(const UO_ELEM& e) const {
        return (e.type == CLOCKWISE || e.type == COUNTER_CLOCKWISE) &&
               std::abs(e.end.x - previous_.x) < tolerance_ && std::abs(e.end.y - previous_.y) < tolerance_;
    }

    bool belongsToPolyline(const UO_ELEM& e) const {
        if (writePoly_) return true;
        int type = 0;
        int isGroup = 0;
        return DxCiGetElemInfo(pat_, e.row, &type, &isGroup) == 0 && isGroup;
    }

    /// Opens a polyline where the element wants one, and adds the element to an open one.
    int extendPolyline(const UO_ELEM& e) {
        if (!open_ && belongsToPolyline(e)) {
            if (const int error = DxWritePolyLineStart(lookOf(e), 0.0, &open_, polyline_)) return error;
            if (open_) addVertex(MOVE, previous_, e);
        }
        if (!open_) return 0;
        const int error = addVertex(e.type, e.end, e);
        if (error || !open_) DxWritePolySeqEnd(polyline_);
        if (error) open_ = 0;
        return error;
    }

    int addVertex(int type, const RPT& point, const UO_ELEM& e) {
        return DxWriteVertex(type, previous_, point, e.centre, lookOf(e), matrix_, &open_, polyline_);
    }

    int writeSingly(const UO_ELEM& e) {
        if (e.type == LINE) return DxWriteLine(previous_, e.end, lookOf(e), matrix_);
        return DxWriteArc(e.type, previous_, e.end, e.centre, tolerance_, lookOf(e), matrix_);
    }

    void closePolyline() {
        if (open_) DxWritePolySeqEnd(polyline_);
        open_ = 0;
    }

    static constexpr unsigned LOOKS = 32;
    struct KnownLook {
        bool isSet = false;
        int pen = 0, lineType = 0;
        DX_WRITE_LOOK look;
    };

    KnownLook looks_[LOOKS];
    int pat_;
    int kind_;
    int writePoly_;
    DxOriginWalk origins_;
    int keptRow_ = -1; ///< where the run begins that was written last as what it was
    double tolerance_ = UtConv(50);
    Mat32 matrix_{};
    RPT previous_{};
    bool atFirstPoint_ = true;
    bool layerChosen_ = false;
    int open_ = 0;
    DX_WRITE_POLYLINE polyline_;
};

} // namespace

int DxWritePatElPoly(int pat, int kind, int writePoly, int ownerPat) {
    return ChainWriter(pat, kind, writePoly).run(ownerPat);
}

int DxWritePatEl(int pat, int kind, int ownerPat) {
    return DxWritePatElPoly(pat, kind, DxWritePoly, ownerPat);
}

int DxWritePatArr(int pat) {
    const int before = DxEntityCount;
    int arrowPat = 0;
    int row = 0;
    int error = ovarrowpat(FIRST_ARROW, pat, &row, &arrowPat);
    while (!error) {
        error = DxPatSetLayerAttribs(pat, row, DX_KIND_ARROW);
        if (!error) error = DxWritePatElPoly(arrowPat, DX_KIND_ARROW, DxWritePoly, pat);
        if (!error) error = ovarrowpat(NEXT_ARROW, pat, &row, &arrowPat);
    }
    if (error == DX_ERR_NO_MORE) error = 0;
    if (!error && DxEntityCount > before) error = DxAddLayer(DxActLayer.view());
    return error;
}
