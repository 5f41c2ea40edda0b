// Tables of what a pattern has beside its content: what it belongs to and was placed by, attributes
// of its elements.
#pragma once

#include "drawing/drawing.h"

#include <array>

namespace host {

template <class Record>
struct Row;

template <>
struct Row<Relation> {
    static constexpr int since = 4;
    static constexpr const char* table = "pattern_relations";
    static constexpr std::array keys{"pattern"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("parent", r.parent);
        auto& p = r.placement;
        v("xx", p.xx), v("xy", p.xy), v("yx", p.yx), v("yy", p.yy), v("tx", p.tx), v("ty", p.ty);
    }
};

template <>
struct Row<ElementAttribute> {
    static constexpr int since = 4;
    static constexpr const char* table = "element_attributes";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("element", r.row), v("name", r.name), v("value", r.value);
    }
};

} // namespace host
