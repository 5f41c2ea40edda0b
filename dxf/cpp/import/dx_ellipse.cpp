// ELLIPSE: the host has none, so it is sampled and goes out as a spline through the samples, or as a polygon.
#include "../config/dx_pens.h"
#include "../host/dx_host.h"
#include "../session/session_state.h"
#include "dx_entity_base.h"
#include "dx_extents.h"
#include "dx_linework_import.h"
#include "dx_transform.h"
#include "ellipse_state.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

namespace {

constexpr double fullTurn = 6.283185307179586;
constexpr double quarterTurn = fullTurn / 4;
constexpr double samplesARadian = 3.8197186342054885; // one sample every 15 degrees
constexpr double sampleStep = 0.2617993877991494;     // 15 degrees
constexpr int fewestSamples = 3, mostSamples = DX_MOST_SAMPLES;
constexpr double smallestAxis = 0.0001;

using R = DX_ELLIPSE_TYPE;
constexpr auto fields = dxFields<R>({
    {10, &R::centre},
    {11, &R::majorAxis},
    {40, &R::ratio},
    {41, &R::startParam},
    {42, &R::endParam},
    {210, &R::extrusion},
});

/// An ellipse in its plane, parameters in radians.
struct Shape {
    RPT3 centre;
    double a, b;           ///< half axes
    double cosRot, sinRot; ///< of the major axis
    double start, sweep;   ///< first parameter; extent, not negative
    bool counterClockwise;

    /// Point at the parameter with these values, from the centre.
    RPT fromCentre(double cosine, double sine) const {
        const double u = a * cosine, v = b * sine;
        return {u * cosRot - v * sinRot, u * sinRot + v * cosRot};
    }
    RPT3 at(double cosine, double sine) const {
        const RPT p = fromCentre(cosine, sine);
        return {centre.x + p.x, centre.y + p.y, centre.z};
    }
};

/// The samples in world coordinates ahead of the shift, with the tangents at both ends.
struct Samples {
    int count;
    double x[mostSamples], y[mostSamples];
    double startAngle, endAngle; ///< radians, in the sense of the run
    RPT3 last;
};

Shape shapeOf(const DX_ELLIPSE_TYPE& rec) {
    Shape shape;
    const RPT3& major = rec.majorAxis;
    const double rotation = std::atan2(major.y, major.x);
    shape.centre = rec.centre;
    shape.a = std::sqrt(major.x * major.x + major.y * major.y);
    shape.b = shape.a * rec.ratio;
    shape.cosRot = std::cos(rotation);
    shape.sinRot = std::sin(rotation);
    Mat44 arb;
    DxArbaxis(rec.extrusion[0], rec.extrusion[1], rec.extrusion[2], arb);
    const bool mirrored = DxMirrors(arb);
    const double end = mirrored ? -rec.endParam : rec.endParam;
    shape.start = mirrored ? -rec.startParam : rec.startParam;
    shape.counterClockwise = (rec.counterClockwise != 0) != mirrored;
    shape.sweep = shape.counterClockwise ? end - shape.start : shape.start - end;
    if (shape.sweep < 0) shape.sweep = std::fmod(shape.sweep, fullTurn) + fullTurn;
    return shape;
}

int sampleCount(double sweep) {
    const double rest = std::fmod(sweep, sampleStep) > 0.0001 ? 1 : 0;
    const double count = sweep * samplesARadian + 1 + rest;
    if (!(count > fewestSamples)) return fewestSamples;
    return count < mostSamples ? static_cast<int>(count) : mostSamples;
}

std::uint64_t bitsOf(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// The sines of a run of samples. The reference holds until the next call.
const DX_SAMPLE_SINES& sinesOf(double start, double step, int count) {
    const std::uint64_t mixed = (bitsOf(start) * 31 + bitsOf(step)) * 0x9E3779B97F4A7C15u;
    DX_SAMPLE_SINES& sines = DxSampleSines[(mixed >> 32) % DX_SAMPLE_SINES_COUNT];
    if (sines.count == count && bitsOf(sines.start) == bitsOf(start) && bitsOf(sines.step) == bitsOf(step))
        return sines;
    sines.start = start;
    sines.step = step;
    sines.count = count;
    const auto set = [&](int i, double t) {
        sines.cosine[i] = std::cos(t);
        sines.sine[i] = std::sin(t);
    };
    const double quarter = std::signbit(step) ? -quarterTurn : quarterTurn;
    for (int i = 0; i < count; ++i) set(i, start + i * step);
    set(count, start + quarter);
    set(count + 1, start + (count - 1) * step + quarter);
    return sines;
}

/// Direction of the run at sample i: the point a quarter turn further, seen from the centre, whose values
/// stand at `beyond`.
double tangentAngle(const Shape& shape, const DX_SAMPLE_SINES& sines, int i, int beyond, const Mat44 m) {
    const RPT way = shape.fromCentre(sines.cosine[beyond], sines.sine[beyond]);
    RPT3 from = shape.at(sines.cosine[i], sines.sine[i]), to = {from.x + way.x, from.y + way.y, from.z};
    DxTrans3DRpt(&from, m);
    DxTrans3DRpt(&to, m);
    return std::atan2(to.y - from.y, to.x - from.x);
}

/// False when a point isn't finite.
bool sample(const Shape& shape, const Mat44 m, Samples& samples) {
    samples.count = sampleCount(shape.sweep);
    const double step = shape.sweep / (samples.count - 1) * (shape.counterClockwise ? 1 : -1);
    const DX_SAMPLE_SINES& sines = sinesOf(shape.start, step, samples.count);
    for (int i = 0; i < samples.count; ++i) {
        samples.last = shape.at(sines.cosine[i], sines.sine[i]);
        DxTrans3DRpt(&samples.last, m);
        if (!DxIsFinite(samples.last)) return false;
        if (DxCheckPass) DxCheckXYZ(samples.last.x, samples.last.y, samples.last.z);
        samples.x[i] = samples.last.x;
        samples.y[i] = samples.last.y;
    }
    if (DxCheckPass) return true;
    samples.startAngle = tangentAngle(shape, sines, 0, samples.count, m);
    samples.endAngle = tangentAngle(shape, sines, samples.count - 1, samples.count + 1, m);
    return true;
}

/// True when `m` turns the plane of the figure so far that nothing but a line is left of it.
bool isEdgeOn(const Mat44 m) {
    const double* normal = m[2];
    const double length = std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
    return std::fabs(normal[2]) < 0.001 * length;
}

int drawPolygon(const Samples& samples) {
    constexpr unsigned char inFigure = 4;
    if (const int error = Dxovdraw(2, samples.x[0], samples.y[0])) return error;
    for (int i = 1; i < samples.count; ++i) {
        if (const int error = Dxovdraw(1, samples.x[i], samples.y[i], inFigure)) return error;
    }
    return 0;
}

int drawSamples(const Samples& samples, const Mat44 m, int inFigure) {
    if (isEdgeOn(m)) return drawPolygon(samples);
    bool isDrawn = false;
    if (const int error =
            Dxovspline(samples.count, samples.x, samples.y, samples.startAngle, samples.endAngle, &isDrawn))
        return error;
    if (!isDrawn) return drawPolygon(samples);
    return inFigure ? Dxovdraw(2, samples.last.x, samples.last.y) : 0;
}

} // namespace

int DxReadEllipse(DX_ELLIPSE_TYPE* rec) {
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->centre = rec->majorAxis = {0, 0, 0};
    rec->ratio = rec->startParam = 0;
    rec->endParam = fullTurn;
    rec->counterClockwise = 1;
    DxElevation elevation;
    if (const int error = DxReadEntity(*rec, fields, elevation)) return error;
    rec->centre.z += elevation.value;
    return 0;
}

int DxDrawOneEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m) {
    return DxDrawEllipse(rec, m, 0);
}

int DxDrawEllipse(const DX_ELLIPSE_TYPE* rec, const Mat44 m, int inFigure) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&rec->base, &pen, &lineType)) return 0;
    const Shape shape = shapeOf(*rec);
    Samples samples{};
    if (!(shape.a > smallestAxis) || !sample(shape, m, samples) || DxCheckPass) return 0;
    DxNewElement(samples.count);
    if (const int error = DxStartDrawing(pen, lineType)) return error;
    if (const int error = drawSamples(samples, m, inFigure)) return error;
    DxLastPoint = samples.last;
    return 0;
}
