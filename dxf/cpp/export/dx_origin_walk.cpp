#include "dx_origin_walk.h"

#include "../config/config_state.h"
#include "../session/session_state.h"
#include "dx_codes.h"
#include "export_state.h"

/// Only content that leaves with the looks that it has itself can leave as what it was.
static bool isWanted() {
    return DxKeepEntities && DxModus == 2 && DxWriteVersion != DX_FORMAT_EASY && !DxBlockMatrixMode &&
           !DxUseByLayer && !DxColAttr && DxBlockType == DX_BLOCK_PLAIN &&
           DxPatNames[DX_PAT_OBSTAT].IsEmpty();
}

DxOriginWalk::DxOriginWalk(int pat, OV_CONTENT list) : pat_(pat), list_(list) {
    if (isWanted()) next();
}

void DxOriginWalk::next() {
    while ((isThere_ = UoOriginGet(pat_, index_++, &origin_) == 0)) {
        if (origin_.list != list_ || !UoOriginIsIntact(pat_, index_ - 1)) continue;
        entities_ = DxKeptEntities(origin_.text);
        if (DxCanWriteKept(entities_)) return;
    }
}

const OV_ORIGIN* DxOriginWalk::at(int row) {
    while (isThere_ && row >= origin_.first + origin_.count) next();
    return isThere_ && row >= origin_.first ? &origin_ : nullptr;
}
