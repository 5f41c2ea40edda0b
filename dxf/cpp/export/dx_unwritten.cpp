#include "dx_unwritten.h"

#include "../session/dx_protocol.h"
#include "ci_objects.h"

namespace {

struct Kind {
    const char* words;
    int (*count)(const DsCsr& pattern, long* count);
};
constexpr Kind KINDS[DX_UNWRITTEN_COUNT] = {
    {"%ld hatches were not written.", CiHatch::Count},
    {"%ld dimensions were not written.", CiDim::Count},
    {"%ld bitmaps were not written.", CiBitmap::Count},
    {"%ld 3D faces and solids were not written.", Ci3d::Count},
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
    for (int kind = 0; kind < DX_UNWRITTEN_COUNT; ++kind)
        if (DxUnwrittenCounts[kind] > 0)
            DxProtoMsg(UtFormatMsg(KINDS[kind].words, KINDS[kind].words, DxUnwrittenCounts[kind]), 1);
}
