#include "text/substitutes.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace host {

namespace {

// The first row whose beginning fits rules, so longer beginnings stand ahead of shorter ones. Widths compare
// the average lower-case letter and digit, each relative to its capital letters: stand-ins of equal advances
// have capital letters of another height. Styles without a face name the face's file.
constexpr Substitute substitutes[] = {
    {"arialbd", "Liberation Sans", 0.961, true},
    {"arialbi", "Liberation Sans", 0.961, true, true},
    {"ariali", "Liberation Sans", 0.961, false, true},
    {"arialnbi", "Liberation Sans", 0.788, true, true},
    {"arialnb", "Liberation Sans", 0.788, true},
    {"arialni", "Liberation Sans", 0.788, false, true},
    {"arialn", "Liberation Sans", 0.788},
    {"ariblk", "Liberation Sans", 1.05, true},
    {"arial narrow", "Liberation Sans", 0.788},
    {"arial black", "Liberation Sans", 1.15},
    {"arial unicode", "DejaVu Sans", 0.88},
    {"arial", "Liberation Sans", 0.961},
    {"helvetica", "Liberation Sans", 0.958},
    {"swis721 cn", "Liberation Sans", 0.788},
    {"swis721", "Liberation Sans", 0.961},
    {"timesbd", "Liberation Serif", 0.989, true},
    {"timesbi", "Liberation Serif", 0.989, true, true},
    {"timesi", "Liberation Serif", 0.989, false, true},
    {"times", "Liberation Serif", 0.989},
    {"dutch801", "Liberation Serif", 0.989},
    {"courbd", "Liberation Mono", 1.153, true},
    {"courbi", "Liberation Mono", 1.153, true, true},
    {"courier", "Liberation Mono", 1.153},
    {"couri", "Liberation Mono", 1.153, false, true},
    {"cour", "Liberation Mono", 1.153},
    {"monospac821", "Liberation Mono", 1.0},
    {"consolas", "Liberation Mono", 0.97},
    {"lucida console", "DejaVu Sans Mono", 0.98},
    {"verdanab", "DejaVu Sans", 1.0, true},
    {"verdanai", "DejaVu Sans", 1.0, false, true},
    {"verdanaz", "DejaVu Sans", 1.0, true, true},
    {"verdana", "DejaVu Sans", 1.0},
    {"tahomabd", "DejaVu Sans", 0.9, true},
    {"tahoma", "DejaVu Sans", 0.9},
    {"segoe ui", "DejaVu Sans", 0.92},
    {"trebuchet", "Liberation Sans", 0.98},
    {"calibrib", "Liberation Sans", 1.0, true},
    {"calibrii", "Liberation Sans", 1.0, false, true},
    {"calibriz", "Liberation Sans", 1.0, true, true},
    {"calibri", "Liberation Sans", 1.0},
    {"century gothic", "DejaVu Sans", 0.95},
    {"bank gothic", "DejaVu Sans", 1.1},
    {"cambria", "Liberation Serif", 1.04},
    {"georgia", "DejaVu Serif", 0.92},
    {"garamond", "Liberation Serif", 0.94},
    {"palatino", "Liberation Serif", 1.06},
    {"bookman", "DejaVu Serif", 0.95},
    {"isocpeur", "osifont", 1.0},
    {"isocteur", "osifont", 1.0},
    {"isocp", "osifont", 1.0, false, false, FaceSigns::Letters, true},
    {"isoct", "osifont", 1.0, false, false, FaceSigns::Letters, true},
    {"iso", "osifont", 1.0, false, false, FaceSigns::Letters, true},
    {"din", "osifont", 1.0},
    {"technic", "osifont", 1.0},
    {"txt", "Routed Gothic", 1.0, false, false, FaceSigns::Letters, true},
    {"monotxt", "Routed Gothic", 1.1, false, false, FaceSigns::Letters, true},
    {"roman", "Routed Gothic", 1.0, false, false, FaceSigns::Letters, true},
    {"simplex", "Routed Gothic", 1.0, false, false, FaceSigns::Letters, true},
    {"complex", "Liberation Serif", 1.1},
    {"italic", "Liberation Serif", 1.1},
    {"gothic", "Routed Gothic", 1.0},
    {"stylus", "Routed Gothic", 0.9},
    {"city blueprint", "Routed Gothic", 1.0},
    {"country blueprint", "Routed Gothic", 1.0},
    {"ms gothic", "Droid Sans Fallback", 1.0},
    {"ms pgothic", "Droid Sans Fallback", 1.0},
    {"ms mincho", "Droid Sans Fallback", 1.0},
    {"ms pmincho", "Droid Sans Fallback", 1.0},
    {"simsun", "Droid Sans Fallback", 1.0},
    {"simhei", "Droid Sans Fallback", 1.0},
    {"mingliu", "Droid Sans Fallback", 1.0},
    {"gulim", "Droid Sans Fallback", 1.0},
    {"dotum", "Droid Sans Fallback", 1.0},
    {"batang", "Droid Sans Fallback", 1.0},
    {"symbol", "DejaVu Sans", 1.0, false, false, FaceSigns::Symbols},
    {"amgdt", "osifont", 1.0, false, false, FaceSigns::Tolerances},
    {"gdt", "osifont", 1.0, false, false, FaceSigns::Tolerances},
    {"wingdings", "DejaVu Sans", 1.0},
    {"", "Liberation Sans", 1.0},
};

} // namespace

const Substitute& substituteFor(std::string_view face) {
    std::string lower(face);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return *std::find_if(std::begin(substitutes), std::end(substitutes),
                         [&](const Substitute& row) { return lower.starts_with(row.face); });
}

} // namespace host
