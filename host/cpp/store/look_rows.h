// Rows of what layers and pens look like. Part of rows.h.
#pragma once

#include "drawing/drawing.h"

#include <array>

namespace host {

template <class Record>
struct Row;

/// By the position of its layer; layers that look as usual have none.
template <>
struct Row<LayerLook> {
    static constexpr int since = 4;
    static constexpr const char* table = "layer_looks";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("frozen", r.frozen), v("plotted", r.plotted), v("color", r.color);
        v("true_color", r.trueColor), v("line_weight", r.lineWeight), v("line_type", r.lineType);
    }
};

template <>
struct Row<OV_PEN_LOOK> {
    static constexpr int since = 4;
    static constexpr const char* table = "pen_looks";
    static constexpr std::array keys{"number"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("color", r.color), v("true_color", r.trueColor), v("weight", r.weight), v("width", r.width);
        v("of_layer", r.isColorOfLayer);
    }
};

} // namespace host
