// Elements of patterns: counting, splines, outlines, filled figures.
#include "dx_frame.h"
#include "dx_host.h"

#include "ov.h"

#include <algorithm>
#include <vector>

/// Counts an element and notes where it ends.
static int announce(double x, double y) {
    if (const int error = DxNewElement(1)) return error;
    const RPT to = DxPointToContext(x, y);
    DxLastOutX = to.x;
    DxLastOutY = to.y;
    return 0;
}

int Dxovdraw(int op, double x, double y, unsigned char info) {
    if (const int error = announce(x, y)) return error;
    return DxCiElemAddElem(op, 0, 0, DxLastOutX, DxLastOutY, info);
}

int Dxovarc(int op, double x, double y, double cx, double cy, unsigned char info) {
    if (const int error = announce(x, y)) return error;
    const RPT centre = DxPointToContext(cx, cy);
    return DxCiElemAddElem(op, centre.x, centre.y, DxLastOutX, DxLastOutY, info);
}

int Dxovspline(int count, const double* x, const double* y, double startAngle, double endAngle,
               bool* isDrawn) {
    *isDrawn = false;
    if (const int error = DxCiElemDrawPat()) return error;
    constexpr int usual = 32; // points that need no memory of their own
    double few[2 * usual];
    std::vector<double> many;
    if (count > usual) many.resize(2 * static_cast<std::size_t>(count));
    double* const hostX = count > usual ? many.data() : few;
    double* const hostY = hostX + std::max(count, 0);
    for (int i = 0; i < count; ++i) {
        const RPT point = DxPointToHost(x[i], y[i]);
        hostX[i] = point.x;
        hostY[i] = point.y;
    }
    int degree = 3, one = 1, flags[2] = {1, 1};
    *isDrawn = ovspline(&count, hostX, hostY, &degree, &one, flags, &startAngle, &endAngle) == 0;
    if (*isDrawn) ++DxElemsOut;
    return 0;
}

int Dxovelem(DX_ELEM_STEP step, UO_ELEM* elem) {
    if (const int error = DxCiElemDrawPat()) return error;
    int code = step;
    return ovelem(&code, elem);
}

int Dxovcopy(int fromPat, int toPat) {
    if (const int error = DxCiElemDrawPat()) return error;
    int code = 8;
    return ovcopy(&code, &fromPat, &toPat);
}

int Dxovhatch(int toPat, int contourPat) {
    if (const int error = DxCiElemDrawPat()) return error;
    int code = 1;
    return ovhatch(&code, &toPat, &contourPat);
}

static int activate(int patNo) {
    return Dxovpat(23, &patNo);
}

/// One element into the contour pattern, with pattern `kept` active again behind it.
static int addToOutline(int op, RPT point, RPT centre, bool isFirst, int kept) {
    if (const int error = isFirst ? Dxovpat(211, &DxFillPat) : activate(DxFillPat)) return error;
    const int drawn = op == 1 || op == 2 ? ovdraw(op, point.x, point.y, 0)
                                         : ovarc(op, point.x, point.y, centre.x, centre.y, 0);
    const int restored = activate(kept);
    return drawn ? drawn : restored;
}

static int dropOutline() {
    const int error = Dxovpat(17, &DxFillPat);
    DxFillPat = 0;
    return error;
}

int Dxovfillelem(int op, double x, double y, double cx, double cy, int mode) {
    if (const int error = DxNewElement(1)) return error;
    int kept = 0;
    if (const int error = Dxovpat(5, &kept)) return error;
    int result = addToOutline(op, DxPointToHost(x, y), DxPointToHost(cx, cy), mode == 1, kept);
    if (result) {
        if (DxFillPat) dropOutline();
        return result;
    }
    if (mode != 2) return 0;
    result = Dxovhatch(kept, DxFillPat);
    const int dropped = dropOutline();
    return result ? result : dropped;
}
