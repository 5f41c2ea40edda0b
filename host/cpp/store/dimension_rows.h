// Tables of arrows and dimensions. The table "dimensions" of versions 1 to 3 held nothing and isn't read.
#pragma once

#include "store/rows.h"

namespace host {

template <>
struct Row<Arrow> {
    static constexpr int since = 4;
    static constexpr const char* table = "arrows";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("start_head", r.startHead), v("end_head", r.endHead), v("head_length", r.headLength);
        v("head_width", r.headWidth), v("arrow_use", r.use), v("lines", r.lines);
    }
};

template <>
struct Row<Dimension> {
    static constexpr int since = 4;
    static constexpr const char* table = "dimensions";
    static constexpr std::array keys{"pattern", "position"};
    template <class V, class R>
    static void columns(V& v, R& r) {
        v("kind", r.kind), v("place", r.place), v("mode", r.mode), v("points", r.points);
        v("text_x", r.textPos.x), v("text_y", r.textPos.y);
        v("ref1_x", r.refs[0].x), v("ref1_y", r.refs[0].y), v("ref2_x", r.refs[1].x);
        v("ref2_y", r.refs[1].y), v("ref3_x", r.refs[2].x), v("ref3_y", r.refs[2].y);
        v("text_row", r.textRow), v("tolerance_row", r.tolRow);
        arrowColumns(v, r.arrow);
        textColumns(v, r.txt);
        toleranceColumns(v, r.tol);
        v("lines", r.lines);
    }

private:
    template <class V, class P>
    static void arrowColumns(V& v, P& p) {
        v("pen", p.pen), v("line_type", p.lineType), v("ext_pen", p.extPen);
        v("ext_line_type", p.extLineType), v("spare", p.spare);
        v("arrow_kind_1", p.kind[0]), v("arrow_kind_2", p.kind[1]), v("arrow_kind_3", p.kind[2]);
        v("ext_offset", p.extOffset), v("ext_overshoot", p.extOvershoot);
        v("line_overshoot", p.lineOvershoot), v("line_overshoot_2", p.lineOvershoot2);
        v("arrow_length_1", p.length[0]), v("arrow_length_2", p.length[1]), v("arrow_length_3", p.length[2]);
        v("arrow_width_1", p.width[0]), v("arrow_width_2", p.width[1]), v("arrow_width_3", p.width[2]);
    }
    template <class V, class P>
    static void textColumns(V& v, P& p) {
        v("mode_a", p.modeA), v("mode_b", p.modeB), v("height", p.height), v("width", p.width);
        v("spacing", p.spacing), v("oblique", p.oblique), v("text_pen", p.pen);
        v("place_linear", p.place[0]), v("place_radial", p.place[1]), v("place_angular", p.place[2]);
        v("decimals", p.decimals), v("angle_decimals", p.angleDecimals), v("fixed", p.fixed);
        v("leading_zero", p.leadingZero), v("decimals_shown", p.decimalsShown), v("comma", p.comma);
        v("horizontal_linear", p.horizontal[0]), v("horizontal_radial", p.horizontal[1]);
        v("horizontal_angular", p.horizontal[2]);
        v("mode_c_1", p.modeC[0]), v("mode_c_2", p.modeC[1]), v("mode_c_3", p.modeC[2]);
        v("font", p.fontKind), v("face", p.face), v("width_factor", p.widthFactor);
        static constexpr const char* words[] = {"word_1", "word_2", "word_3", "word_4",
                                                "word_5", "word_6", "word_7", "word_8"};
        for (int i = 0; i < 8; ++i) v(words[i], p.words[i]);
    }
    template <class V, class P>
    static void toleranceColumns(V& v, P& p) {
        v("tol_kind", p.kind), v("tol_pen", p.pen), v("tol_height", p.height), v("tol_width", p.width);
        v("tol_oblique", p.oblique), v("tol_spacing", p.spacing), v("tol_width_factor", p.widthFactor);
        v("tol_font", p.fontKind), v("tol_face", p.face);
        static constexpr const char* words[] = {"tol_word_1", "tol_word_2", "tol_word_3", "tol_word_4",
                                                "tol_word_5", "tol_word_6", "tol_word_7", "tol_word_8"};
        for (int i = 0; i < 8; ++i) v(words[i], p.words[i]);
    }
};

} // namespace host
