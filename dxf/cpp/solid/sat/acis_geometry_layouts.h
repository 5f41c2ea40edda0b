// Fields of curves and surfaces, which stand in records and, behind a word, within sub-records.
#pragma once

#include "acis_layout.h"

namespace ACIS {

inline constexpr Field straightFields[] = {
    position("root"),
    vec("direction"),
    interval("range").from(106),
};
inline constexpr Field ellipseFields[] = {
    position("centre"), vec("normal"), vec("major"), real("ratio"), interval("range").from(106),
};
inline constexpr Field intcurveFields[] = {
    logical("sense", words::sense),
    field(Type::Sub, "curve"),
    interval("range").from(106),
};
inline constexpr Field degenerateFields[] = {
    position("point"),
    interval("range").from(106),
};
inline constexpr Field undefinedFields[] = {
    position("start"),  vec("start_tangent"), vec("start_bend"),           position("end"),
    vec("end_tangent"), vec("end_bend"),      interval("range").from(106),
};
inline constexpr Field planeFields[] = {
    position("root"),        vec("normal"),           vec("u"), logical("v_sense", words::sideways),
    interval("u").from(106), interval("v").from(106),
};
/// Sine and cosine of the half angle; a sine of 0 is a cylinder.
inline constexpr Field coneFields[] = {
    position("centre"),
    vec("normal"),
    vec("major"),
    real("ratio"),
    interval("range").from(106),
    real("sine"),
    real("cosine"),
    real("u_scale").from(400).filledBy(Fill::MajorLength),
    logical("sense", words::sense),
    interval("u").from(106),
    interval("v").from(106),
};
inline constexpr Field sphereFields[] = {
    position("centre"),
    real("radius"),
    vec("u"),
    vec("pole"),
    logical("v_sense", words::sideways),
    interval("u").from(106),
    interval("v").from(106),
};
inline constexpr Field torusFields[] = {
    position("centre"),
    vec("normal"),
    real("major"),
    real("minor"),
    vec("u"),
    logical("v_sense", words::sideways),
    interval("u").from(106),
    interval("v").from(106),
};
inline constexpr Field splineFields[] = {
    logical("sense", words::sense),
    field(Type::Sub, "surface"),
    interval("u").from(106),
    interval("v").from(106),
};

} // namespace ACIS
