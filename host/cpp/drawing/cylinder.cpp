// The wall of an upright cylinder as a face list.
//
//   4 ---- 3      a facet runs 1, 2, 3, 4, 1; its upright edges are those of the round surface and not shown,
//   |      |      but for the two ends of a wall that doesn't close
//   1 ---- 2
#include "ov_3d.h"

#include "drawing/host_state.h"
#include "services/failure.h"
#include "services/session.h"
#include "ut.h"

#include <cmath>
#include <numbers>

using namespace host;

namespace {

/// An array that grows through the host's memory service, for a caller that frees it by that.
template <class T>
class GivenArray {
public:
    explicit GivenArray(T** target) : target_(target) { *target_ = nullptr; }
    int reserve(std::size_t count) {
        void* block = nullptr;
        if (const int error = UtAllocMemoryBlock(&block, count, sizeof(T), 1, 0)) return error;
        *target_ = static_cast<T*>(block);
        return 0;
    }
    void free() {
        void* block = *target_;
        if (block) UtFreeMemory(&block);
        *target_ = nullptr;
    }
    void add(T value) { (*target_)[count_++] = value; }
    std::size_t size() const { return count_; }

private:
    T** target_;
    std::size_t count_ = 0;
};

struct Wall {
    GivenArray<double> x, y, z;
    GivenArray<int> pens, lineTypes, invisible, ops, ends;

    int reserve(std::size_t points, std::size_t faces) {
        for (GivenArray<double>* array : {&x, &y, &z})
            if (const int error = array->reserve(points)) return error;
        for (GivenArray<int>* array : {&pens, &lineTypes, &invisible, &ops})
            if (const int error = array->reserve(points)) return error;
        return ends.reserve(faces);
    }
    void free() {
        for (GivenArray<double>* array : {&x, &y, &z}) array->free();
        for (GivenArray<int>* array : {&pens, &lineTypes, &invisible, &ops, &ends}) array->free();
    }
    void point(const RPT& at, double height, int op, int hidden) {
        x.add(at.x), y.add(at.y), z.add(height);
        pens.add(session().pen), lineTypes.add(session().lineType);
        invisible.add(hidden), ops.add(op);
    }
    void facet(const RPT& from, const RPT& to, double height, bool isFirst, bool isLast) {
        point(from, 0, 0, 0);
        point(to, 0, 1, 0);
        point(to, height, 1, isLast ? 0 : 1);
        point(from, height, 1, 0);
        point(from, 0, 1, isFirst ? 0 : 1);
        ends.add(static_cast<int>(x.size()));
    }
    void edge(const RPT& from, const RPT& to) {
        point(from, 0, 0, 0);
        point(to, 0, 1, 0);
        point(from, 0, 0, 0);
        ends.add(static_cast<int>(x.size()));
    }
};

} // namespace

int Uo3dAufloesung(int code, int* resolution) {
    if (callFails()) return errorNoMemory;
    if (code != 20) return errorNotApplicable;
    *resolution = 36;
    return 0;
}

int UoGen3DZylinder(int resolution, double height, double radius, double span, int /*flags*/, double** x,
                    double** y, double** z, double** none1, double** none2, double** none3, int** pens,
                    int** lineTypes, int** invisible, int** ops, int** faceEnds, int* faceCount, int* total) {
    Wall wall{GivenArray(x),         GivenArray(y),         GivenArray(z),   GivenArray(pens),
              GivenArray(lineTypes), GivenArray(invisible), GivenArray(ops), GivenArray(faceEnds)};
    *none1 = *none2 = *none3 = nullptr;
    *faceCount = *total = 0;
    if (callFails()) return errorNoMemory;
    constexpr double fullTurn = 2 * std::numbers::pi;
    if (resolution < 3 || !std::isfinite(radius) || !std::isfinite(height) || !(std::fabs(span) <= fullTurn))
        return errorNotApplicable;
    const bool closes = span == 0;
    const double turn = closes ? fullTurn : span;
    const int count =
        std::max(1, static_cast<int>(std::ceil(std::fabs(turn) / fullTurn * resolution - 1e-9)));
    const auto at = [&](int i) {
        if (closes && i == count) i = 0;
        const double angle = turn * i / count;
        return RPT{radius * std::cos(angle), radius * std::sin(angle)};
    };
    const auto faces = static_cast<std::size_t>(count);
    if (const int error = wall.reserve(5 * faces, faces)) {
        wall.free();
        return error;
    }
    for (int i = 0; i < count; ++i) {
        if (height == 0)
            wall.edge(at(i), at(i + 1));
        else
            wall.facet(at(i), at(i + 1), height, !closes && i == 0, !closes && i == count - 1);
    }
    *faceCount = count;
    *total = static_cast<int>(wall.x.size());
    return 0;
}
