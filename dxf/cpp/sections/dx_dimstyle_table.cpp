// DIMSTYLE records: values stored by group number alone.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_tables_import.h"
#include "dx_tables_read.h"

namespace {

using R = DX_DIM_STYLE;
constexpr auto fields = dxFields<R>({{2, &R::name, DX_UPPER}});

enum class Store { String, Real, Integer, Hex };

/// A run of group codes that fill consecutive places of a store.
struct Range {
    int first, last;
    Store store;
    int place; ///< of the first code
};

constexpr Range ranges[] = {
    {3, 4, Store::String, 0},   {40, 48, Store::Real, 0},       {71, 79, Store::Integer, 0},
    {140, 148, Store::Real, 9}, {170, 179, Store::Integer, 9},  {270, 289, Store::Integer, 19},
    {340, 344, Store::Hex, 39}, {371, 372, Store::Integer, 44},
};

} // namespace

void DxfReadDimStyleValue(DX_DIM_STYLE* rec, int code, std::string_view value) {
    if (code == 105) rec->handle = DxHexToU32(value);
    for (const Range& range : ranges) {
        if (code < range.first || code > range.last) continue;
        const int place = range.place + code - range.first;
        switch (range.store) {
        case Store::String: rec->strings[place].assign(value); break;
        case Store::Real: rec->reals[place] = DxAtof(value); break;
        case Store::Integer: rec->integers[place] = DxAtoi(value); break;
        case Store::Hex: rec->integers[place] = static_cast<int>(DxHexToU32(value)); break;
        }
        return;
    }
}

int DxReadDimStyle(DxTableNames& /*names*/) {
    DX_DIM_STYLE style = {};
    style.reals[0] = 1.0; // the overall scale
    const auto takeValue = [&](const DxPair& pair) { DxfReadDimStyleValue(&style, pair.code, pair.text); };
    if (const int error = DxReadFields(style, fields, takeValue)) return error;
    return DxDocuments.currentTables().dimStyles.add(style) ? 2360 : 0;
}
