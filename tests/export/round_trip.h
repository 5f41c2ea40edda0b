// What a drawing shows, in figures that don't depend on where a chain begins or how a text is divided.
#pragma once

#include "exported.h"

#include "dimension/dim_drawing.h"
#include "hatch_area.h"
#include "text/layout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

/// A stroke. Arcs run counter-clockwise, circles begin on their right.
struct Stroke {
    host::ElementType type;
    double x0, y0, x1, y1, cx, cy;
    std::int64_t pen; ///< its look
    int lineType;
};

/// A line of a text: what it says, where its first character stands and how long it is.
struct ShownLine {
    std::string text;
    double x, y, length, height, angle, slant;
    std::int64_t pen; ///< its look
    int font, style;
    std::string face;
    bool inBox;
};

/// The content of all patterns of one layer.
struct Shown {
    std::vector<Stroke> strokes;
    std::vector<ShownLine> lines;
    std::map<std::string, std::string> attributes;
    std::map<std::int64_t, double> fillAreas, lineAreas; ///< of hatches, by pen
    bool hasSpline = false, hasFrame = false, hasBackground = false, hasDimension = false;
    bool hasBlockLines = false; ///< a dimension that shows the lines of the block that it came from
};

/// What a pen looks like, packed into a number: its own number for a pen of the palette. Pens from 256 on are
/// given out in the order of the file, which a round trip changes.
constexpr std::int64_t LOOK = std::int64_t(1) << 50;
inline std::int64_t packedLook(OV_PEN_LOOK look) {
    const host::Rgb rgb = host::dxfColor(look.color);
    if (look.trueColor == (rgb.r << 16 | rgb.g << 8 | rgb.b)) look.trueColor = -1;
    if (look.trueColor < 0 && look.weight == -1 && !look.isColorOfLayer) return look.color;
    const std::int64_t shade = std::int64_t(look.trueColor + 1) * 256 + look.color;
    return LOOK + (shade * 1024 + look.weight + 3) * 2 + (look.isColorOfLayer ? 1 : 0);
}
inline std::int64_t lookOf(int pen) {
    const auto found = host::openDrawing().penLooks.find(pen);
    return found == host::openDrawing().penLooks.end() ? pen : packedLook(found->second);
}

/// What a target can hold of a look.
inline std::int64_t asHeld(std::int64_t packed, bool holdsTrueColors, bool holdsWeights) {
    if (packed < LOOK) return packed;
    const std::int64_t parts = (packed - LOOK) / 2;
    OV_PEN_LOOK look;
    look.isColorOfLayer = (packed & 1) != 0;
    look.weight = holdsWeights ? static_cast<int>(parts % 1024) - 3 : -1;
    look.color = static_cast<int>(parts / 1024 % 256);
    look.trueColor = holdsTrueColors ? static_cast<int>(parts / 1024 / 256) - 1 : -1;
    return packedLook(look);
}
inline void keepWhatIsHeld(Shown& shown, const std::string& version) {
    const bool trueColors = version >= "ACAD18" && version != "EASY";
    const bool weights = version >= "ACAD14" && version != "EASY";
    for (Stroke& stroke : shown.strokes) stroke.pen = asHeld(stroke.pen, trueColors, weights);
    for (ShownLine& line : shown.lines) line.pen = asHeld(line.pen, trueColors, weights);
    for (auto* areas : {&shown.fillAreas, &shown.lineAreas}) {
        std::map<std::int64_t, double> held;
        for (const auto& [pen, area] : *areas) held[asHeld(pen, trueColors, weights)] += area;
        *areas = held;
    }
}

inline Stroke strokeOf(const host::Element& e, double x, double y) {
    using host::ElementType;
    Stroke s{e.type, x, y, e.x, e.y, e.cx, e.cy, lookOf(e.pen), e.lineType};
    // An import draws a circle as an arc that ends where it began.
    if (e.type == ElementType::Circle || (e.type == ElementType::Arc && x == e.x && y == e.y)) {
        s.type = ElementType::Circle;
        s.x0 = s.x1 = e.cx + std::hypot(e.x - e.cx, e.y - e.cy), s.y0 = s.y1 = e.cy;
    } else if (e.type == ElementType::Arc && !e.ccw) {
        std::swap(s.x0, s.x1), std::swap(s.y0, s.y1);
    } else if (e.type == ElementType::Draw) {
        s.cx = s.cy = 0;
    }
    return s;
}

inline void addLines(std::vector<ShownLine>& lines, const host::Text& text) {
    const double perUnit = host::sheetMillimetres(host::openDrawing());
    const double c = std::cos(text.angle) / perUnit, s = std::sin(text.angle) / perUnit;
    for (const host::LayoutLine& line : host::layoutText(text, perUnit).lines) {
        std::string shown;
        for (const char ch : line.text)
            if (static_cast<unsigned char>(ch) >= 32) shown += ch;
        shown.erase(shown.find_last_not_of(' ') + 1);
        if (shown.empty()) continue;
        lines.push_back(
            {shown, text.x + c * line.x - s * line.baseline, text.y + s * line.x + c * line.baseline,
             (line.width - (text.spacing - 1) * text.width) / perUnit, text.height / perUnit, text.angle,
             text.slant, lookOf(text.pen), text.font, text.styleBits, text.face, text.lineLength > 0});
    }
}

/// The lines that a dimension or an arrow draws itself. Their line type isn't compared: in a file it is the
/// layer's.
inline constexpr int OF_DIMENSION = -1;
inline void addDrawing(std::vector<Stroke>& strokes, const host::DimDrawing& drawing) {
    double x = 0, y = 0;
    for (const host::Element& e : drawing.lines) {
        if (e.type != host::ElementType::Move) {
            strokes.push_back(strokeOf(e, x, y));
            strokes.back().lineType = OF_DIMENSION;
        }
        x = e.x, y = e.y;
    }
}

inline std::map<std::string, Shown> shownByLayer() {
    const double sheet = host::sheetMillimetres(host::openDrawing());
    std::map<std::string, Shown> layers;
    for (const host::Pattern& pattern : host::openDrawing().patterns) {
        if (pattern.number == 0 || pattern.scratch) continue;
        Shown& shown = layers[pattern.ids.layer];
        double x = 0, y = 0;
        for (const host::Element& e : pattern.elements) {
            if (e.type != host::ElementType::Move) shown.strokes.push_back(strokeOf(e, x, y));
            shown.hasSpline |= e.type == host::ElementType::Spline;
            x = e.x, y = e.y;
        }
        for (const host::Dimension& dimension : pattern.dimensions) {
            shown.hasDimension = true;
            shown.hasBlockLines |= !dimension.isFree() && !dimension.lines.empty();
            addDrawing(shown.strokes, host::drawDimension(dimension, sheet));
        }
        for (const host::Arrow& arrow : pattern.arrows)
            addDrawing(shown.strokes, host::drawArrow(arrow, sheet));
        for (const host::Text& text : pattern.texts) {
            addLines(shown.lines, text);
            shown.hasFrame |= text.backType != 0;
        }
        for (const host::Hatch& hatch : pattern.hatches)
            (hatch.solid ? shown.fillAreas : shown.lineAreas)[lookOf(hatch.fillPen)] += areaOf(hatch);
        for (const auto& [name, value] : pattern.attributes) shown.attributes[name] = value;
    }
    return layers;
}

inline void expectEqual(const std::vector<Stroke>& before, const std::vector<Stroke>& after,
                        const std::string& what) {
    ASSERT_EQ(before.size(), after.size()) << what;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Stroke &a = before[i], &b = after[i];
        ASSERT_EQ(a.type, b.type) << what << " " << i << " at " << a.x0 << " " << a.y0;
        const double off = std::max({std::abs(a.x0 - b.x0), std::abs(a.y0 - b.y0), std::abs(a.x1 - b.x1),
                                     std::abs(a.y1 - b.y1), std::abs(a.cx - b.cx), std::abs(a.cy - b.cy)});
        // Six decimals; radius and angles multiply them.
        const double tolerance = 2e-5 * std::max(1.0, std::hypot(a.cx - a.x0, a.cy - a.y0) * 1e-3);
        ASSERT_LT(off, tolerance) << what << " " << i << " at " << a.x0 << " " << a.y0;
        ASSERT_EQ(a.pen, b.pen) << what << " " << i;
        if (a.lineType != OF_DIMENSION) ASSERT_EQ(a.lineType, b.lineType) << what << " " << i;
    }
}

/// The strokes fill the same box.
inline void expectSameBox(const std::vector<Stroke>& before, const std::vector<Stroke>& after,
                          const std::string& what) {
    host::Extents boxes[2];
    for (const auto& [strokes, box] : {std::pair(&before, &boxes[0]), {&after, &boxes[1]}})
        for (const Stroke& s : *strokes) box->add(s.x0, s.y0), box->add(s.x1, s.y1);
    ASSERT_EQ(boxes[0].empty, boxes[1].empty) << what;
    if (boxes[0].empty) return;
    for (double host::Extents::*side :
         {&host::Extents::minX, &host::Extents::minY, &host::Extents::maxX, &host::Extents::maxY})
        ASSERT_NEAR(boxes[0].*side, boxes[1].*side, 1e-4) << what;
}

inline void expectEqual(const std::map<std::int64_t, double>& before,
                        const std::map<std::int64_t, double>& after, double tolerance,
                        const std::string& what) {
    for (const auto& [pen, area] : before) {
        ASSERT_TRUE(after.contains(pen)) << what << " pen " << pen;
        ASSERT_NEAR(after.at(pen), area, tolerance * area + 1e-9) << what << " pen " << pen;
    }
    ASSERT_EQ(before.size(), after.size()) << what;
}

/// `isOld`: the target has no faces, and no characters outside its code page.
inline void expectEqual(const std::vector<ShownLine>& before, const std::vector<ShownLine>& after, bool isOld,
                        const std::string& what) {
    ASSERT_EQ(before.size(), after.size()) << what;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const ShownLine &a = before[i], &b = after[i];
        const std::string where = what + " text " + std::to_string(i) + " " + a.text;
        const bool isAscii =
            std::all_of(a.text.begin(), a.text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
        if (isOld && !isAscii) continue;
        ASSERT_EQ(a.text, b.text) << where;
        const double tolerance = 1e-4 * std::max(a.height, 1.0);
        ASSERT_NEAR(a.x, b.x, tolerance) << where;
        ASSERT_NEAR(a.y, b.y, tolerance) << where;
        // The spacing of a stroke font follows from its table, or from a rough rule if it has none. That
        // keeps the length of a text, but not of the lines that a box makes of it.
        const double part = a.font && a.inBox ? 2e-2 : 1e-3;
        ASSERT_NEAR(a.length, b.length, part * std::max(a.length, 1.0)) << where;
        ASSERT_NEAR(a.height, b.height, 1e-6 * a.height) << where;
        ASSERT_NEAR(std::remainder(a.angle - b.angle, 6.283185307179586), 0, 1e-5) << where;
        ASSERT_NEAR(a.slant, b.slant, 1e-5) << where;
        ASSERT_EQ(a.pen, b.pen) << where;
        if (isOld) continue;
        ASSERT_EQ(a.font, b.font) << where;
        ASSERT_EQ(a.face, b.face) << where;
        ASSERT_EQ(a.style, b.style) << where;
    }
}

/// Puts what stands in `after` into the order of `before`: dimensions in chains change places, and their
/// lines direction. With `byMiddle` texts stand by their middle, in a font of another width.
template <class Item, class Distance>
void matchOrder(const std::vector<Item>& before, std::vector<Item>& after, const Distance& distance) {
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
        const auto from = after.begin() + static_cast<std::ptrdiff_t>(i);
        std::iter_swap(from, std::min_element(from, after.end(), [&](const Item& a, const Item& b) {
                           return distance(before[i], a) < distance(before[i], b);
                       }));
    }
}
inline void matchOrder(Shown& before, Shown& after, bool byMiddle) {
    for (Shown* shown : {&before, &after})
        for (Stroke& s : shown->strokes)
            if (s.type == host::ElementType::Draw && std::pair(s.x1, s.y1) < std::pair(s.x0, s.y0))
                std::swap(s.x0, s.x1), std::swap(s.y0, s.y1);
    matchOrder(before.strokes, after.strokes, [](const Stroke& a, const Stroke& b) {
        return (a.type != b.type ? 1e6 : 0) + std::abs(a.x0 - b.x0) + std::abs(a.y0 - b.y0) +
               std::abs(a.x1 - b.x1) + std::abs(a.y1 - b.y1) + std::abs(a.cx - b.cx) + std::abs(a.cy - b.cy);
    });
    for (Shown* shown : {&before, &after})
        for (ShownLine& line : shown->lines) {
            const std::size_t sign = line.text.find("\u2205"); // a code of the fonts, in another width
            if (sign != std::string::npos) line.text.replace(sign, 3, "\u00D8");
            if (!byMiddle && line.text.find("\u00D8") == std::string::npos) continue;
            line.x += std::cos(line.angle) * line.length / 2;
            line.y += std::sin(line.angle) * line.length / 2;
            line.length = 0;
        }
    matchOrder(before.lines, after.lines, [](const ShownLine& a, const ShownLine& b) {
        return (a.text != b.text ? 1e6 : 0) + std::abs(a.x - b.x) + std::abs(a.y - b.y);
    });
}

/// Pen n is colour n, both ways.
inline std::string penTables() {
    std::string sections;
    for (const char* name : {"PEN-CAD-TO-DXF", "PEN-DXF-TO-CAD", "FILL-CAD-TO-DXF", "FILL-DXF-TO-CAD"}) {
        sections += std::string("\n#") + name + "\n255\n";
        for (int pen = 1; pen <= 255; ++pen)
            sections += std::to_string(pen) + "|" + std::to_string(pen) + "\n";
    }
    return sections + "\n";
}

/// The configuration that keeps all there is, for a version, with line types by name.
inline std::string keepConfig(const std::string& version, const std::map<std::string, int>& lineTypes = {}) {
    std::ifstream keep(std::string(TORVA_SOURCE_DIR) + "/int/dxf/dflt/keep.dxd");
    std::string config{std::istreambuf_iterator<char>(keep), {}};
    config.erase(config.find("#EOF"));
    config.replace(config.find("VERSION=ACAD32"), 14, "VERSION=" + version);
    std::string in, out;
    for (const auto& [name, number] : lineTypes) {
        in += name + "|" + std::to_string(number) + "\n";
        out += std::to_string(number) + "|" + name + "\n";
    }
    const std::string count = std::to_string(lineTypes.size()) + "\n";
    return config + penTables() + "#LT-DXF-TO-CAD\n" + count + in + "\n#LT-CAD-TO-DXF\n" + count + out +
           "\n#EOF\n";
}

inline ImportOptions keepOptions(const std::string& version, const std::map<std::string, int>& types = {}) {
    ImportOptions options;
    options.numbers["&DxfInsbase"] = 1;
    options.config = keepConfig(version, types);
    return options;
}
