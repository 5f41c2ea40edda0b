#include "drawing/space_view.h"

#include "geometry/face_triangles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

namespace host {

static double dot(const RPT3& a, const RPT3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

static RPT3 cross(const RPT3& a, const RPT3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

static RPT3 unit(const RPT3& v) {
    const double length = std::sqrt(dot(v, v));
    return {v.x / length, v.y / length, v.z / length};
}

RPT3 ViewAxes::map(const RPT3& p) const {
    return {dot(right, p), dot(up, p), dot(toward, p)};
}

ViewAxes viewFrom(const RPT3& direction) {
    const double length = std::sqrt(dot(direction, direction));
    if (!(length > 0) || !std::isfinite(length)) return {};
    const RPT3 toward = unit(direction);
    constexpr double nearlyUpright = 1e-9;
    if (std::hypot(toward.x, toward.y) < nearlyUpright) {
        const double side = toward.z < 0 ? -1 : 1;
        return {{side, 0, 0}, {0, 1, 0}, {0, 0, side}};
    }
    const RPT3 right = unit({-toward.y, toward.x, 0});
    return {right, cross(toward, right), toward};
}

// ---- collecting ------------------------------------------------------------------------------------

static auto placeOf(const RPT3& p) {
    return std::tie(p.x, p.y, p.z);
}

/// On which side of the line from a to b, as seen, the face with these corners lies.
static int sideOf(const RPT3& a, const RPT3& b, const std::vector<RPT3>& corners) {
    RPT3 centre{0, 0, 0};
    for (const RPT3& p : corners) centre.x += p.x, centre.y += p.y;
    const double n = static_cast<double>(corners.size());
    const double dx = b.x - a.x, dy = b.y - a.y, ex = centre.x / n - a.x, ey = centre.y / n - a.y;
    const double turn = dx * ey - dy * ex;
    const double least = 1e-9 * (dx * dx + dy * dy + ex * ex + ey * ey);
    return turn > least ? 1 : turn < -least ? -1 : 0;
}

/// `looks`: of all points of the face.
void SpaceView::addFace(const FaceView& face, EdgeLook* looks) {
    corners_.clear();
    for (int i = 0; i < face.count; ++i) corners_.push_back(axes_.map(face.points[i]));
    const bool isArea = face.isArea();
    if (isArea) {
        std::vector<std::array<int, 3>> cut;
        triangulate(corners_.data(), face.count - 1, cut);
        const auto at = [&](int i) { return corners_[static_cast<std::size_t>(i)]; };
        for (const auto& [a, b, c] : cut) triangles_.push_back({{at(a), at(b), at(c)}, face.pen});
    }
    for (int i = 1; i < face.count; ++i) {
        if (!(face.marks[i] & EDGE)) continue;
        RPT3 a = corners_[static_cast<std::size_t>(i - 1)], b = corners_[static_cast<std::size_t>(i)];
        if (placeOf(a) == placeOf(b)) continue;
        if (placeOf(b) < placeOf(a)) std::swap(a, b);
        const int pen = looks[i].pen ? looks[i].pen : face.pen;
        edges_.push_back({a, b, pen, looks[i].lineType, (face.marks[i] & HIDDEN) != 0,
                          isArea ? sideOf(a, b, corners_) : 0});
    }
}

void SpaceView::addList(const FaceList& list) {
    EdgeLooks reader(list);
    std::vector<EdgeLook> looks;
    forEachFace(list, [&](const FaceView& face) {
        looks.clear();
        for (int i = 0; i < face.count; ++i) looks.push_back(reader.at(face.first + i));
        addFace(face, looks.data());
    });
}

void SpaceView::add(const SpaceContent& content) {
    forEachFaceList(content, [&](const FaceList& list) { addList(list); });
    for (const Curve& curve : content.curves)
        for (std::size_t i = 1; i < curve.points.size(); ++i)
            addLine(curve.points[i - 1], curve.points[i], curve.pen, 1);
}

void SpaceView::addLine(const RPT3& a, const RPT3& b, int pen, int lineType) {
    edges_.push_back({axes_.map(a), axes_.map(b), pen, lineType, false, 0});
}

// ---- seeing ----------------------------------------------------------------------------------------

std::vector<SeenLine> SpaceView::lines() const {
    std::vector<const Edge*> order;
    for (const Edge& edge : edges_) order.push_back(&edge);
    const auto place = [](const Edge* e) { return std::tuple(placeOf(e->a), placeOf(e->b), e->isHidden); };
    std::sort(order.begin(), order.end(), [&](auto* p, auto* q) { return place(p) < place(q); });
    std::vector<SeenLine> lines;
    for (std::size_t i = 0; i < order.size();) {
        const Edge& first = *order[i]; // one that is shown, if there is one
        bool sides[2] = {false, false};
        std::size_t end = i;
        for (; end < order.size() && placeOf(order[end]->a) == placeOf(first.a) &&
               placeOf(order[end]->b) == placeOf(first.b);
             ++end)
            if (order[end]->side) sides[order[end]->side > 0] = true;
        const bool isOutline = end - i == 2 && sides[0] != sides[1];
        if (!first.isHidden || isOutline) lines.push_back({first.a, first.b, first.pen, first.lineType});
        i = end;
    }
    return lines;
}

std::vector<SeenLine> SpaceView::visibleLines() const {
    std::vector<SightTriangle> plates;
    plates.reserve(triangles_.size());
    for (const SeenTriangle& t : triangles_) plates.push_back(t.triangle);
    const Sight sight(std::move(plates));
    std::vector<SeenLine> all = lines();
    for (const Sight::Crossing& crossing : sight.crossings())
        all.push_back(
            {crossing.a, crossing.b, triangles_[static_cast<std::size_t>(crossing.triangle)].pen, 1});
    std::vector<SeenLine> seen;
    const auto at = [](const SeenLine& line, double t) {
        return RPT3{line.a.x + t * (line.b.x - line.a.x), line.a.y + t * (line.b.y - line.a.y),
                    line.a.z + t * (line.b.z - line.a.z)};
    };
    for (const SeenLine& line : all) {
        const bool isPoint = line.a.x == line.b.x && line.a.y == line.b.y;
        if (isPoint) continue;
        for (const auto& [from, to] : sight.visible(line.a, line.b))
            seen.push_back({from == 0 ? line.a : at(line, from), to == 1 ? line.b : at(line, to), line.pen,
                            line.lineType});
    }
    return seen;
}

} // namespace host
