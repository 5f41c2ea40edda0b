#include "dx_host_image.h"

#include "../session/session_state.h"
#include "ci_bitmap.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "mt.h"

namespace {

RPT3 sum(const RPT3& a, const RPT3& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

struct Picture {
    RPT3 origin, u, v;
};

/// Puts the pattern on a plane through the picture, which is in that plane's coordinates then. A host that
/// makes no plane gets the picture as it is.
void putOnPlane(const DsCsr& cursor, Picture& picture) {
    CiWork works(DxCiContextId);
    int work = 0;
    Mat44 plane, inverse;
    if (works.Add(&work, picture.origin, sum(picture.origin, picture.u), sum(picture.origin, picture.v)))
        return;
    if (works.GetMat(work, plane) || Mt44Invert(plane, inverse)) return;
    if (CiPat(DxCiContextId).ChgWork(cursor, work)) return;
    Mt44MultRpt3(picture.origin, inverse, &picture.origin);
    Mt44MultRpt3Vec(picture.u, inverse, &picture.u);
    Mt44MultRpt3Vec(picture.v, inverse, &picture.v);
}

} // namespace

int DxovAddBitmap(int patNo, const UtCString& path, const RPT3& corner, const RPT3& along, const RPT3& down,
                  const std::vector<RPT>& clip) {
    DsCsr cursor;
    if (const int error = DsCursorFromPatNo(patNo, &cursor)) return error;
    Picture picture{DxPointToContext(corner), along, down};
    if (DxModus == 3) putOnPlane(cursor, picture);
    CiBitmap bitmaps(DxCiContextId);
    const int error = bitmaps.Add(&cursor, path, picture.origin, &picture.u, &picture.v);
    if (error || clip.empty()) return error;
    return bitmaps.SetClip(cursor, clip.data(), static_cast<int>(clip.size()));
}
