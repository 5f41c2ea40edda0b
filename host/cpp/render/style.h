// Pens and line types as they look in a picture.
#pragma once

#include "render/frame.h"

#include <cairo.h>

#include <vector>

namespace host {

/// Width of a pen's lines in device units, where the usual one has `lineWidth`.
double penWidth(const Drawing& drawing, int pen, double lineWidth);
/// Colour of a pen, made visible: what would vanish in the background takes the opposite tone.
Rgb visiblePen(const Drawing& drawing, int pen, bool dark);
void setSource(cairo_t* cairo, const Rgb& color, double alpha = 1);

/// Dash lengths in device units for cairo_set_dash, from lengths in drawing units (positive dash, negative
/// gap, 0 dot). Empty for what is drawn solid: no dashes, or such as the picture can't show any more.
std::vector<double> deviceDashes(const std::vector<double>& dashes, double deviceScale, double lineWidth);
/// Dashes of a line type of the drawing, whose lengths are millimetres on the sheet.
std::vector<double> lineTypeDashes(const Drawing& drawing, int lineType, const Frame& frame);
void setDashes(cairo_t* cairo, const std::vector<double>& dashes, double phase = 0);

} // namespace host
