// Draw stage of DIMENSION: what becomes of it in the host.
//
//   chain part, drawn later   linear, six to eight points, a text
//   dimension of points       what a decoder understood
//   dimension of lines        what none did, what has no text, arcs' lengths and large radii
//   content of the block      no points, more than two tolerances, or as the configuration wants
#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../config/dx_pens.h"
#include "../host/dx_active_pattern.h"
#include "../host/dx_host.h"
#include "../import/dx_blocks.h"
#include "../import/dx_entity_walk.h"
#include "../import/dx_insert_import.h"
#include "../import/dx_insert_level.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_reader.h"
#include "../session/dx_unicode.h"
#include "../session/session_state.h"
#include "../text/dx_text_codes.h"
#include "../text/dx_text_fonts.h"
#include "dimension_state.h"
#include "dx_dim_import.h"
#include "uo.h"
#include "ve.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double toRadians = 0.017453292519943295;
constexpr int badPosition = 9005;
enum Mode { ASSOCIATIVE, FREE_ONLY, BLOCK_ONLY };
enum HostMode { HOST_FREE = 8 };

/// What a dimension became.
enum class Outcome { Nothing, Associative, Free, Block };

/// One dimension on its way to the host.
class DimDrawer {
public:
    DimDrawer(const DX_DIM_TYPE& dim, const DX_NAME& layer) : dim_(dim), layer_(layer) {}

    void placeBy(const Mat44 m) {
        Mat44 axis, placed;
        VeMatMakeTrans(dim_.p12.x, dim_.p12.y, dim_.p12.z, block_);
        DxArbaxis(dim_.normal[0], dim_.normal[1], dim_.normal[2], axis);
        VeMatMult(block_, axis, placed);
        VeMatMult(placed, m, block_);
        // The placement of a clone (group 12) moves the block alone: the other points tell where the clone
        // is.
        Mat44 toWorld;
        VeMatMult(axis, m, toWorld);
        const RPT3 given[7] = {dim_.p10, dim_.p11, dim_.p12, dim_.p13, dim_.p14, dim_.p15, dim_.p16};
        for (int i = 0; i < 7; ++i) {
            const bool isObjectPoint = i == 1 || i == 2 || i == 6;
            RPT3 p = given[i];
            DxTrans3DRpt(&p, isObjectPoint ? toWorld : m);
            points_[i] = {p.x, p.y};
        }
    }

    const double (*blockMatrix() const)[4] { return block_; }

    /// `start` is where the entities of the block begin.
    Outcome draw(DX_SAVE& start) {
        findStyle();
        Mat44 identity;
        VeMatMakeEinh(identity);
        if (DxKeepDimLines) raw_.seen = std::make_shared<DX_DIM_GEO>();
        const int error = DxReadDimGeo("ENDBLK", raw_, identity);
        if (error && error != DX_DIM_TOO_LARGE) return Outcome::Nothing;
        if (error || raw_.pts.empty()) return drawBlock(start);
        transformRaw();
        std::string text;
        if (DxGetDimText(dim_.text.view(), raw_.texts, text)) return drawBlock(start);
        if (DxDimMode == BLOCK_ONLY) return drawBlock(start);
        if (DxDimMode != ASSOCIATIVE || raw_.texts.texts.empty()) return drawFree(start);
        return drawDecoded(start, text);
    }

private:
    void findStyle() {
        style_ = dim_.styleOverride.get();
        if (!style_) style_ = DxFindDimStyle(dim_.styleName.view());
    }

    void transformRaw() {
        transform(raw_);
        if (raw_.seen) transform(*raw_.seen);
    }
    void transform(DX_DIM_GEO& geo) const {
        const bool isMirrored = DxMirrors(block_);
        for (OV_DIM_PT& p : geo.pts) {
            RPT3 at{p.x, p.y, 0};
            DxTrans3DRpt(&at, block_);
            p.x = at.x, p.y = at.y;
        }
        constexpr int arc = 4;
        for (std::size_t i = 1; isMirrored && i + 1 < geo.pts.size(); ++i) {
            if (geo.rawKinds[i] != arc) continue;
            std::swap(geo.pts[i - 1].x, geo.pts[i].x); // arcs stay counter-clockwise
            std::swap(geo.pts[i - 1].y, geo.pts[i].y);
            ++i;
        }
    }

    /// Along the dimension by the entity's point, across it by the block's text.
    RPT textPosition() const {
        RPT3 t = DxDimTextMiddle(raw_.texts.texts[0]);
        DxTrans3DRpt(&t, block_);
        const double c = std::cos(dim_.angle * toRadians), s = std::sin(dim_.angle * toRadians);
        const RPT& p11 = points_[1];
        return {c * c * p11.x + s * s * t.x, s * s * p11.y + c * c * t.y};
    }

    /// Decodes the points of the block by the kind of the dimension.
    int decode(DX_DIM_PTS& pts, const std::vector<int>& kinds, const RPT& textPos) {
        const RPT &p10 = points_[0], &p13 = points_[3], &p14 = points_[4], &p15 = points_[5];
        switch (decoded_.kind) {
        case DX_DIM_ANGULAR:
        case DX_DIM_ARC_LENGTH:
            return DxDecodeAngDimPts((dim_.flags & 31) > 4, points_, textPos, style_, refs_, pts, decoded_);
        case DX_DIM_RADIUS:
            refs_[0] = refs_[1] = p15;
            refs_[2] = p10;
            return DxDecodeRadDimPts(p15, p10, raw_.texts.texts[0].rotation == 0, style_, pts, decoded_);
        case DX_DIM_DIAMETER:
            refs_[0] = refs_[1] = p15;
            refs_[2] = {(p10.x + p15.x) / 2, (p10.y + p15.y) / 2};
            return DxDecodeDiaDimPts(p15, p10, style_, pts, decoded_);
        case DX_DIM_ORDINATE_X:
        case DX_DIM_ORDINATE_Y:
            refs_[0] = p10;
            refs_[1] = p13;
            return DxDecodeOrdDimPts(p13, p14, style_, pts, decoded_);
        default: {
            refs_[0] = p13;
            refs_[1] = p14;
            RPT onLine = p10;
            return DxDecodeLinDimPts(refs_[0], refs_[1], onLine, textPos, worldAngle(), kinds, style_, pts,
                                     decoded_);
        }
        }
    }

    /// The angle of a linear dimension under the matrix, degrees.
    double worldAngle() const {
        const double c = std::cos(dim_.angle * toRadians), s = std::sin(dim_.angle * toRadians);
        const double x = c * block_[0][0] + s * block_[1][0], y = c * block_[0][1] + s * block_[1][1];
        if (block_[0][1] == 0 && block_[1][0] == 0 && block_[0][0] > 0 && block_[0][0] == block_[1][1])
            return dim_.angle;
        const double angle = std::atan2(y, x) / toRadians;
        return angle < 0 ? angle + 360 : angle;
    }

    Outcome drawDecoded(DX_SAVE& start, std::string& text) {
        DX_DIM_PTS pts = raw_.pts;
        std::vector<int> kinds = raw_.rawKinds;
        DxDelMarkedPts(pts, kinds);
        const auto count = static_cast<int>(pts.size());
        const RPT textPos = textPosition();
        DxGetDimType(dim_, &decoded_.kind);
        const bool isSound = std::all_of(std::begin(points_), std::end(points_), [](const RPT& p) {
            return std::isfinite(p.x) && std::isfinite(p.y);
        });
        const int undecoded = isSound ? decode(pts, kinds, textPos) : DX_DIM_UNDECODED;
        const DX_TEXT_TYPE& first = raw_.texts.texts[0];
        DxConvTextToCAD(text, DxTextGetCharset(first.style.view(), DxTextDefaultFont()));
        DxResolveEscapes(text);
        const DX_DIM_LOOK line = lookAt(decoded_.dimIndex, count),
                          extension = lookAt(decoded_.extIndex, count);
        if (undecoded || DxSetDimParams(dim_, decoded_, line, extension, raw_.texts, style_))
            return drawFree(start);
        const Outcome outcome = drawKind(start, pts, textPos, text, line);
        DxRestoreDimParams();
        return outcome;
    }

    DX_DIM_LOOK lookAt(int index, int count) const {
        const int raw = DxRecalcIndex(index >= count ? 0 : index, raw_.pts);
        const auto place =
            static_cast<std::size_t>(std::clamp(raw, 0, static_cast<int>(raw_.looks.size()) - 1));
        return raw_.looks[place];
    }

    Outcome drawKind(DX_SAVE& start, const DX_DIM_PTS& pts, const RPT& textPos, const std::string& text,
                     const DX_DIM_LOOK& line) {
        const int kind = decoded_.kind;
        if (kind == DX_DIM_ORDINATE_X || kind == DX_DIM_ORDINATE_Y) return drawOrdinate(start, pts, line);
        DX_HOST_DIM host;
        host.kind = kind;
        host.points = pts;
        host.textPos = textPos;
        std::copy_n(refs_, 3, host.refs);
        host.text = text;
        if (!dim_.extendedKind && drawAssoc(host) == 0) return Outcome::Associative;
        return drawFree(start);
    }

    Outcome drawOrdinate(DX_SAVE& start, const DX_DIM_PTS& pts, const DX_DIM_LOOK& line) {
        if (DxDimDrawOrd(decoded_.kind, pts, refs_, raw_.texts, block_, line)) return drawFree(start);
        DxDimKeepLinesOfLast(raw_.seen.get(), DxActPat);
        return Outcome::Associative;
    }

    /// Queues it for a chain, or makes it at once.
    int drawAssoc(const DX_HOST_DIM& host) {
        const bool isLinear = host.kind >= DX_DIM_HORIZONTAL && host.kind <= DX_DIM_ALIGNED;
        if (isLinear && DxDimChainAdd(dim_.base, layer_, worldAngle(), host, raw_) == 0) return 0;
        if (const int error = DxNewElement(1)) return error;
        int row = 0;
        if (const int error = Dxovdodim(host, &row)) return error;
        DxDimKeepLines(raw_.seen.get(), DxActPat, row);
        return 0;
    }

    Outcome drawFree(DX_SAVE& start) {
        int kind = 0;
        DxGetDimType(dim_, &kind);
        return DxDrawDimFree(raw_, block_, kind, HOST_FREE, refs_) ? drawBlock(start) : Outcome::Free;
    }

    /// The entities of the block as ordinary elements.
    Outcome drawBlock(DX_SAVE& start) {
        const UtCString name = DxHostText(dim_.blockName.view());
        int error = DxRestoreActPos(&start);
        if (!error) {
            const int pdMode = DxPdMode;
            const bool drawnBefore = DxEntityDrawn != 0;
            DxPdMode = 1;
            DxEntityDrawn = 0;
            error = DxDrawCAD("ENDBLK", block_);
            DxPdMode = pdMode;
            hasDrawnBlock_ = DxEntityDrawn != 0;
            DxEntityDrawn = drawnBefore || hasDrawnBlock_ ? 1 : 0;
        }
        DxProtoMsg(DxMsg(error ? 5729 : 5728, name.c_str()), 1);
        return hasDrawnBlock_ ? Outcome::Block : Outcome::Nothing;
    }

    const DX_DIM_TYPE& dim_;
    DX_NAME layer_;
    const DX_DIM_STYLE* style_ = nullptr;
    RPT points_[7] = {}; ///< of groups 10 to 16, world coordinates
    Mat44 block_;
    DX_DIM_GEO raw_;
    DX_DIM_DECODED decoded_;
    RPT refs_[3] = {};
    bool hasDrawnBlock_ = false;
};

/// The place within the dimension's block, as within that of an INSERT. All of it is drawn into one pattern.
DX_INSERT_LEVEL levelOf(const DX_DIM_TYPE& dim, const DX_BLOCK_TYPE& block, const DX_NAME& layer,
                        const DX_NAME& lineType, int colour) {
    DX_INSERT_LEVEL level = DxActLevel;
    level.block = &block;
    if (++level.depth == 1) {
        level.topBlock = &block;
        level.space = dim.base.paperSpace;
    }
    level.lineType = dim.base.lineType.empty() ? lineType : dim.base.lineType;
    level.color = dim.base.color >= 1 && dim.base.color <= 255 ? dim.base.color : colour;
    level.layer = layer;
    level.keepsPattern = 1;
    return level;
}

void count(Outcome outcome, bool isInSection) {
    if (outcome == Outcome::Nothing) return;
    DxEntityDrawn = 1;
    if (!isInSection) return;
    DxDimensionTally& tally = DxReport.dimensions;
    ++(outcome == Outcome::Associative ? tally.associative
       : outcome == Outcome::Free      ? tally.free
                                       : tally.blocks);
}

/// Draws the dimension into a pattern of its own; the reader stands at the entities of its block.
int drawInOwnPattern(DimDrawer& drawer, const DX_NAME& layer, DX_SAVE& start, bool isInSection) {
    DxPatternScope pattern;
    if (const int error = DxDimNewPat(layer)) return error;
    count(drawer.draw(start), isInSection);
    return pattern.leave();
}

/// What stands around a dimension: its layer, and what ByLayer means for it.
struct Surroundings {
    DX_NAME layer, lineType;
    int colour;
};

/// The dimension with the reader at the entities of its block.
int drawAtBlock(const DX_DIM_TYPE& dim, const Mat44 m, const DX_BLOCK_TYPE& block,
                const Surroundings& around) {
    DX_SAVE start;
    DxSaveActPos(&start);
    int kind = 0;
    int error = DxGetDimType(dim, &kind);
    if (!error) error = DxRestoreActPos(&start);
    if (error) {
        if (DxCheckPass && error == badPosition)
            DxProtoMsg(DxMsg(5720, DxHostText(dim.blockName.view()).c_str()), 1);
        return error;
    }
    DimDrawer drawer(dim, around.layer);
    drawer.placeBy(m);
    const bool isInSection = DxBlockLevel == 0;
    const DX_NAME insertLayer = DxInsertLayer;
    {
        const DxInsertScope scope(levelOf(dim, block, around.layer, around.lineType, around.colour));
        error = scope.error();
        if (!error)
            error = DxCheckPass ? DxDrawCAD("ENDBLK", drawer.blockMatrix())
                                : drawInOwnPattern(drawer, around.layer, start, isInSection);
    }
    DxActLevel.layer = insertLayer;
    return error;
}

} // namespace

int DxDimNewPat(const DX_NAME& layer) {
    static constexpr const char* names[] = {"#G", "#E", "#K", "#M", "layer"};
    if (const int error = DxNewPat(0)) return error;
    if (DxLayerOrder < DX_ORDER_GROUP || DxLayerOrder > DX_ORDER_ATTR) return 0;
    DX_NAME hostName = layer;
    DxTableConvLayer(1, &hostName);
    UoSetSingleAttr(DxActPat, names[DxLayerOrder], DxHostText(hostName.view()));
    return 0;
}

int DxDrawDim(const DX_DIM_TYPE* dim, const Mat44 m) {
    int colour = 0;
    DX_NAME lineType{};
    DX_LAYER_TYPE* record = nullptr;
    const bool isTooDeep = DxBlockLevel >= DX_DEEPEST_BLOCK;
    if (isTooDeep || !DxCheckRecursion(dim->blockName) ||
        !DxSetActLayer(&dim->base, &colour, &lineType, &record))
        return 0;
    const DX_NAME layer = DxActLayer;
    DX_SAVE behind;
    DxSaveActPos(&behind);
    DxfEntityFileReference reference;
    DxGetBlock(dim->blockName.view(), reference);
    if (!reference.block) {
        DxProtoMsg(DxMsg(5703, DxHostText(dim->blockName.view()).c_str()), 1);
        DxNoteReason(DxReason::NoBlock);
        return DxRestoreActPos(&behind);
    }
    const int error = drawAtBlock(*dim, m, *reference.block, {layer, lineType, colour});
    const int restored = DxRestoreActPos(&behind);
    reference.place->Disarm();
    constexpr int stopped = 9009;
    return error == stopped ? error : restored;
}
