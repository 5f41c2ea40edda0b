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
    int number() const { return number_; }
    double width() const;  ///< millimetres, landscape
    double height() const; ///< millimetres

private:
    int number_;
};

/// RPT3 as a class.
struct GeRpt3 : RPT3 {
    GeRpt3() : RPT3{0, 0, 0} {}
    GeRpt3(double px, double py, double pz) : RPT3{px, py, pz} {}
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
