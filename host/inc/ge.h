// Geometry classes: units, scales, formats, frames and boxes.
#pragma once

#include "rpt.h"
#include "ut_string.h"

/// A length unit of the host: 1 nm, 2 µm, 3 mm, 4 cm, 5 m, 6 km, 7 inch, 8 feet.
class GeUnit {
public:
    GeUnit() = default;
    explicit GeUnit(int code, double value = 1.0) : code_(code), value_(value) {}
    int code() const { return code_; }
    double factor() const;                         ///< Nanometres in one unit; 0 for a code outside 1 to 8.
    UtCString name() const;                        ///< "nm", "ym", "mm", "cm", "m", "km", "inch", "feet".
    static GeUnit fromName(const UtCString& name); ///< Code 0 for an unknown name.

private:
    int code_ = 3;
    double value_ = 1.0;
};

/// Drawing scale: sheet length over model length.
class GeScale {
public:
    explicit GeScale(double value = 1.0) : value_(value) {}
    double value() const { return value_; }

private:
    double value_;
};

/// Sheet format: 0 A00, 1 A0, … 6 A5.
class GeFormat {
public:
    explicit GeFormat(int number = 1) : number_(number) {}
    /// `turned` and `kind` are 0.
    void Set(int number, int /*turned*/, int /*kind*/) { number_ = number; }
    int number() const { return number_; }
    double width() const;  ///< millimetres, landscape
    double height() const; ///< millimetres

private:
    int number_;
};

/// RPT3 as a class.
struct GeRpt3 : RPT3 {
    GeRpt3() : GeRpt3(0, 0, 0) {}
    GeRpt3(double px, double py, double pz) {
        x = px;
        y = py;
        z = pz;
    }
    GeRpt3(const RPT3& p) : RPT3(p) {} // NOLINT: same thing
};

/// 4 by 4 matrix with row vectors.
class GeMat44 {
public:
    GeMat44(); ///< identity
    explicit GeMat44(const Mat44 m);
    /// Frame with `origin`, x axis towards `onX`, and the xy plane through `inPlane`. Carries frame
    /// coordinates to world coordinates. A degenerate triple gives a pure translation.
    GeMat44(const RPT3& origin, const RPT3& onX, const RPT3& inPlane);
    /// One entry; indexes outside 0 to 3 change nothing.
    void Set(int row, int column, double value);
    int Invert(); ///< 3011 for a singular matrix, which stays as it is.
    void CopyTo(Mat44 m) const;
    double (*data())[4] { return m_; }
    const double (*data() const)[4] { return m_; }

private:
    Mat44 m_;
};

/// A box parallel to the axes.
class GeBox {
public:
    GeBox(const RPT3& low, const RPT3& high) : min(low), max(high) {}
    GeBox& operator*=(const GeMat44& m); ///< Becomes the box of its image (of its eight corners).
    RPT3 min;
    RPT3 max;
};

/// A vector in space.
class GeVec : public GeRpt3 {
public:
    GeVec() = default;
    GeVec(double vx, double vy, double vz) : GeRpt3(vx, vy, vz) {}
    explicit GeVec(const RPT3& v) : GeRpt3(v) {}
    GeVec(const RPT3& from, const RPT3& to) : GeRpt3(to.x - from.x, to.y - from.y, to.z - from.z) {}
    double Length() const;
    double Dot(const GeVec& other) const { return x * other.x + y * other.y + z * other.z; }
    GeVec Cross(const GeVec& other) const;
    int Normalize(); ///< 3011 for the null vector, which stays as it is.
    /// Angle from this vector to `other`, radians in (-pi, pi], positive counter-clockwise seen against
    /// `axis`.
    double GetAngleBetween(const GeVec& other, const GeVec& axis) const;
};

/// A vector of length 1; the x axis for a null vector.
class GeUnitVec : public GeVec {
public:
    GeUnitVec(double vx, double vy, double vz) : GeUnitVec(GeVec(vx, vy, vz)) {}
    explicit GeUnitVec(const GeVec& v);
};

// ---- tolerance -------------------------------------------------------------------------------------

/// The geometry tolerance in drawing units: lengths up to it count as none. 1e-9 in a fresh session.
double GeGetEpsi();
void GeSetEpsi(double tolerance); ///< A value that isn't positive and finite sets the default.
double GeEpsiGetTol();            ///< The tolerance for the length of a contour element, as GeGetEpsi.

// ---- lines and points of the plane -----------------------------------------------------------------
// A line is a*x + b*y + c = 0 with (a, b) of length 1, pointing to the left of the line's direction. The
// functions give 0, or an error with the results untouched: 3011 where the input describes no line, 1005
// where there is no intersection.

int GeLineByPtPt(const RPT& from, const RPT& to, double* a, double* b, double* c);
int GeLineByPtAng(const RPT& point, double angle, double* a, double* b, double* c); ///< angle in radians
int GeIsectLinLin(double a1, double b1, double c1, double a2, double b2, double c2, RPT* point);
/// Intersection of the endless lines p1 p2 and q1 q2.
int GeRptIsLinLinByPts(const RPT& p1, const RPT& p2, const RPT& q1, const RPT& q2, RPT* point);
/// Intersections of the endless line p q with the counter-clockwise arc from `start` to `end` about
/// `centre` (equal ends: the whole circle), in the order of the line's direction.
int GeRptIsArcLine(const RPT& start, const RPT& end, const RPT& centre, const RPT& p, const RPT& q,
                   RPT points[2], int* count);
/// A common point of the segments p1 p2 and q1 q2, ends included; of an overlap its first point along p1 p2.
int GeRptIsDrawDraw(const RPT& p1, const RPT& p2, const RPT& q1, const RPT& q2, RPT* point);

/// Two arcs, tangent to each other, from p0 with direction t0 to p2 with direction t2 (a biarc). Where it
/// can be, they join with direction t1, else with that of the chord, else with equally long tangents.
/// `side` is the side of the chord p0 p2 that the curve bends to: 1 right, -1 left; 0 for any. Senses are 1
/// counter-clockwise, -1 clockwise, 0 for a piece that is straight within the angle `eps`; either both are 0
/// or none is. Non-zero, with the results untouched, when there is no such pair. `mode` is 1.
short GeUtilInterpolByArc(const RPT& p0, const RPT& t0, const RPT& p2, const RPT& t2, const RPT& t1,
                          short side, double eps, int mode, RPT* centre1, double* radius1, short* sense1,
                          RPT* centre2, double* radius2, short* sense2, RPT* join);
