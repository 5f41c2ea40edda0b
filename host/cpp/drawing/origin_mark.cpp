#include "drawing/origin_mark.h"

#include "origin.h"

#include <bit>
#include <cstring>

namespace host {

namespace {

/// Mixes numbers into a mark.
class Mixer {
public:
    void add(std::uint64_t value) {
        state_ = (state_ ^ value) * 0x9E3779B97F4A7C15U;
        state_ ^= state_ >> 29;
    }
    void add(double value) { add(std::bit_cast<std::uint64_t>(value + 0.0)); } // -0 is 0
    void add(int value) { add(static_cast<std::uint64_t>(static_cast<std::uint32_t>(value))); }
    void add(const std::string& text) {
        add(text.size());
        for (const char c : text) state_ = (state_ ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    void add(const RPT& p) { add(p.x), add(p.y); }
    void add(const Element& e) {
        add(e.x), add(e.y);
        add(static_cast<std::uint64_t>(static_cast<std::uint32_t>(e.pen)) << 32U |
            static_cast<std::uint64_t>(static_cast<std::uint16_t>(e.lineType)) << 16U |
            static_cast<std::uint64_t>(e.type) << 8U | static_cast<std::uint64_t>(e.info) << 1U | e.ccw);
        if (e.type == ElementType::Arc || e.type == ElementType::Circle) add(e.cx), add(e.cy);
    }
    void add(const Text& text) {
        for (const std::string& line : text.lines) add(line);
        for (const double value : {text.x, text.y, text.z, text.height, text.width, text.angle, text.slant,
                                   text.lineDistance, text.spacing, text.lineLength})
            add(value);
        for (const int value : {text.font, text.styleBits, text.pen, text.origin, text.justification,
                                text.fillPen, text.backOn ? 1 : 0, text.backType})
            add(value);
        add(text.face);
    }
    void add(const Hatch& hatch) {
        for (const Contour& contour : hatch.contours)
            for (const Element& e : contour) add(e);
        for (const int value : {hatch.solid ? 1 : 0, hatch.fillPen, hatch.backPen, hatch.transparency})
            add(value);
        for (const HatchLines& lines : hatch.lines) {
            for (const double value : {lines.angle, lines.base, lines.d1, lines.d2}) add(value);
            for (const int value : {lines.c1, lines.c2, lines.pen, lines.lineType}) add(value);
        }
        for (const HatchFamily& family : hatch.families) {
            for (const double value :
                 {family.angle, family.distance, family.originX, family.originY, family.offset})
                add(value);
            for (const double value : family.dashes) add(value);
            add(family.pen), add(family.lineType);
        }
        for (const HatchGradient& gradient : hatch.gradient) add(gradient.secondPen), add(gradient.angle);
        add(hatch.patternName);
    }
    /// With the texts that it shows.
    void add(const Pattern& pattern, const Dimension& dimension) {
        for (const RPT3& p : dimension.points) add(p.x), add(p.y), add(p.z);
        for (const RPT& p : dimension.refs) add(p);
        add(dimension.textPos);
        for (const int value : {dimension.kind, dimension.mode, dimension.txt.pen, dimension.arrow.pen})
            add(value);
        for (const Element& e : dimension.lines) add(e);
        for (const int row : {dimension.textRow, dimension.tolRow})
            if (row >= 0 && static_cast<std::size_t>(row) < pattern.texts.size())
                add(pattern.texts[static_cast<std::size_t>(row)]);
    }
    void add(const Pattern& pattern) {
        for (const Element& e : pattern.elements) addWithCurve(pattern, e);
        for (const Text& text : pattern.texts) add(text);
        for (const Hatch& hatch : pattern.hatches) add(hatch);
        for (const Dimension& dimension : pattern.dimensions) {
            for (const RPT3& p : dimension.points) add(p.x), add(p.y);
            add(dimension.textPos);
        }
        for (const Bitmap& bitmap : pattern.bitmaps)
            add(bitmap.file), add(bitmap.origin.x), add(bitmap.origin.y);
        add(pattern.size()), add(pattern.ids.obstat), add(pattern.visible ? 1 : 0);
    }
    void addWithCurve(const Pattern& pattern, const Element& e) {
        add(e);
        if (e.type == ElementType::Spline)
            for (const RPT& p : pattern.splines[static_cast<std::size_t>(e.cx)].points) add(p);
    }
    /// Never 0, which stands for no content.
    std::int64_t mark() const { return static_cast<std::int64_t>(state_ | 1U); }

private:
    std::uint64_t state_ = 0x243F6A8885A308D3U;
};

template <class Item>
bool holdsRows(const std::vector<Item>& list, int first, int count) {
    return first >= 0 && count > 0 &&
           static_cast<std::size_t>(first) + static_cast<std::size_t>(count) <= list.size();
}

template <class Item>
std::int64_t markOfRows(const std::vector<Item>& list, int first, int count) {
    if (!holdsRows(list, first, count)) return 0;
    Mixer mixer;
    const Item* const item = list.data() + first;
    for (int i = 0; i < count; ++i) mixer.add(item[i]);
    return mixer.mark();
}

std::int64_t markOfDimensions(const Pattern& pattern, int first, int count) {
    if (!holdsRows(pattern.dimensions, first, count)) return 0;
    Mixer mixer;
    const Dimension* const dimension = pattern.dimensions.data() + first;
    for (int i = 0; i < count; ++i) mixer.add(pattern, dimension[i]);
    return mixer.mark();
}

std::int64_t markOfElements(const Pattern& pattern, int first, int count) {
    if (!holdsRows(pattern.elements, first, count)) return 0;
    Mixer mixer;
    const Element* const element = pattern.elements.data() + first;
    for (int i = 0; i < count; ++i) mixer.addWithCurve(pattern, element[i]);
    return mixer.mark();
}

} // namespace

std::int64_t markOf(const Pattern& pattern, int list, int first, int count) {
    if (list == OV_TEXTS) return markOfRows(pattern.texts, first, count);
    if (list == OV_HATCHES) return markOfRows(pattern.hatches, first, count);
    if (list == OV_DIMENSIONS) return markOfDimensions(pattern, first, count);
    return markOfElements(pattern, first, count);
}

std::int64_t markOf(const Drawing& drawing, const Pattern& pattern, const std::vector<int>& members) {
    Mixer mixer;
    mixer.add(pattern);
    for (const int number : members) {
        const Pattern* const member = drawing.find(number);
        if (!member) return 0;
        mixer.add(*member);
        mixer.add(member->ids.layer); // that of the whole is the one that it leaves on
    }
    return mixer.mark();
}

void renewMarks(Drawing& drawing) {
    for (Pattern& pattern : drawing.patterns) {
        for (Origin& origin : pattern.origins)
            origin.mark = markOf(pattern, origin.list, origin.first, origin.count);
        for (Placed& placed : pattern.placed) placed.mark = markOf(drawing, pattern, placed.members);
    }
}

} // namespace host
