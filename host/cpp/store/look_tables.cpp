#include "store/look_tables.h"

namespace host {

void putLooks(Tables& tables, const Drawing& drawing) {
    for (std::size_t i = 0; i < drawing.layers.size(); ++i)
        if (drawing.layers[i].look != LayerLook{})
            tables.of<LayerLook>().put({static_cast<std::int64_t>(i)}, drawing.layers[i].look);
    for (const auto& [pen, look] : drawing.penLooks) tables.of<OV_PEN_LOOK>().put({pen}, look);
}

void readLooks(Database& db, Drawing& drawing) {
    readRows<LayerLook>(
        db, [&](const Keys<LayerLook>& key) -> LayerLook& { return itemOf(drawing.layers, key[0]).look; });
    readRows<OV_PEN_LOOK>(
        db, [&](const Keys<OV_PEN_LOOK>& key) -> OV_PEN_LOOK& { return drawing.penLooks[key[0]]; });
}

} // namespace host
