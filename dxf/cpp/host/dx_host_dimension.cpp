#include "dx_host_dimension.h"

#include "dx_frame.h"
#include "dx_host.h"
#include "ov_arrow.h"

#include <cmath>

namespace {

constexpr int NO_LENGTH = 1;
constexpr int READ = 0x8014;

bool agree(const RPT& a, const RPT& b) {
    const double tolerance = DxDrawingTolerance();
    return std::fabs(a.x - b.x) <= tolerance && std::fabs(a.y - b.y) <= tolerance;
}

/// A radius is measured from its centre, all others between the first two reference points.
bool measuresNothing(const DX_HOST_DIM& dim) {
    const int kind = dim.kind & 0xffff;
    const bool isRadial = kind == OV_DIM_RADIUS || kind == OV_DIM_DIAMETER;
    return agree(dim.refs[0], dim.refs[isRadial ? 2 : 1]);
}

void toHost(DX_HOST_DIM& dim) {
    for (OV_DIM_PT& p : dim.points) {
        const RPT at = DxPointToHost(p.x, p.y);
        p.x = at.x, p.y = at.y;
    }
    for (RPT* p : {&dim.textPos, &dim.refs[0], &dim.refs[1], &dim.refs[2]}) *p = DxPointToHost(p->x, p->y);
}

} // namespace

int DxovGetDimSets(DX_DIM_SETS* sets) {
    return ovglobdimparams(5, &sets->arrow, &sets->txt, &sets->tol);
}

int DxovSetDimSets(const DX_DIM_SETS& sets) {
    DX_DIM_SETS copy = sets;
    return ovglobdimparams(6, &copy.arrow, &copy.txt, &copy.tol);
}

int Dxovdodim(DX_HOST_DIM dim, int* row) {
    if (measuresNothing(dim)) return NO_LENGTH;
    if (const int error = DxCiElemDrawPat()) return error;
    toHost(dim);
    return ovdodim(6, DxActPat, row, &dim.kind, &dim.points, &dim.textPos, dim.refs, &dim.text);
}

static int addArrowPoint(const DX_ARROW_PT& p) {
    int op = p.op, first = p.isLeaderStart, kind = 0;
    RPT at = DxPointToHost(p.point.x, p.point.y), centre = DxPointToHost(p.centre.x, p.centre.y);
    return ovaddarrow(&op, &first, &kind, &at.x, &at.y, &centre.x, &centre.y);
}

static int setArrowLook(const DX_ARROW_PT& p, bool ofDimension) {
    int code = 6, use = ofDimension ? OV_ARROW_OF_DIMENSION : OV_ARROW_BY_ITSELF, kind = 0;
    int pen = p.pen, lineType = p.lineType;
    double length = 0, width = 0;
    return ovarrowparams(&code, &use, &kind, &pen, &lineType, &length, &width);
}

int Dxovdimlines(const std::vector<DX_ARROW_PT>& points, bool ofDimension) {
    if (points.empty()) return 0;
    if (const int error = DxCiElemDrawPat()) return error;
    if (const int error = setArrowLook(points[0], ofDimension)) return error;
    int code = 11, pat = 0, row = 0, unused = 0;
    if (const int error = ovarrow(&code, &pat, &row, &unused)) return error;
    const DX_ARROW_PT* before = points.data();
    for (const DX_ARROW_PT& p : points) {
        const bool changes = p.op != 2 && (p.pen != before->pen || p.lineType != before->lineType);
        int error = changes ? setArrowLook(p, ofDimension) : 0;
        if (!error) error = addArrowPoint(p);
        if (error) return error;
        before = &p;
    }
    return 0;
}

int DxovShowDimLines(int pat, int row) {
    return ovdimlines(6, pat, row);
}

int Dxovdim(int kind, int mode, int textRow, int tolRow, const RPT refs[3]) {
    int horizontal = 0, row = 0;
    if (const int error = ovdimparams(6, &kind, &mode, &horizontal)) return error;
    RPT points[3];
    for (int i = 0; i < 3; ++i) points[i] = DxPointToHost(refs[i].x, refs[i].y);
    return ovdim(6, DxActPat, &row, &textRow, &tolRow, points);
}

int DxovNextDim(int pat, int* row, int* textRow, int* tolRow) {
    return ovdim(*row < 0 ? 0x8026 : 0x8018, pat, row, textRow, tolRow, nullptr);
}

int DxovReadDim(int pat, int row, DX_HOST_DIM* dim) {
    return ovdodim(READ, pat, &row, &dim->kind, &dim->points, &dim->textPos, dim->refs, &dim->text);
}

int DxovReadDimSets(int pat, int row, DX_DIM_SETS* sets) {
    return ovlocdimparams(20, pat, row, &sets->arrow, &sets->txt, &sets->tol);
}

int DxovReadDimMode(int* mode, int* horizontal) {
    int kind = 0;
    return ovdimparams(5, &kind, mode, horizontal);
}

int DxovReadDimHeads(int pat, int row, std::vector<int>* starts, std::vector<int>* ends) {
    return ovarrowel(READ, pat, row, starts, ends);
}

int DxovDimLines(int pat, int row, int* linePat) {
    return ovarrowpat(READ, pat, &row, linePat);
}

int DxovReleaseLines(int linePat) {
    int row = 0;
    return ovarrowpat(32, 0, &row, &linePat);
}
