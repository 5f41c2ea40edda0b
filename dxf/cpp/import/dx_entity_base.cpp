#include "dx_entity_base.h"

#include "../config/dx_pens.h"
#include "import_state.h"

namespace {

using R = DX_ENTITY_BASE_TYPE;
constexpr auto fields = dxFields<R>({
    {5, &R::handle},
    {6, &R::lineType},
    {8, &R::layer},
    {48, &R::lineTypeScale},
    {60, &R::invisible},
    {62, &R::color},
    {67, &R::paperSpace},
    {347, &R::materialHandle},
    {370, &R::lineWeight},
    {420, &R::trueColor},
    {440, &R::transparency},
});

} // namespace

void DxInitEntityBase(DX_ENTITY_BASE_TYPE* rec) {
    rec->layer.clear();
    rec->lineType.clear();
    rec->color = -1;
    rec->paperSpace = 0;
    rec->invisible = 0;
    rec->lineWeight = -1;
    rec->lineTypeScale = 1.0;
    rec->handle = 0;
    rec->materialHandle = 0;
    rec->trueColor = -1;
    rec->transparency = 0;
}

int DxReadEntityBase(DX_ENTITY_BASE_TYPE* rec, int code, std::string_view value) {
    fields.store(*rec, code, value);
    return 0;
}

void DxCopyEntityBase(DX_ENTITY_BASE_TYPE* dst, const DX_ENTITY_BASE_TYPE* src) {
    *dst = *src;
}

int DxStartDrawing(int pen, int lineType) {
    DxEntityDrawn = 1;
    return DxSetPenLt(pen, lineType);
}
