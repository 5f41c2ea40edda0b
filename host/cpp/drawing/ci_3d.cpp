// Objects in space by cursor.
#include "ci_3d.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "services/failure.h"
#include "services/session.h"

#include <cmath>

using namespace host;

static Pattern* targetAt(const DsCsr* cursor) {
    return callFails() || !cursor ? nullptr : openDrawing().find(cursor->Get().patNo);
}

static std::size_t bodies(const Pattern& p) {
    return p.spaceSize() - p.pointClouds.size();
}
static std::size_t solids(const Pattern& p) {
    return p.solids.size();
}
static std::size_t clouds(const Pattern& p) {
    return p.pointClouds.size();
}

static int aim(DsCsr& cursor, int row) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(cursor.Get().patNo);
    if (!pattern || row < 0 || static_cast<std::size_t>(row) >= bodies(*pattern)) return errorNoSuchObject;
    cursor.Get().partNo = row;
    return 0;
}

static int countObjects(const DsCsr& cursor, long* count, std::size_t (*countOf)(const Pattern&)) {
    if (callFails()) return errorNoMemory;
    const Pattern* pattern = openDrawing().find(cursor.Get().patNo);
    if (!pattern) return errorNoSuchObject;
    *count = static_cast<long>(countOf(*pattern));
    return 0;
}

int Ci3d::First(DsCsr& cursor) {
    return aim(cursor, 0);
}

int Ci3d::Next(DsCsr& cursor) {
    return aim(cursor, cursor.Get().partNo + 1);
}

int Ci3d::Count(const DsCsr& pattern, long* count) {
    return countObjects(pattern, count, bodies);
}

int Ci3d::CountSolids(const DsCsr& pattern, long* count) {
    return countObjects(pattern, count, solids);
}

int Ci3d::CountClouds(const DsCsr& pattern, long* count) {
    return countObjects(pattern, count, clouds);
}

int Ci3d::DrawCurveByPoints(DsCsr* pattern, const RPT3* points, int count, int* curve, int* parts) {
    if (callFails()) return errorNoMemory;
    Pattern* target = openDrawing().find(pattern->Get().patNo);
    if (!target) return errorNoSuchObject;
    if (count < 2) return errorNotApplicable;
    *curve = static_cast<int>(target->curves.size());
    *parts = count - 1;
    const double factor = contextFactor(contextId_);
    Curve& added = target->curves.emplace_back();
    added.pen = session().pen;
    for (int i = 0; i < count; ++i) added.points.push_back(scaled(points[i], factor));
    ++openDrawing().elementCount;
    return 0;
}

static bool isFinite(const RPT3& p) {
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

static void addNormal(Facets& facets, const RPT3& normal) {
    const auto end = static_cast<std::int32_t>(facets.list.points.size());
    const RPT3* last = facets.normals.empty() ? nullptr : &facets.normals.back();
    if (last && last->x == normal.x && last->y == normal.y && last->z == normal.z) {
        facets.normalEnds.back() = end;
    } else {
        facets.normals.push_back(normal);
        facets.normalEnds.push_back(end);
    }
}

CI_FACETS* Ci3d::CreateFacets(DsCsr* pattern, const RPT3* points, RPT3 /*normal*/, const RPT3* normals,
                              const RPT* /*none*/, const unsigned char* flags, unsigned long count,
                              unsigned short /*kind*/) {
    Pattern* target = targetAt(pattern);
    if (!target || count == 0) return nullptr;
    const double factor = contextFactor(contextId_);
    const int pen = static_cast<int>(pen_);
    Facets facets;
    facets.pen = pen;
    facets.material = static_cast<std::int64_t>(material_.id);
    facets.list.points.reserve(count);
    facets.list.marks.reserve(count);
    for (unsigned long i = 0; i < count; ++i) {
        if (!isFinite(points[i])) return nullptr;
        if (flags[i] == 0 && i > 0) facets.list.endFace(pen);
        facets.list.addPoint(scaled(points[i], factor), flags[i] ? EDGE : 0, pen, session().lineType);
        addNormal(facets, normals[i]);
    }
    facets.list.endFace(pen);
    target->facets.push_back(std::move(facets));
    ++openDrawing().elementCount;
    return reinterpret_cast<CI_FACETS*>(&target->facets.back());
}

int Ci3d::AddPointCloud(DsCsr* pattern, const RPT3* points, const unsigned long* pens, unsigned long count,
                        int /*kind*/) {
    if (callFails()) return errorNoMemory;
    Pattern* target = openDrawing().find(pattern->Get().patNo);
    if (!target) return errorNoSuchObject;
    if (count == 0) return errorNotApplicable;
    const double factor = contextFactor(contextId_);
    PointCloud& cloud = target->pointClouds.emplace_back();
    cloud.points.reserve(count);
    cloud.pens.reserve(count);
    for (unsigned long i = 0; i < count; ++i) {
        cloud.points.push_back(scaled(points[i], factor));
        cloud.pens.push_back(static_cast<std::int32_t>(pens[i]));
    }
    ++openDrawing().elementCount;
    return 0;
}

int Ci3d::GetCloudPoint(const DsCsr& cursor, long cloud, long index, RPT3* point, int* pen) const {
    if (callFails()) return errorNoMemory;
    const Pattern* const pattern = openDrawing().find(cursor.Get().patNo);
    if (!pattern || cloud < 0 || static_cast<std::size_t>(cloud) >= pattern->pointClouds.size())
        return errorNoSuchObject;
    const PointCloud& found = pattern->pointClouds[static_cast<std::size_t>(cloud)];
    const auto i = static_cast<std::size_t>(index);
    if (index < 0 || i >= found.points.size()) return errorNoSuchObject;
    *point = scaled(found.points[i], 1 / contextFactor(contextId_));
    *pen = found.pens[i];
    return 0;
}

int Ci3d::GetClosestPen(const double rgb[3], int& pen) {
    constexpr int lastPen = 1023;
    if (callFails()) return errorNoMemory;
    for (int i = 0; i < 3; ++i)
        if (!(rgb[i] >= 0 && rgb[i] <= 1)) return errorNotApplicable;
    const auto& own = openDrawing().pens;
    double least = HUGE_VAL;
    for (int candidate = 1; candidate <= lastPen; ++candidate) {
        const auto found = own.find(candidate);
        const Rgb color = found != own.end() ? found->second : paletteColor(candidate);
        const double r = color.r / 255.0 - rgb[0], g = color.g / 255.0 - rgb[1], b = color.b / 255.0 - rgb[2];
        const double distance = r * r + g * g + b * b;
        if (distance >= least) continue;
        least = distance;
        pen = candidate;
    }
    return 0;
}
