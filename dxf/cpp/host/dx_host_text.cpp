// Texts of the active pattern and by cursor.
#include "ci_text.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "ov_text.h"

int Dxovtextparams(OV_TEXT_PARM parm, OV_TEXT_EXT ext) {
    if (const int error = ovtextparamsttf(6, &parm)) return error;
    return ovtextparamext(6, &ext);
}

int Dxovaddtext(const UtCString& text, double x, double y) {
    if (const int error = DxCiElemDrawPat()) return error;
    const RPT point = DxPointToHost(x, y);
    return ovaddtext(text, point.x, point.y);
}

int Dxovtext(DsCsr& cursor, const RPT3& point, const UtCString& text) {
    if (const int error = DxCiElemDrawPat()) return error;
    return CiText(DxCiContextId).Add(cursor, DxPointToContext({point.x, point.y, 0}), text);
}
