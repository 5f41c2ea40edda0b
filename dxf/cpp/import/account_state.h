// Running values of the account: the entity that is being read, and the rows so far.
#pragma once

#include "dx_unseen.h"

#include <cstddef>
#include <map>
#include <tuple>

struct DxEntityTally;

extern int DxEntityDrawn;       ///< the entity gave something to the host; DxStartDrawing sets it
extern DxReason DxEntityReason; ///< why the entity isn't drawn, as far as a stage has told
extern int DxEntityInSpace;     ///< the entity was found to be of the active space
extern int DxAccountsBlock;     ///< 1 while a block is walked whose entities haven't been counted yet

/// Row of DxReport.unseen by kind and reason.
using DxAccountKey = std::tuple<const DxEntityTally*, DxReason>;
extern std::map<DxAccountKey, std::size_t> DxAccountRows;
/// The place whose line was counted last, for the next one behind it.
struct DX_LINE_MARK {
    const void* data = nullptr; ///< of the document
    std::size_t position = 0;
    long line = 0;
};
extern DX_LINE_MARK DxAccountMark;

/// Notes why the entity that is being read won't be seen; the last word holds.
inline void DxNoteReason(DxReason reason) {
    DxEntityReason = reason;
}

void DxResetAccountState();
