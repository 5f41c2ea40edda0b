// Which runs of a pattern's content leave as what they were made from.
#pragma once

#include "dx_write_origin.h"
#include "origin.h"

/// A walk through one list of a pattern, from its first row on.
class DxOriginWalk {
public:
    DxOriginWalk(int pat, OV_CONTENT list);
    /// The run that holds the row, if it leaves as what it was; null otherwise. Rows ascend from call to
    /// call.
    const OV_ORIGIN* at(int row);
    /// What the run was made from.
    const std::vector<DX_KEPT_ENTITY>& entities() const { return entities_; }

private:
    void next();

    int pat_;
    OV_CONTENT list_;
    int index_ = 0;
    bool isThere_ = false;
    OV_ORIGIN origin_;
    std::vector<DX_KEPT_ENTITY> entities_;
};
