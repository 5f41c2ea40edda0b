// Elements of the active pattern: the drawing shift, counting, filled figures.
#include "../session/session_state.h"
#include "dx_host.h"

#include "ov.h"

int Dxovdraw(int op, double x, double y, unsigned char info) {
    if (const int error = DxNewElement(1)) return error;
    DxLastOutX = x - DxShiftX;
    DxLastOutY = y - DxShiftY;
    return DxCiElemAddElem(op, 0, 0, DxLastOutX, DxLastOutY, info);
}

int Dxovarc(int op, double x, double y, double cx, double cy, unsigned char info) {
    if (const int error = DxNewElement(1)) return error;
    DxLastOutX = x - DxShiftX;
    DxLastOutY = y - DxShiftY;
    return DxCiElemAddElem(op, cx - DxShiftX, cy - DxShiftY, DxLastOutX, DxLastOutY, info);
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
    int result =
        addToOutline(op, {x - DxShiftX, y - DxShiftY}, {cx - DxShiftX, cy - DxShiftY}, mode == 1, kept);
    if (result) {
        if (DxFillPat) dropOutline();
        return result;
    }
    if (mode != 2) return 0;
    int code = 1;
    result = ovhatch(&code, &kept, &DxFillPat);
    const int dropped = dropOutline();
    return result ? result : dropped;
}
