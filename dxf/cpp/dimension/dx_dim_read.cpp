// Reader of DIMENSION, ARC_DIMENSION and LARGE_RADIAL_DIMENSION.
#include "../import/dx_entity_base.h"
#include "dx_dim_import.h"
#include "dx_dim_overrides.h"

#include <cmath>
#include <cstring>

namespace {

using R = DX_DIM_TYPE;
constexpr auto fields = dxFields<R>({
    {1, &R::text},
    {2, &R::blockName},
    {3, &R::styleName, DX_UPPER},
    {10, &R::p10},
    {11, &R::p11},
    {12, &R::p12},
    {13, &R::p13},
    {14, &R::p14},
    {15, &R::p15},
    {16, &R::p16},
    {40, &R::textHeightHint},
    {41, &R::lineSpacingFactor},
    {42, &R::measured},
    {50, &R::angle},
    {51, &R::horizontalDirection},
    {52, &R::obliqueAngle},
    {53, &R::textRotation},
    {72, &R::lineSpacingStyle},
    {210, &R::normal},
});

void init(R& dim) {
    dim = R{};
    DxInitEntityBase(&dim.base);
    DxInitExtrusion(dim.normal);
    dim.lineSpacingFactor = 1.0;
}

/// Takes what the table of fields can't: groups of which the first value stays, and the changes of the style.
class Extras {
public:
    explicit Extras(R& dim) : dim_(dim), overrides_(dim.styleName, dim.styleOverride) {}

    bool operator()(const DxPair& pair) {
        switch (pair.code) {
        case 70: keepFirst(dim_.flags, pair); return true;
        case 71: keepFirst(dim_.attachment, pair); return true;
        default: return overrides_.take(pair);
        }
    }

private:
    static void keepFirst(int& field, const DxPair& pair) {
        if (field == 0) field = DxAtoi(pair.text);
    }

    R& dim_;
    DxDimOverrides overrides_;
};

} // namespace

int DxReadDim(DX_DIM_TYPE* dim) {
    init(*dim);
    Extras extras(*dim);
    if (const int error = DxReadEntity(*dim, fields, extras)) return error;
    if (dim->angle < 0) dim->angle += 360;
    constexpr int typeBits = 31, aligned = 1;
    if ((dim->flags & typeBits) != aligned) return 0;
    constexpr double degrees = 57.29577951308232;
    dim->angle = std::atan2(dim->p14.y - dim->p13.y, dim->p14.x - dim->p13.x) * degrees;
    if (dim->angle < 0) dim->angle += 360;
    return 0;
}

int DxReadExtendedDim(DX_DIM_TYPE* dim) {
    const int error = DxReadDim(dim);
    dim->extendedKind = 1;
    return error;
}
