#include "dimension_text.h"

#include <cmath>
#include <cstdio>
#include <random>

namespace {

constexpr double toRadians = 0.017453292519943295;

std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", value);
    return text;
}

struct Point {
    double x, y;
};

void addPoint(DxfGroups& groups, int code, const Point& p) {
    groups.push_back({code, number(p.x)});
    groups.push_back({code + 10, number(p.y)});
}

/// The entities of a block, in a frame of its own.
class Drawing {
public:
    Drawing(const DimShape& shape, Point origin, double degrees) : shape_(shape), origin_(origin) {
        c_ = std::cos(degrees * toRadians), s_ = std::sin(degrees * toRadians);
    }

    Point at(double x, double y) const { return {origin_.x + c_ * x - s_ * y, origin_.y + s_ * x + c_ * y}; }

    void line(double x0, double y0, double x1, double y1) {
        entity("LINE");
        point(10, at(x0, y0));
        point(11, at(x1, y1));
    }
    void arc(Point centre, double radius, double from, double to) {
        entity("ARC");
        point(10, centre);
        groups.push_back({40, number(radius)});
        groups.push_back({50, number(from)});
        groups.push_back({51, number(to)});
    }
    /// A head at (x, y) whose body lies in direction (dx, dy).
    void arrow(double x, double y, double dx, double dy) {
        constexpr double size = 2.5, half = 0.5;
        switch (shape_.arrow) {
        case DimArrow::None: return;
        case DimArrow::Filled:
            if (shape_.asBlocks) return insert("ARROW", x, y, dx, dy);
            entity("SOLID");
            point(10, at(x + dx * size - dy * half, y + dy * size + dx * half));
            point(11, at(x + dx * size + dy * half, y + dy * size - dx * half));
            point(12, at(x, y));
            point(13, at(x, y));
            return;
        case DimArrow::Tick: return line(x - 1.25, y - half, x + 1.25, y + half);
        case DimArrow::Dot:
            if (shape_.asBlocks) return insert("DOT", x, y, 1, 0);
            entity("CIRCLE");
            point(10, at(x, y));
            groups.push_back({40, number(size)});
            return;
        }
    }
    void text(const Point& middle, double degrees) {
        textEntity(shape_.text, middle, 2.5, degrees);
        for (std::size_t i = 0; i < shape_.tolerances.size(); ++i)
            textEntity(shape_.tolerances[i], {middle.x + 8, middle.y + (i == 0 ? 1.0 : -1.0)}, 1.25, degrees);
    }
    /// Lines and text, in the order of the shape.
    template <class Lines, class Texts>
    void both(const Lines& lines, const Texts& texts) {
        if (shape_.textFirst) texts();
        lines();
        if (!shape_.textFirst) texts();
    }

    DxfGroups groups;

private:
    void entity(const char* name) { groups.insert(groups.end(), {{0, name}, {8, "0"}}); }
    void point(int code, Point p) {
        std::uniform_real_distribution<double> off(-shape_.noise, shape_.noise);
        addPoint(groups, code, {p.x + off(random_), p.y + off(random_)});
    }
    void insert(const char* block, double x, double y, double dx, double dy) {
        entity("INSERT");
        groups.push_back({2, block});
        point(10, at(x, y));
        const double turn = std::atan2(s_ * dx + c_ * dy, c_ * dx - s_ * dy) / toRadians;
        groups.push_back({50, number(turn)});
    }
    void textEntity(const std::string& text, const Point& middle, double height, double degrees) {
        entity(shape_.asMtext ? "MTEXT" : "TEXT");
        addPoint(groups, 10, middle);
        groups.insert(groups.end(), {{40, number(height)}, {1, text}, {50, number(degrees)}});
        if (shape_.asMtext) {
            groups.push_back({71, "5"});
            return;
        }
        groups.insert(groups.end(), {{72, "1"}, {73, "2"}});
        addPoint(groups, 11, middle);
    }

    const DimShape& shape_;
    Point origin_;
    double c_, s_;
    std::mt19937 random_{7};
};

DimEntity dimension(Drawing& block, int type, const Point& text,
                    const std::vector<std::pair<int, Point>>& points, double degrees = 0) {
    DimEntity made;
    made.block = std::move(block.groups);
    made.entity = {{70, std::to_string(type)}, {50, number(degrees)}};
    addPoint(made.entity, 11, text);
    for (const auto& [code, p] : points) addPoint(made.entity, code, p);
    return made;
}

} // namespace

DimEntity linearDimension(const DimShape& shape, double x, double y) {
    constexpr double length = 40, height = 15, out = 8;
    Drawing block(shape, {x, y}, shape.degrees);
    const auto lines = [&] {
        if (shape.hasExtensions) {
            block.line(0, 1, 0, height + 2);
            block.line(length, 1, length, height + 2);
        }
        if (shape.isOutside) {
            block.line(-out, height, 0, height);
            block.line(length, height, length + out, height);
        } else if (shape.hasGap) {
            block.line(0, height, 15, height);
            block.line(25, height, length, height);
        }
        for (int i = 0; !shape.isOutside && !shape.hasGap && i < shape.pieces; ++i)
            block.line(length * i / shape.pieces, height, length * (i + 1) / shape.pieces, height);
        block.arrow(0, height, shape.isOutside ? -1 : 1, 0);
        block.arrow(length, height, shape.isOutside ? 1 : -1, 0);
    };
    const Point text = block.at(length / 2, shape.hasGap ? height : height + 2);
    block.both(lines, [&] { block.text(text, shape.degrees); });
    return dimension(block, 0, text,
                     {{13, block.at(0, 0)}, {14, block.at(length, 0)}, {10, block.at(0, height)}},
                     shape.degrees);
}

DimEntity angularDimension(const DimShape& shape) {
    const Point centre{100, 100};
    constexpr double radius = 20;
    Drawing block(shape, centre, 0);
    const auto polar = [&](double r, double degrees) {
        return block.at(r * std::cos(degrees * toRadians), r * std::sin(degrees * toRadians));
    };
    const auto lines = [&] {
        for (const double leg : {10.0, 70.0}) {
            const Point from = polar(5, leg), to = polar(radius + 2, leg);
            if (shape.hasExtensions)
                block.line(from.x - centre.x, from.y - centre.y, to.x - centre.x, to.y - centre.y);
        }
        if (shape.hasGap) {
            block.arc(centre, radius, 10, 32);
            block.arc(centre, radius, 48, 70);
        } else {
            block.arc(centre, radius, 10, 70);
        }
    };
    const Point text = polar(shape.hasGap ? radius : radius + 3, 40);
    block.both(lines, [&] { block.text(text, 0); });
    return dimension(block, 5, text,
                     {{10, polar(radius, 40)}, {13, polar(5, 10)}, {14, polar(5, 70)}, {15, centre}});
}

/// Both are drawn in a frame with x from the centre to the point on the circle.
DimEntity radiusDimension(const DimShape& shape) {
    constexpr double radius = 30;
    Drawing block(shape, {200, 0}, 30);
    const auto lines = [&] {
        if (shape.isOutside) {
            block.line(radius + 12, 0, radius, 0);
            block.arrow(radius, 0, 1, 0);
        } else {
            block.line(0, 0, radius, 0);
            block.arrow(radius, 0, -1, 0);
        }
    };
    const Point text = block.at(shape.isOutside ? radius + 10 : 15, 2);
    block.both(lines, [&] { block.text(text, 30); });
    return dimension(block, 4, text, {{10, block.at(0, 0)}, {15, block.at(radius, 0)}});
}

DimEntity diameterDimension(const DimShape& shape) {
    constexpr double radius = 30;
    Drawing block(shape, {200, 0}, 30);
    const auto lines = [&] {
        if (shape.hasGap) {
            block.line(-radius, 0, -6, 0);
            block.line(6, 0, radius, 0);
        } else {
            block.line(-radius, 0, radius, 0);
        }
        block.arrow(-radius, 0, 1, 0);
        block.arrow(radius, 0, -1, 0);
    };
    const Point text = block.at(0, shape.hasGap ? 0 : 2);
    block.both(lines, [&] { block.text(text, 30); });
    return dimension(block, 3, text, {{10, block.at(-radius, 0)}, {15, block.at(radius, 0)}});
}

DimEntity ordinateDimension(bool isX) {
    const DimShape shape;
    Drawing block(shape, {50, 20}, 0);
    const double x = isX ? 0 : 25, y = isX ? -25 : 0;
    block.line(0, 0, x, y);
    const Point text = block.at(x * 1.2, y * 1.2);
    block.text(text, 0);
    return dimension(block, isX ? 70 : 6, text, {{10, {10, 10}}, {13, {50, 20}}, {14, block.at(x, y)}});
}

void addDimension(DxfText& file, const std::string& block, const DimEntity& dimension,
                  const std::string& layer, const std::string& name) {
    file.block(block, dimension.block);
    DxfGroups groups{{8, layer}, {2, block}, {3, "STANDARD"}};
    groups.insert(groups.end(), dimension.entity.begin(), dimension.entity.end());
    file.entity(name, groups);
}
