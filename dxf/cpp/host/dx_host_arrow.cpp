#include "dx_host_arrow.h"

#include "dx_frame.h"
#include "dx_host.h"
#include "ov_arrow.h"

int DxovArrowLook(int kind, int pen, int lineType, double length, double width) {
    if (const int error = DxCiElemDrawPat()) return error;
    int code = 6, use = OV_ARROW_BY_ITSELF;
    double hostLength = DxLengthToSheet(length), hostWidth = DxLengthToSheet(width);
    return ovarrowparams(&code, &use, &kind, &pen, &lineType, &hostLength, &hostWidth);
}

int Dxovarrow(int op, double x, double y, double cx, double cy, int kind) {
    constexpr int move = 2;
    if (op == move) {
        if (const int error = DxCiElemDrawPat()) return error;
        int code = 11, pat = 0, row = 0, unused = 0;
        if (const int error = ovarrow(&code, &pat, &row, &unused)) return error;
    }
    RPT at = DxPointToHost(x, y), centre = DxPointToHost(cx, cy);
    DxLastOutX = at.x;
    DxLastOutY = at.y;
    int first = 0;
    return ovaddarrow(&op, &first, &kind, &at.x, &at.y, &centre.x, &centre.y);
}
