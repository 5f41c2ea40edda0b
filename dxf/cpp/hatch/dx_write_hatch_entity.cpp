// Writer of HATCH, and of the values that it asks of the host.
#include "../config/config_state.h"
#include "../config/dx_pens.h"
#include "../export/dx_write_entities.h"
#include "../host/dx_host.h"
#include "../import/dx_extents.h"
#include "../session/dx_writer.h"
#include "../session/writer_state.h"
#include "ci_objects.h"
#include "dx_codes.h"
#include "dx_hatch_pattern.h"
#include "dx_write_hatch.h"
#include "mt.h"
#include "ut.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double onePoint = 0.0001;

bool isArc(const UO_ELEM& e) {
    return e.type == 3 || e.type == 4;
}
bool isOnePoint(const RPT& a, const RPT& b) {
    return std::fabs(a.x - b.x) <= onePoint && std::fabs(a.y - b.y) <= onePoint;
}
bool isWholeCircle(const UO_ELEM& e) {
    return isArc(e) && isOnePoint(e.start, e.end);
}

int writePoint(const RPT& p) {
    DxWriteDouble(10, p.x);
    return DxWriteDouble(20, p.y);
}

int writeStep(double bulge, const RPT& end) {
    DxWriteDouble(42, bulge);
    return writePoint(end);
}

/// Tangent of a quarter of the arc's angle, positive counter-clockwise.
double bulgeOf(const UO_ELEM& e, const RPT& start, const RPT& end, const RPT& centre, const Mat32 mat) {
    const bool positive = (e.type == 4) != MtIsMirrored(mat);
    const double a0 = std::atan2(centre.y - start.y, centre.x - start.x);
    const double a1 = std::atan2(centre.y - end.y, centre.x - end.x);
    double angle = positive ? a1 - a0 : a0 - a1;
    if (angle < 0) angle += 2 * pi;
    const double bulge = std::fabs(std::tan(angle / 4));
    return positive ? bulge : -bulge;
}

/// The first point, one for each element and one more for each whole circle.
int vertexCount(const std::vector<UO_ELEM>& elems) {
    int count = 1;
    for (const UO_ELEM& e : elems) count += isWholeCircle(e) ? 2 : 1;
    return count;
}

int writeLoop(const std::vector<UO_ELEM>& elems, int flags, const Mat32 mat) {
    DxWriteInt(92, flags);
    DxWriteInt(72, 1);
    DxWriteInt(73, 0);
    DxWriteInt(93, vertexCount(elems));
    for (std::size_t i = 0; i < elems.size(); ++i) {
        DxWriteHatchElem(elems[i], static_cast<int>(i), mat);
        DxStoreMaxXY(elems[i].end.x, elems[i].end.y);
    }
    DxWriteDouble(42, 0.0);
    return DxWriteInt(97, 0);
}

int writeLine(const DX_HATCH_DEF& def) {
    DxWriteDouble(53, std::round(def.angle * 1e4) / 1e4);
    DxWriteDouble(43, def.base.x);
    DxWriteDouble(44, def.base.y);
    DxWriteDouble(45, def.offset.x);
    DxWriteDouble(46, def.offset.y);
    DxWriteInt(79, static_cast<int>(def.dashes.size()));
    for (const double dash : def.dashes) DxWriteDouble(49, dash);
    return DxWriteError();
}

int writePattern(const std::vector<DX_HATCH_DEF>& defs, const OV_HATCH_PATTERN* source) {
    DxWriteDouble(52, source ? source->angle * DX_DEGREES : 0.0);
    DxWriteDouble(41, source ? source->scale : 1.0);
    DxWriteInt(77, source ? source->crossed : 0);
    DxWriteInt(78, static_cast<int>(defs.size()));
    for (const DX_HATCH_DEF& def : defs) writeLine(def);
    return DxWriteError();
}

/// A colour of a gradient, and the exact one of a pen that has a look.
int writeGradientColour(int colour) {
    DxWriteInt(63, DxEntityColor(colour));
    const auto look = DxWriteLooks.find(colour);
    const bool isExact = colour >= DX_COLOR_OF_LOOK && look != DxWriteLooks.end() &&
                         look->second.trueColor >= 0 && DxMiscCheckVersion(DX_LEVEL_TRUE_COLOR);
    return isExact ? DxWriteInt(421, look->second.trueColor) : DxWriteError();
}

int writeGradient(const DX_HATCH_GRAD& gradient) {
    DxWriteInt(450, 1);
    DxWriteInt(451, 0);
    DxWriteDouble(460, gradient.angle);
    DxWriteDouble(461, gradient.shift);
    DxWriteInt(452, 0);
    DxWriteDouble(462, 1.0);
    DxWriteInt(453, gradient.colorCount);
    DxWriteDouble(463, 0.0);
    writeGradientColour(gradient.colors[0]);
    DxWriteDouble(463, 1.0);
    writeGradientColour(gradient.colors[1]);
    return DxWriteString(470, gradient.name);
}

} // namespace

int DxWriteHatchElem(const UO_ELEM& elem, int index, const Mat32 mat) {
    RPT start, end, centre;
    MtTransRPt(elem.start, mat, &start);
    MtTransRPt(elem.end, mat, &end);
    MtTransRPt(elem.centre, mat, &centre);
    if (index == 0) writePoint(start);
    if (!isArc(elem)) return writeStep(0.0, end);
    if (isWholeCircle(elem)) {
        writeStep(1.0, {2 * centre.x - start.x, 2 * centre.y - start.y});
        return writeStep(1.0, end);
    }
    return writeStep(bulgeOf(elem, start, end, centre, mat), end);
}

int DxWriteHatchs(const std::vector<DX_HATCH_CONT>& conts, const std::vector<DX_HATCH_DEF>& defs,
                  const OV_HATCH_PATTERN* source, const DX_HATCH_GRAD* gradient, int pen, int transparency,
                  const Mat32 mat) {
    const bool isSolid = defs.empty();
    DX_WRITE_STYLE style;
    DX_NAME lineType;
    lineType.clear();
    if (isSolid)
        DxFillToDXF(pen, &style.colour);
    else
        DxPenLtToDXF(pen, 1, &style.colour, &lineType, 2);
    if (!DxShouldWriteColor(style.colour, pen)) return 0;
    style.layer = UtCString(DxActLayer.view());
    style.lineType = UtCString(lineType.view());
    const bool hasGradient = gradient && DxMiscCheckVersion(DX_LEVEL_SHEETS);
    for (const DX_HATCH_CONT& cont : conts) {
        DxWriteEntityHead("HATCH", style);
        if (hasGradient) DxWriteInt(440, transparency);
        DxWriteSubClass("AcDbHatch");
        writePoint({0, 0});
        DxWriteDouble(30, 0.0);
        DxWriteDouble(210, 0.0);
        DxWriteDouble(220, 0.0);
        DxWriteDouble(230, 1.0);
        DxWriteString(2, isSolid ? DxOutText("SOLID") : source ? DxOutText(source->name) : DxOutText("_U"));
        DxWriteInt(70, isSolid ? 1 : 0);
        DxWriteInt(71, 1);
        DxWriteInt(91, static_cast<int>(cont.holes.size()) + 1);
        constexpr int outermostPolyline = 18, polyline = 2;
        writeLoop(cont.elems, outermostPolyline, mat);
        for (const std::vector<UO_ELEM>& hole : cont.holes) writeLoop(hole, polyline, mat);
        DxWriteInt(75, 0);
        DxWriteInt(76, isSolid ? 1 : source ? source->type : 0);
        if (!isSolid) writePattern(defs, source);
        DxWriteInt(98, 0);
        if (hasGradient && !gradient->name.empty()) writeGradient(*gradient);
    }
    return DxWriteError();
}

// ---- what the host has ---------------------------------------------------------------------------------

namespace {

/// Adds the lines of one direction. Its base is measured to the right of the lines.
int addLines(const UO_HATCH_PAR& par, const Mat32 mat, std::vector<DX_HATCH_DEF>* defs) {
    const double own = par.angle - DsCoordSysActiveAngle();
    const double a = own + MtGetRot(mat), scale = MtGetScale(mat);
    const double period = (par.c1 * par.d1 + par.c2 * par.d2) * scale;
    double* dashes = nullptr;
    int dashCount = 0;
    if (const int error = DxGetHatchDashes(par.lineType, &dashes, &dashCount)) return error;
    double p = par.useBase ? par.base : 0;
    for (int i = 0; i < par.c1 + par.c2; ++i) {
        RPT on;
        MtTransRPt({std::sin(own) * p, -std::cos(own) * p}, mat, &on);
        // The point of the line nearest to the origin.
        const double across = -std::sin(a) * on.x + std::cos(a) * on.y;
        DX_HATCH_DEF def{};
        def.angle = a * DX_DEGREES;
        def.base = {-std::sin(a) * across, std::cos(a) * across};
        def.offset = {-std::sin(a) * period, std::cos(a) * period};
        def.dashCount = dashCount;
        def.dashes.assign(dashes, dashes + dashCount);
        defs->push_back(std::move(def));
        p += i < par.c1 ? par.d1 : par.d2;
    }
    if (void* block = dashes) UtFreeMemory(&block);
    return 0;
}

} // namespace

int DxGetHatchParams(std::vector<DX_HATCH_DEF>* defs, const Mat32 mat) {
    constexpr int read = 20;
    defs->clear();
    UO_HATCH_PAR pars[2];
    if (const int error = UoHatchPar(read, pars)) return error;
    for (UO_HATCH_PAR& par : pars) {
        if (par.d1 == 0) par.c1 = 0;
        if (par.d2 == 0) par.c2 = 0;
    }
    if (pars[0].lineType <= 0) return 0;
    for (const UO_HATCH_PAR& par : pars)
        if (const int error = addLines(par, mat, defs)) return error;
    return 0;
}

int DxCiGetGradHatchParams(const DsCsr& hatch, DX_HATCH_GRAD* gradient) {
    constexpr int isGradient = 3;
    *gradient = DX_HATCH_GRAD{};
    CiHatch hatches(DxCiContextId);
    int type = 0, form = 0;
    if (const int error = hatches.GetTypeParams(hatch, &type, &form)) return error;
    int pens[2] = {0, 0};
    double size = 0;
    unsigned short high = 0, low = 0;
    for (int record = 1; record <= (type == isGradient ? 2 : 1); ++record)
        if (const int error = hatches.GetParams(hatch, record, &pens[record - 1], &gradient->angle,
                                                &gradient->shift, &size, &high, &low))
            return error;
    if (type != isGradient) {
        *gradient = DX_HATCH_GRAD{};
        return 0;
    }
    gradient->name.assign(form == 1 ? "CYLINDER" : "LINEAR");
    gradient->colorCount = 2;
    for (int i = 0; i < 2; ++i) {
        DX_NAME lineType;
        DxPenLtToDXF(pens[i], 1, &gradient->colors[i], &lineType, 2);
    }
    return 0;
}

int DxCiGetHatchTransparency(const DsCsr& hatch, unsigned short* percent) {
    *percent = 0;
    CiHatch hatches(DxCiContextId);
    int type = 0, form = 0, pen = 0;
    if (const int error = hatches.GetTypeParams(hatch, &type, &form)) return error;
    double angle = 0, shift = 0, size = 0;
    unsigned short high = 0, low = 0;
    if (const int error = hatches.GetParams(hatch, 1, &pen, &angle, &shift, &size, &high, &low)) return error;
    constexpr int fill = 1, gradient = 3;
    if (type == fill || type == gradient) *percent = static_cast<unsigned short>(high * 16 + low);
    return 0;
}
