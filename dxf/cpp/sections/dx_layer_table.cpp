// LAYER records.
#include "../config/dx_layers.h"
#include "../session/dx_documents.h"
#include "../session/dx_fields.h"
#include "../session/session_state.h"
#include "dx_tables_read.h"

namespace {

using R = DX_LAYER_TYPE;
constexpr auto fields = dxFields<R>({
    {2, &R::name},
    {5, &R::handle},
    {6, &R::lineType},
    {62, &R::color},
    {70, &R::flags},
    {290, &R::plot},
    {370, &R::lineWeight},
    {420, &R::trueColor},
});

/// A layer without a colour is white. For an import a frozen one is off, which a negative colour says; the
/// layers of an export's template go out as they came.
void settleColor(DX_LAYER_TYPE& layer) {
    constexpr int frozen = 1;
    if (layer.color == 0) layer.color = 7;
    if (DxKeepsHidden()) return;
    if (!DxIsExport && (layer.flags & frozen) && layer.color > 0) layer.color = -layer.color;
}

} // namespace

int DxReadLayer(DxTableNames& /*names*/) {
    DX_LAYER_TYPE layer;
    DxInitLayer(&layer);
    if (const int error = DxReadFields(layer, fields, [](const DxPair&) {})) return error;
    settleColor(layer);
    DxTables& tables = DxDocuments.currentTables();
    if (const int index = tables.findLayer(layer.name.view()); index >= 0) {
        tables.layers[index] = layer;
        return 0;
    }
    return tables.layers.add(layer) ? 2360 : 0;
}
