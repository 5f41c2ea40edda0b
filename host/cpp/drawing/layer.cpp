// Looks of layers.
#include "ds_layer.h"

#include "drawing/host_state.h"
#include "services/failure.h"

using namespace host;

namespace DsLayerApi {

int SetLayerLook(const UtCString& name, const DS_LAYER_LOOK& look) {
    if (callFails()) return errorNoMemory;
    Layer* layer = openDrawing().findLayer(name.str());
    if (!layer) return errorNoSuchObject;
    layer->look = {look.frozen,    look.plotted,    look.color,
                   look.trueColor, look.lineWeight, look.lineType.str()};
    return 0;
}

int GetLayerLook(const UtCString& name, DS_LAYER_LOOK* look, bool* visible, bool* locked) {
    if (callFails()) return errorNoMemory;
    const Layer* layer = openDrawing().findLayer(name.str());
    if (!layer) return errorNoSuchObject;
    const LayerLook& own = layer->look;
    if (look)
        *look = {own.frozen, own.plotted, own.color, own.trueColor, own.lineWeight, UtCString(own.lineType)};
    if (visible) *visible = layer->visible;
    if (locked) *locked = layer->locked;
    return 0;
}

} // namespace DsLayerApi
