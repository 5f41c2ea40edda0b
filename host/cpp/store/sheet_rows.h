// Rows of sheets, detail views, pictures and the georeference. Part of rows.h.
#pragma once

#include "drawing/drawing.h"

#include <array>

namespace host {

template <class Record>
struct Row;

/// What a view has beyond the columns of the table `views`, by the same position.
struct ViewDetails : View {};

/// A pattern that stands on a sheet.
struct SheetPattern {
    int view = 0;
};

template <>
struct Row<Bitmap> {
    static constexpr int since = 4;
    static constexpr const char* table = "pictures";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("file", r.file), v("width", r.width), v("height", r.height);
        v("x", r.origin.x), v("y", r.origin.y), v("z", r.origin.z);
        v("ux", r.u.x), v("uy", r.u.y), v("uz", r.u.z), v("vx", r.v.x), v("vy", r.v.y), v("vz", r.v.z);
        v("outline", r.outline);
    }
};

template <>
struct Row<ViewDetails> {
    static constexpr int since = 4;
    static constexpr const char* table = "view_details";
    static constexpr std::array keys{"position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("number", r.number), v("kind", r.kind), v("factor", r.factor), v("display", r.display);
        v("outline", r.outline), v("work_id", r.workId), v("clipped", r.clipped), v("filter", r.filter);
        v("paper_width", r.paperWidth), v("paper_height", r.paperHeight);
    }
};

template <>
struct Row<ViewInsert> {
    static constexpr int since = 4;
    static constexpr const char* table = "view_inserts";
    static constexpr std::array keys{"number"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("sheet", r.sheet), v("view", r.view), v("x", r.place.x), v("y", r.place.y), v("z", r.place.z);
        v("ratio", r.ratio);
    }
};

template <>
struct Row<SheetPattern> {
    static constexpr int since = 4;
    static constexpr const char* table = "sheet_patterns";
    static constexpr std::array keys{"pattern"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("view", r.view);
    }
};

template <>
struct Row<GeoReference> {
    static constexpr int since = 4;
    static constexpr const char* table = "georeference";
    static constexpr std::array<const char*, 0> keys{};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("px", r.point.x), v("py", r.point.y), v("pz", r.point.z), v("x", r.x), v("y", r.y),
            v("angle", r.angle);
    }
};

} // namespace host
