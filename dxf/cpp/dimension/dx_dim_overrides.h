// What a dimension, leader or tolerance changes of its style: in the extended data, behind the string
// "DSTYLE", as pairs of a group code of the style (1070) and its value.
#pragma once

#include "../sections/dx_tables_import.h"
#include "../session/dx_fields.h"
#include "dx_dim_import.h"

#include <memory>

class DxDimOverrides {
public:
    DxDimOverrides(const DX_NAME& styleName, std::unique_ptr<DX_DIM_STYLE>& changed)
        : styleName_(styleName), changed_(changed) {}

    /// Takes a pair of the extended data. False for any other, behind which a code without value is
    /// forgotten.
    bool take(const DxPair& pair) {
        switch (pair.code) {
        case 1000:
            if (pair.text == "DSTYLE") start();
            return true;
        case 1070:
            if (pending_ < 0) {
                pending_ = DxAtoi(pair.text);
                return true;
            }
            [[fallthrough]];
        case 1005:
        case 1040:
        case 1041:
        case 1042: takeValue(pair); return true;
        default: pending_ = -1; return false;
        }
    }

private:
    /// A style that there isn't, or whose name hasn't come yet, can't be changed.
    void start() {
        const DX_DIM_STYLE* style = DxFindDimStyle(styleName_.view());
        changed_.reset();
        if (style) changed_ = std::make_unique<DX_DIM_STYLE>(*style);
    }

    void takeValue(const DxPair& pair) {
        if (changed_ && pending_ >= 0) DxfReadDimStyleValue(changed_.get(), pending_, pair.text);
        pending_ = -1;
    }

    const DX_NAME& styleName_;
    std::unique_ptr<DX_DIM_STYLE>& changed_;
    int pending_ = -1; ///< group code whose value comes next
};
