// Reader of INSERT.
#include "dx_account.h"
#include "dx_attributes.h"
#include "dx_entity_base.h"
#include "dx_insert_import.h"

namespace {

using I = DX_INSERT_TYPE;
constexpr auto fields = dxFields<I>({
    {2, &I::blockName},
    {10, &I::position},
    {39, &I::thickness},
    {41, &I::scaleX},
    {42, &I::scaleY},
    {43, &I::scaleZ},
    {44, &I::columnSpacing},
    {45, &I::rowSpacing},
    {50, &I::rotation},
    {66, &I::attributesFollow},
    {70, &I::columns},
    {71, &I::rows},
    {210, &I::extrusion},
});

void init(DX_INSERT_TYPE& rec) {
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.extrusion);
    rec.blockName.clear();
    rec.position = {0, 0, 0};
    rec.scaleX = rec.scaleY = rec.scaleZ = 1;
    rec.rotation = rec.columnSpacing = rec.rowSpacing = rec.thickness = 0;
    rec.columns = rec.rows = 1;
    rec.attributesFollow = 0;
    rec.attribs.clear();
}

/// Reads on to the next group 0, which stays the current pair.
int nextZero(DxPair& pair) {
    do {
        if (const int error = DxReadPair(pair, 161, DxShowsPercent())) return error;
    } while (pair.code != 0);
    return 0;
}

/// An entity that can't stand among attributes: where it comes, their end is missing.
bool endsAttributes(std::string_view name) {
    return name == "ENDBLK" || name == "ENDSEC" || name == "EOF" || DxFindEntityKind(name) != nullptr;
}

int readAttributes(DX_INSERT_TYPE& rec) {
    DxPair pair;
    for (;;) {
        if (const int error = nextZero(pair)) return error;
        if (pair.text == "ATTRIB") {
            DxCountPart(pair.text);
            rec.attribs.emplace_back();
            if (const int error = DxReadAttrib(&rec.attribs.back())) return error;
        } else if (pair.text == "SEQEND") {
            DxCountPart(pair.text);
            if (const int error = nextZero(pair)) return error;
            break;
        } else if (endsAttributes(pair.text)) {
            break;
        }
    }
    DxUnGetLine();
    return 0;
}

} // namespace

int DxReadInsert(DX_INSERT_TYPE* rec) {
    init(*rec);
    if (const int error = DxReadEntity(*rec, fields, [](const DxPair&) { return false; })) return error;
    return rec->attributesFollow ? readAttributes(*rec) : 0;
}
