// VIEW records.
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "dx_tables_read.h"

namespace {

using R = DX_VIEW_TYPE;
constexpr auto fields = dxFields<R>({
    {2, &R::name, DX_UPPER}, {5, &R::handle},      {10, &R::centreX},    {20, &R::centreY},
    {11, &R::directionX},    {21, &R::directionY}, {31, &R::directionZ}, {12, &R::targetX},
    {22, &R::targetY},       {32, &R::targetZ},    {40, &R::height},     {41, &R::width},
    {42, &R::lensLength},    {43, &R::frontClip},  {44, &R::backClip},   {50, &R::twist},
    {70, &R::flags},         {71, &R::mode71},     {72, &R::mode72},     {73, &R::mode73},
    {281, &R::mode281},
});

} // namespace

int DxReadView(DxTableNames& /*names*/) {
    DX_VIEW_TYPE view = {};
    if (const int error = DxReadFields(view, fields, [](const DxPair&) {})) return error;
    return DxDocuments.currentTables().views.add(view) ? 2360 : 0;
}
