// The walk over a pattern's hatches: which of the forms each one takes.
#include "dx_write_hatch.h"

#include "../config/config_state.h"
#include "../config/dx_layers.h"
#include "../export/dx_layer_choice.h"
#include "../export/dx_origin_walk.h"
#include "../export/dx_pattern_walk.h"
#include "../export/dx_write_blocks.h"
#include "../export/dx_write_entities.h"
#include "../export/export_state.h"
#include "../host/dx_host.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/dx_writer.h"
#include "dx_codes.h"
#include "dx_fill_contours.h"
#include "hatch_state.h"
#include "mt.h"
#include "ut.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int noHatches = 0, asBlocks = 2; // WRITE_HATCH
constexpr int firstHatch = 38, nextHatch = 24, readParams = 20, expand = 86, release = 32;
constexpr int texture = 4;
constexpr int noFacets = 3007; ///< passed over

enum class Pass { Fills, Lines };
/// Where the hatches go: a block each, the INSERTs of these, or as they are.
enum class Place { Block, Insert, Here };

/// The current hatch as it goes out.
struct Outgoing {
    int pen = 1;
    bool isFill = false;
    std::vector<DX_HATCH_CONT> conts;
    std::vector<DX_HATCH_DEF> defs; ///< of a real hatch
    OV_HATCH_PATTERN source;
    bool hasSource = false;
    bool isInBlock = false; ///< an INSERT of its block is all that is written
    int linesPat = 0;       ///< the hatch expanded to its lines, 0: it isn't

    Outgoing() = default;
    Outgoing(const Outgoing&) = delete;
    Outgoing& operator=(const Outgoing&) = delete;
    ~Outgoing() {
        if (linesPat) ovhatchelems(release, &linesPat);
    }
};

/// The pattern that a walk leaves active is so again at the end.
class ActivePattern {
public:
    ActivePattern() {
        if (Dxovpat(5, &pat_) == 0 && Dxovpat(23, &pat_) == 0) return;
        isOwn_ = Dxovpat(11, &pat_) == 0;
    }
    ActivePattern(const ActivePattern&) = delete;
    ActivePattern& operator=(const ActivePattern&) = delete;
    ~ActivePattern() { isOwn_ ? Dxovpat(17, &pat_) : Dxovpat(23, &pat_); }

private:
    int pat_ = 0;
    bool isOwn_ = false;
};

void chooseLayer(int pat, int row) {
    if (DxColAttr) DxPatSetColAttrInfo(pat, DX_KIND_HATCH);
    DxPatSetLayerAttribs(pat, row, DX_KIND_HATCH);
}

/// One hatch more that the run tells as missing.
bool isMissing() {
    ++DxUnwrittenCounts[DX_UNWRITTEN_HATCH];
    return false;
}

/// Whether the current hatch is written in this pass, and with which pen.
bool isOfPass(Pass pass, int kind, Outgoing& out) {
    int lineType = 0;
    if (ovhatchparams(readParams, 1, &out.pen, &lineType) != 0) return isMissing();
    out.isFill = lineType == 0;
    if (pass == Pass::Fills && !out.isFill) {
        constexpr int penShift = 6;
        int fill = 0;
        if (kind == texture) {
            DxProtoMsg(DxMsg(11317), 1);
            out.isFill = true;
        } else if (ovdrawhatchparams(readParams, &fill) == 0) {
            out.pen = fill >> penShift;
            out.isFill = true;
        }
    }
    return out.isFill == (pass == Pass::Fills);
}

bool isFinite(const RPT& p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

/// The pattern of the source in the file's frame.
bool takeSource(const Mat32 mat, Outgoing& out) {
    if (!DxKeepHatchPattern || ovhatchpattern(readParams, &out.source) != 0 || out.source.lines.empty() ||
        !DxHatchCarriesSource(out.source))
        return false;
    const double turn = MtGetRot(mat), scale = MtGetScale(mat);
    out.defs.clear();
    for (const OV_PATTERN_LINE& line : out.source.lines) {
        DX_HATCH_DEF def{};
        RPT next;
        def.angle = (line.angle + turn) * DX_DEGREES;
        MtTransRPt(line.base, mat, &def.base);
        MtTransRPt({line.base.x + line.offset.x, line.base.y + line.offset.y}, mat, &next);
        def.offset = {next.x - def.base.x, next.y - def.base.y};
        if (!isFinite(def.base) || !isFinite(def.offset)) return false;
        for (const double dash : line.dashes) def.dashes.push_back(dash * scale);
        def.dashCount = static_cast<int>(def.dashes.size());
        out.defs.push_back(std::move(def));
    }
    out.source.angle += turn;
    out.source.scale *= scale;
    return true;
}

/// A HATCH with its lines, where the target has it.
bool prepareRealHatch(const Mat32 mat, Outgoing& out) {
    if (!DxMiscCheckVersion(DX_LEVEL_HANDLES) || DxWriteHatch == asBlocks) return false;
    out.hasSource = takeSource(mat, out);
    if (!out.hasSource && DxGetHatchParams(&out.defs, mat) != 0) return false;
    if (out.defs.empty() || DxFillHatchCont(&out.conts, 0) != 0) return false;
    return !out.conts.empty();
}

/// False when there is nothing to write.
bool prepare(const Mat32 mat, Outgoing& out) {
    if (out.isFill && !DxWriteFill) return false;
    if (out.isFill) return DxFillHatchCont(&out.conts, 1) ? isMissing() : !out.conts.empty();
    if (prepareRealHatch(mat, out)) return true;
    out.conts.clear();
    out.defs.clear();
    if (ovhatchelems(expand, &out.linesPat) != 0) {
        out.linesPat = 0;
        return isMissing();
    }
    int isEmpty = 1;
    return UoPatEmpty(out.linesPat, &isEmpty) ? isMissing() : !isEmpty;
}

/// Notes that the pattern's hatches are blocks from here on.
int noteBlocks(int pat) {
    return DxHatchBlocks.add({pat, DxHatchBlockNo});
}
/// True with the number of its first INSERT set, where the block pass has made blocks of its hatches.
/// Patterns that are blocks themselves are written ahead of others.
bool findBlocks(int pat) {
    const auto isBefore = [](const DX_HATCH_BLOCKS& blocks, int number) { return blocks.pat < number; };
    const auto* found = std::lower_bound(DxHatchBlocks.begin(), DxHatchBlocks.end(), pat, isBefore);
    if (found == DxHatchBlocks.end() || found->pat != pat) return false;
    DxHatchInsertNo = found->first;
    return true;
}

int writeInsert() {
    DxWriteEntityStart("INSERT", DxActLayer);
    DxWriteSubClass("AcDbBlockReference");
    DxWriteString(2, UtFormat("*X%d", DxHatchInsertNo++));
    DxWriteDouble(10, 0.0);
    DxWriteDouble(20, 0.0);
    return DxWriteDouble(30, 0.0);
}

int writeFillOrHatch(Outgoing& out, const Mat32 mat) {
    if (out.isFill) return DxFillHatchWrite(out.conts, out.pen, mat);
    return DxWriteHatchs(out.conts, out.defs, out.hasSource ? &out.source : nullptr, nullptr, out.pen, 0,
                         mat);
}

int writeEntities(Outgoing& out, int pat, const Mat32 mat) {
    if (!DxBlockOpen) {
        if (const int error = DxWriteBlockStart(DxBlockOpen)) return error;
        DxBlockLayer = UtCString(DxActLayer.view());
    }
    ++DxEntityCount;
    if (out.isInBlock) return writeInsert();
    if (!out.linesPat) return writeFillOrHatch(out, mat);
    return DxWritePatElPoly(out.linesPat, DX_KIND_HATCH, DxWritePoly, pat);
}

/// The lines of the expanded hatch as LINE and ARC.
int writePlainLines(const Outgoing& out, const Mat32 mat) {
    UO_ELEM e{};
    e.patNo = out.linesPat;
    int error = Dxovelem(DX_ELEM_FIRST, &e);
    for (; !error; error = Dxovelem(DX_ELEM_NEXT, &e)) {
        const int pen = DxColAttr && DxHatchColor ? DxHatchColor : e.pen;
        int written = 0;
        if (e.type == 1)
            written = DxWriteLine(e.start.x, e.start.y, e.end.x, e.end.y, pen, e.lineType, mat);
        else if (e.type == 3 || e.type == 4)
            written = DxWriteArc(e.type, e.start.x, e.start.y, e.end.x, e.end.y, e.centre.x, e.centre.y, pen,
                                 e.lineType, mat);
        if (written) return written;
    }
    return error == DX_ERR_NO_MORE ? 0 : error;
}

int writeBlock(Outgoing& out, const Mat32 mat) {
    DxPatNames[DX_PAT_NAME] = UtFormat("*X%d", DxHatchBlockNo++);
    int open = 0;
    if (const int error = DxWriteBlockStart(open)) return error;
    int error = out.linesPat ? writePlainLines(out, mat) : writeFillOrHatch(out, mat);
    const int ended = DxWriteBlockEnd(open);
    if (!error) error = ended;
    return error;
}

/// Hatches that leave as the entities that they were made from, such as wide polylines. `rows` receives which
/// those are.
int writeKept(int pat, std::vector<bool>& rows) {
    rows.assign(static_cast<std::size_t>(UoContentCount(pat, OV_HATCHES)), false);
    DxOriginWalk origins(pat, OV_HATCHES);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const OV_ORIGIN* const origin = origins.at(static_cast<int>(row));
        rows[row] = origin != nullptr;
        if (!origin || origin->first != static_cast<int>(row)) continue;
        chooseLayer(pat, static_cast<int>(row));
        if (!DxBlockOpen) {
            if (const int error = DxWriteBlockStart(DxBlockOpen)) return error;
            DxBlockLayer = UtCString(DxActLayer.view());
        }
        ++DxEntityCount;
        if (const int error = DxWriteKept(origins.entities(), {})) return error;
    }
    return 0;
}

int writeOne(int pat, int row, int kind, Pass pass, Place place, const Mat32 mat) {
    chooseLayer(pat, row);
    Outgoing out;
    out.isInBlock = place == Place::Insert;
    if (!isOfPass(pass, kind, out)) return 0;
    const ActivePattern active;
    if (!prepare(mat, out)) return 0;
    const int error = place == Place::Block ? writeBlock(out, mat) : writeEntities(out, pat, mat);
    return error == noFacets ? 0 : error;
}

int writePass(int pat, Pass pass, Place place, const std::vector<bool>& left, const Mat32 mat) {
    int row = 0, kind = 0;
    int error = ovnexthatch2(firstHatch, pat, &row, &kind);
    while (!error) {
        const auto index = static_cast<std::size_t>(row);
        if (index >= left.size() || !left[index]) error = writeOne(pat, row, kind, pass, place, mat);
        if (!error) error = ovnexthatch2(nextHatch, pat, &row, &kind);
    }
    return error == DX_ERR_NO_MORE ? 0 : error;
}

} // namespace

int DxWritePatHatch(int pat, int toBlock) {
    if (DxWriteHatch == noHatches) return 0;
    Mat32 mat;
    if (const int error = DxWriteMatrix(pat, mat)) return error;
    const int before = DxEntityCount;
    Place place = Place::Block;
    if (!toBlock) place = DxWriteHatch == asBlocks && findBlocks(pat) ? Place::Insert : Place::Here;
    int error = toBlock ? noteBlocks(pat) : 0;
    std::vector<bool> left;
    if (!error && place == Place::Here) error = writeKept(pat, left);
    if (!error) error = writePass(pat, Pass::Fills, place, left, mat);
    if (!error) error = writePass(pat, Pass::Lines, place, left, mat);
    if (!error && DxEntityCount > before) error = DxAddLayer(DxActLayer.view());
    return error;
}

int DxWriteHatchBlock(int pat) {
    DxBlockType = DX_BLOCK_HATCH;
    int error = DxPatGetInfo(pat);
    if (!error && DxPatsOneWork) error = DxWritePatHatch(pat, 1);
    DxBlockType = DX_BLOCK_PLAIN;
    return error;
}
