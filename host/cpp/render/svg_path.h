// Paths, numbers and colours in the words of SVG, as short as they can be.
#pragma once

#include <cairo.h>

#include <string>

namespace host {

/// Units of an SVG's coordinates in a device unit: hundredths of a point, as whole numbers.
constexpr double kSvgFine = 100;

/// Path data of the context's path, relative and in whole numbers; `fine` times the device's coordinates.
class SvgPath {
public:
    /// Appends the path behind what is there.
    void add(cairo_t* cairo, double fine = kSvgFine);
    const std::string& data() const { return data_; }
    bool empty() const { return data_.empty(); }
    void clear();

private:
    struct At {
        long x = 0, y = 0;
    };
    void command(char letter);
    void number(long value);
    void step(const At& to);
    void lineTo(const At& to);

    std::string data_;
    char last_ = 0;           ///< command in force
    bool needsBlank_ = false; ///< a number stands at the end
    At at_, start_;
};

std::string svgColor(double r, double g, double b);
std::string svgNumber(double value, int digits = 5);
/// matrix(a b c d e f), its coordinates `fine` times those of the device.
std::string svgMatrix(const cairo_matrix_t& m, double fine = kSvgFine);
/// With the signs that mean something in XML spelt out, those that it can't hold left out.
std::string xmlText(const std::string& text);

} // namespace host
