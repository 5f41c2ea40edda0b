// What stands in the tables of hatches beside their contours and the lines of their sources.
#pragma once

#include "drawing/drawing.h"

#include <array>
#include <cstdint>

namespace host {

template <class Record>
struct Row;

template <>
struct Row<HatchLines> {
    static constexpr int since = 4;
    static constexpr const char* table = "hatch_lines";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("angle", r.angle), v("base", r.base), v("distance_1", r.d1), v("count_1", r.c1);
        v("distance_2", r.d2), v("count_2", r.c2), v("pen", r.pen), v("line_type", r.lineType);
    }
};

template <>
struct Row<HatchGradient> {
    static constexpr int since = 4;
    static constexpr const char* table = "hatch_gradients";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("form", r.form), v("angle", r.angle), v("shift", r.shift), v("size", r.size);
        v("second_pen", r.secondPen), v("name", r.name);
    }
};

/// The pattern that a hatch was made from.
template <>
struct Row<HatchSource> {
    static constexpr int since = 4;
    static constexpr const char* table = "hatch_sources";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("scale", r.scale), v("angle", r.angle), v("type", r.type), v("crossed", r.crossed);
    }
};

template <>
struct Row<HatchExclusion> {
    static constexpr int since = 4;
    static constexpr const char* table = "hatch_exclusions";
    static constexpr std::array keys{"pattern", "hatch", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("contour", r.contour);
    }
};

/// A fill behind the lines of a hatch.
struct HatchBack {
    int pen = 0;
};
template <>
struct Row<HatchBack> {
    static constexpr int since = 4;
    static constexpr const char* table = "hatch_backs";
    static constexpr std::array keys{"pattern", "hatch"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("pen", r.pen);
    }
};

class Database;
class Tables;
/// Writes the rows of the hatches of a pattern, but for the hatches themselves.
void putHatchParts(Tables& tables, const Pattern& pattern);
/// Reads them for the hatches that were read.
void readHatchParts(Database& db, std::int64_t version, Drawing& drawing);

} // namespace host
