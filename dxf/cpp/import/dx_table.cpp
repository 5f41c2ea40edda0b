// ACAD_TABLE: a block holds what it looks like.
#include "../config/dx_pens.h"
#include "../session/session_state.h"
#include "dx_annotation_import.h"
#include "dx_entity_base.h"
#include "dx_insert_import.h"

namespace {

using R = DX_TABLE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::insertion},
    {11, &R::direction},
});

} // namespace

int DxReadTable(R* rec) {
    DxInitEntityBase(&rec->base);
    rec->blockName.clear();
    rec->insertion = {0, 0, 0};
    rec->direction = {1, 0, 0};
    bool hasName = false;
    return DxReadEntity(*rec, fields, [&](const DxPair& pair) {
        if (pair.code != 2) return false;
        if (!hasName) rec->blockName.assign(pair.text);
        return hasName = true;
    });
}

int DxDrawTable(const R* rec, const Mat44 m) {
    DxPenLt look;
    if (!DxPenLtToCAD(&rec->base, &look.pen, &look.lineType)) return 0;
    DX_INSERT_TYPE insert{};
    DxCopyEntityBase(&insert.base, &rec->base);
    DxInitExtrusion(insert.extrusion);
    insert.blockName = rec->blockName;
    insert.position = rec->insertion;
    insert.scaleX = insert.scaleY = insert.scaleZ = 1;
    return DxDrawInsert(&insert, m, 0);
}
