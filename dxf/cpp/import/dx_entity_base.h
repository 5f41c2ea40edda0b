// What all entity readers and draw stages share.
#pragma once

#include "../session/dx_fields.h"
#include "dx_types.h"

void DxInitEntityBase(DX_ENTITY_BASE_TYPE* rec);
/// The extrusion of a record before it is read: the z axis.
inline void DxInitExtrusion(double extrusion[3]) {
    extrusion[0] = extrusion[1] = 0;
    extrusion[2] = 1;
}
/// Stores a group that all entities share; any other code is ignored. Always 0.
int DxReadEntityBase(DX_ENTITY_BASE_TYPE* rec, int code, std::string_view value);
void DxCopyEntityBase(DX_ENTITY_BASE_TYPE* dst, const DX_ENTITY_BASE_TYPE* src);

/// Reads an entity whose record begins with `base`. A pair that `fields` doesn't know goes to `hook` (const
/// DxPair& → bool), which says whether it was taken; if not, it is offered to the shared groups. Ends at the
/// next group 0, which is handed back. 0 or the reader's error.
template <class R, std::size_t N, class Hook>
int DxReadEntity(R& record, const DxFieldTable<R, N>& fields, Hook&& hook) {
    return DxReadFields(record, fields, [&](const DxPair& pair) {
        if (!hook(pair)) DxReadEntityBase(&record.base, pair.code, pair.text);
    });
}

/// The hook of flat entities: group 38 raises all points at the end of the reader.
struct DxElevation {
    double value = 0;
    bool operator()(const DxPair& pair) {
        if (pair.code != 38) return false;
        value = DxfReadConvDouble(pair.text);
        return true;
    }
};

/// A draw stage calls this once it is about to give something to the host: sets pen and line type, and marks
/// the entity as drawn for the report. 0 or the host's error.
int DxStartDrawing(int pen, int lineType);
