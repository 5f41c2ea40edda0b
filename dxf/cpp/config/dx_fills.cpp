#include "dx_pens.h"

#include "../host/dx_host.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "dx_colors.h"
#include "dx_looks.h"
#include "ov.h"

static int findFillInHand(int fill) {
    int statePen = -1;
    int stateLineType = -1;
    if (DxCiGetStatePenLt(DxPatNames[5], &statePen, &stateLineType) == 0 && statePen != -1) return statePen;
    return DxAttrFill != -1 ? DxAttrFill : fill;
}

static int findFillColor(int fill) {
    constexpr int UNKNOWN = 1;
    if (const DX_COLOR_PAIR* pair = DxFillToDxfIndex.find(DxFillToDxf, fill)) return pair->color;
    if (DxFillToDxf.add({UNKNOWN, fill}) == 0) DxProtoMsg(DxMsg(5743, fill, UNKNOWN), 1);
    return UNKNOWN;
}

void DxFillToDXF(int fill, int* colour) {
    const int inHand = findFillInHand(fill);
    int result = 7;
    if (const int look = DxColorOfLook(inHand)) {
        result = look;
    } else if (inHand >= 0 && inHand < DX_PEN_COUNT) {
        result = findFillColor(inHand);
    } else if (inHand == DX_COLOR_BY_LAYER || inHand == DX_COLOR_BY_BLOCK) {
        result = inHand;
    }
    *colour = DxByLayerColor && result >= 0 ? DX_COLOR_BY_LAYER : result;
}

int DxSetFillPen(int pattern, int fill) {
    // The host splits a fill into sixteens.
    constexpr int STEP = 16;
    for (const int step : {1, 2}) {
        int mode = step;
        int number = pattern;
        if (const int error = ovhatchparams(&mode, &number)) return error;
    }
    return ovhatchsetreppar(0, fill / STEP, fill % STEP);
}
