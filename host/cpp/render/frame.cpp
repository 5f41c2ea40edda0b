#include "render/frame.h"

#include "ge.h"

#include <algorithm>
#include <cmath>

namespace host {

double lineWidthOf(double size) {
    return std::clamp(size / 1200.0, 0.6, 6.0);
}

static void setScale(Frame& frame, double scale) {
    frame.scale = scale;
    frame.axes[0] = {scale, 0};
    frame.axes[1] = {0, -scale};
}

static Frame place(double left, double top, double width, double height, int size, double margin) {
    Frame frame;
    const double longer = std::max(width, height);
    frame.at = {margin, margin};
    setScale(frame, (size - 2 * margin) / longer);
    // A drawing that is a line still gets a strip that can be looked at.
    const double least = size / 12.0;
    frame.width = std::max(least, width * frame.scale + 2 * margin);
    frame.height = std::max(least, height * frame.scale + 2 * margin);
    frame.origin.x = left - (frame.width - 2 * margin - width * frame.scale) / 2 / frame.scale;
    frame.origin.y = top + (frame.height - 2 * margin - height * frame.scale) / 2 / frame.scale;
    frame.lineWidth = lineWidthOf(size);
    return frame;
}

Frame middleFrame(const RPT& middle, double scale, double width, double height) {
    Frame frame;
    setScale(frame, scale);
    frame.origin = {middle.x, middle.y, 0};
    frame.at = {width / 2, height / 2};
    frame.width = width;
    frame.height = height;
    frame.lineWidth = lineWidthOf(std::max(width, height));
    return frame;
}

Frame planeFrame(const Frame& frame, const WorkPlane& plane) {
    Frame result = frame;
    const GeMat44 axes(plane.a, plane.b, plane.c);
    for (int i = 0; i < 3; ++i) {
        const double* axis = axes.data()[i];
        result.axes[i] = {axis[0] * frame.axes[0].x + axis[1] * frame.axes[1].x + axis[2] * frame.axes[2].x,
                          axis[0] * frame.axes[0].y + axis[1] * frame.axes[1].y + axis[2] * frame.axes[2].y};
    }
    result.origin = {0, 0, 0};
    result.at = frame.map(plane.a.x, plane.a.y, plane.a.z);
    return result;
}

Frame fitFrame(const Extents& extents, int size) {
    const double margin = size * 0.03;
    double width = extents.maxX - extents.minX, height = extents.maxY - extents.minY;
    if (extents.empty || !std::isfinite(width) || !std::isfinite(height) || width < 0 || height < 0)
        return place(0, 1, 1, 1, size, margin);
    double left = extents.minX, top = extents.maxY;
    // The least width that doubles can still tell apart here; also the case of a single point.
    const double reach = std::max({std::fabs(left), std::fabs(extents.maxX), std::fabs(top), 1e-300});
    const double least = std::max(reach * 1e-15, 1e-12);
    if (std::max(width, height) < least) {
        const double room = std::max(1.0, 4 * least);
        left -= room / 2, top += room / 2;
        width = height = room;
    }
    return place(left, top, width, height, size, margin);
}

Frame windowFrame(const Extents& window, int size) {
    return place(window.minX, window.maxY, window.maxX - window.minX, window.maxY - window.minY, size, 0);
}

Frame sheetFrame(const View& view, int size) {
    const GeFormat format(view.format);
    const double unitInMm = GeUnit(view.unit).factor() / 1e6;
    const double perMm = 1 / (unitInMm * view.scale);
    const double width = format.width() * perMm, height = format.height() * perMm;
    if (!std::isfinite(width) || !std::isfinite(height) || width <= 0 || height <= 0)
        return fitFrame(Extents{}, size);
    return place(-width / 2, height / 2, width, height, size, 0);
}

} // namespace host
