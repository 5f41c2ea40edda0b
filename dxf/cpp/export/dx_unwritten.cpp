#include "dx_unwritten.h"

#include "../session/dx_protocol.h"
#include "ci_bitmap.h"
#include "ci_objects.h"

namespace {

struct Kind {
    const char* one;
    const char* many;
    int (*count)(const DsCsr& pattern, long* count); ///< null: the writer counts
};
constexpr Kind KINDS[DX_UNWRITTEN_COUNT] = {
    {"1 hatch was not written.", "%ld hatches were not written.", nullptr},
    {"1 dimension was not written.", "%ld dimensions were not written.", CiDim::Count},
    {"1 bitmap was not written.", "%ld bitmaps were not written.", CiBitmap::Count},
    {"1 3D face or solid was not written.", "%ld 3D faces and solids were not written.", Ci3d::Count},
    {"1 solid was not written.", "%ld solids were not written.", Ci3d::CountSolids},
    {"1 point cloud was not written.", "%ld point clouds were not written.", Ci3d::CountClouds},
    {"1 face of more than four corners was not written.",
     "%ld faces of more than four corners were not written.", nullptr},
    {"1 text in a TrueType font was written in a stroke font.",
     "%ld texts in TrueType fonts were written in a stroke font.", nullptr},
    {"1 background of a text was not written.", "%ld backgrounds of texts were not written.", nullptr},
    {"1 character that the code page lacks was written as \"?\".",
     "%ld characters that the code page lacks were written as \"?\".", nullptr},
};

} // namespace

int DxCountUnwritten(int pat, DxUnwritten kind) {
    DsCsr cursor;
    long count = 0;
    if (DsCursorFromPatNo(pat, &cursor) == 0 && KINDS[kind].count(cursor, &count) == 0)
        DxUnwrittenCounts[kind] += count;
    return 0;
}

void DxReportUnwritten() {
    for (int kind = 0; kind < DX_UNWRITTEN_COUNT; ++kind) {
        const long count = DxUnwrittenCounts[kind];
        const char* many = KINDS[kind].many;
        if (count > 0)
            DxProtoMsg(count == 1 ? UtCString(KINDS[kind].one) : UtFormatMsg(many, many, count), 1);
    }
}
