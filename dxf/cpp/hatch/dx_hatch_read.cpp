// Reader of HATCH. The same codes mean different things in loops, pattern lines and behind the seed points:
// the entity is read in its order.
#include "../import/dx_entity_base.h"
#include "dx_hatch_import.h"

#include <algorithm>

namespace {

constexpr double radiansADegree = 0.017453292519943295;
/// Lists grow with what the file holds; a count that lies reserves no more than this.
constexpr int mostReserved = 4096;

int roomFor(int announced) {
    return std::clamp(announced, 0, mostReserved);
}
/// True while a list holds less than was announced.
template <class T>
bool hasRoom(const std::vector<T>& list, int announced) {
    return announced > 0 && list.size() < static_cast<std::size_t>(announced);
}

// ---- loops ---------------------------------------------------------------------------------------------

/// Takes the pairs of one loop.
class LoopReader {
public:
    explicit LoopReader(DX_HATCH_PATH& path) : path_(path), isPolyline_(path.flags & DX_PATH_POLYLINE) {}

    void take(const DxPair& pair) {
        if (pair.code == 93)
            announce(DxAtoi(pair.text));
        else if (isPolyline_)
            takeVertex(pair);
        else if (pair.code == 72)
            beginEdge(DxAtoi(pair.text));
        else if (pair.code == 97)
            edge_ = nullptr; // source objects, or the fit data of a spline
        else if (edge_)
            takeEdge(pair);
    }

private:
    void announce(int count) {
        path_.edgeCount = count;
        path_.edges.reserve(static_cast<std::size_t>(roomFor(count)));
    }

    /// Vertices fill up independently by group.
    void takeVertex(const DxPair& pair) {
        const double value =
            pair.code == 10 || pair.code == 20 || pair.code == 42 ? DxfReadConvDouble(pair.text) : 0;
        switch (pair.code) {
        case 10: putVertex(xs_, [&](DX_HATCH_EDGE& e) { e.p.x = value; }); break;
        case 20: putVertex(ys_, [&](DX_HATCH_EDGE& e) { e.p.y = value; }); break;
        case 42: putBulge(value); break;
        case 73: path_.closed = DxAtoi(pair.text); break;
        default: break;
        }
    }
    template <class Put>
    void putVertex(std::size_t& filled, Put put) {
        if (filled == path_.edges.size()) {
            if (!hasRoom(path_.edges, path_.edgeCount)) return;
            path_.edges.push_back(DX_HATCH_EDGE{});
        }
        put(path_.edges[filled++]);
    }
    /// Bulges stand behind all vertices of their loop or behind each: the next one goes to the next vertex.
    void putBulge(double value) {
        if (bulges_ < path_.edges.size()) path_.edges[bulges_++].r = value;
    }

    void beginEdge(int type) {
        edge_ = nullptr;
        if (!hasRoom(path_.edges, path_.edgeCount)) return;
        if (type == DX_EDGE_SPLINE) {
            path_.splines.push_back(DX_SPLINE_TYPE{});
            DxInitExtrusion(path_.splines.back().extrusion);
        }
        path_.edges.push_back(DX_HATCH_EDGE{});
        edge_ = &path_.edges.back();
        edge_->type = type;
        edge_->counterClockwise = 1;
        edge_->spline = static_cast<int>(path_.splines.size()) - 1;
    }

    void takeEdge(const DxPair& pair) {
        if (edge_->type == DX_EDGE_SPLINE) {
            takeSpline(path_.splines.back(), pair);
            return;
        }
        const double unit = edge_->type == DX_EDGE_ELLIPSE ? radiansADegree : 1;
        switch (pair.code) {
        case 10: edge_->p.x = DxfReadConvDouble(pair.text); break;
        case 20: edge_->p.y = DxfReadConvDouble(pair.text); break;
        case 11: edge_->q.x = DxfReadConvDouble(pair.text); break;
        case 21: edge_->q.y = DxfReadConvDouble(pair.text); break;
        case 40: edge_->r = DxfReadConvDouble(pair.text); break;
        case 50: edge_->from = DxfReadConvDouble(pair.text) * unit; break;
        case 51: edge_->to = DxfReadConvDouble(pair.text) * unit; break;
        case 73: edge_->counterClockwise = DxAtoi(pair.text); break;
        default: break;
        }
    }

    static void beginSpline(DX_SPLINE_TYPE& spline, int degree) {
        spline.degree = degree;
        spline.knotTolerance = spline.controlTolerance = 1e-7;
        spline.fitTolerance = 1e-10;
        spline.startTangent = spline.endTangent = {1, 0, 0};
    }
    static void takeSpline(DX_SPLINE_TYPE& spline, const DxPair& pair) {
        constexpr int periodic = 2, rational = 4;
        switch (pair.code) {
        case 94: beginSpline(spline, DxAtoi(pair.text)); break;
        case 73: spline.flags |= DxAtoi(pair.text) ? rational : 0; break;
        case 74: spline.flags |= DxAtoi(pair.text) ? periodic : 0; break;
        case 95: spline.knotCount = DxAtoi(pair.text); break;
        case 96: spline.controlCount = DxAtoi(pair.text); break;
        case 40:
            if (hasRoom(spline.knots, spline.knotCount)) spline.knots.push_back(DxfReadConvDouble(pair.text));
            break;
        case 10:
            // One beyond the announced count takes what belongs to the dropped points.
            if (spline.controlPoints.size() <= static_cast<std::size_t>(std::max(spline.controlCount, 0)))
                spline.controlPoints.push_back({{DxfReadConvDouble(pair.text), 0, 0}, 1.0});
            break;
        case 20:
            if (!spline.controlPoints.empty())
                spline.controlPoints.back().point.y = DxfReadConvDouble(pair.text);
            break;
        case 42:
            if (!spline.controlPoints.empty())
                spline.controlPoints.back().weight = DxfReadConvDouble(pair.text);
            break;
        default: break;
        }
    }

    DX_HATCH_PATH& path_;
    bool isPolyline_;
    DX_HATCH_EDGE* edge_ = nullptr; ///< the open one
    std::size_t xs_ = 0, ys_ = 0, bulges_ = 0;
};

/// What was read settles the counts.
void finishLoop(DX_HATCH_PATH& path) {
    path.edgeCount = static_cast<int>(path.edges.size());
    for (DX_SPLINE_TYPE& spline : path.splines) {
        const auto announced = static_cast<std::size_t>(std::max(spline.controlCount, 0));
        if (spline.controlPoints.size() > announced) spline.controlPoints.resize(announced);
        spline.knotCount = static_cast<int>(spline.knots.size());
        spline.controlCount = static_cast<int>(spline.controlPoints.size());
        spline.fitCount = 0;
    }
}

// ---- the entity ----------------------------------------------------------------------------------------

using R = DX_HATCH_TYPE;
constexpr auto fields = dxFields<R>({
    {2, &R::patternName},
    {41, &R::patternScale},
    {52, &R::patternAngle},
    {70, &R::solid},
    {71, &R::associative},
    {75, &R::style},
    {76, &R::patternType},
    {77, &R::doubleFlag},
    {210, &R::extrusion},
    {450, &R::gradientFlag},
    {453, &R::colorCount},
    {460, &R::gradientAngle},
    {461, &R::gradientShift},
    {470, &R::gradientName, DX_UPPER},
});

/// Groups whose meaning depends on where they stand.
class HatchLists {
public:
    explicit HatchLists(DX_HATCH_TYPE& rec) : rec_(rec) {}
    int error = 0; ///< of a loop

    bool operator()(const DxPair& pair) {
        switch (pair.code) {
        case 10: putElevation(&RPT3::x, pair); return true;
        case 20: putElevation(&RPT3::y, pair); return true;
        case 30: putElevation(&RPT3::z, pair); return true;
        case 91: rec_.loopCount = DxAtoi(pair.text); return true;
        case 92: readLoop(DxAtoi(pair.text)); return true;
        case 78: rec_.defCount = DxAtoi(pair.text); return true;
        case 98: seeds_ = true; return true;
        case 463: colour_ = DxAtoi(pair.text); return true;
        case 63:
            if (isColour()) rec_.colors[colour_] = DxAtoi(pair.text);
            return true;
        case 421:
            if (isColour()) rec_.trueColors[colour_] = DxAtoi(pair.text);
            return true;
        default: return takeDef(pair);
        }
    }

private:
    bool isColour() const { return colour_ == 0 || colour_ == 1; }
    void putElevation(double RPT3::*part, const DxPair& pair) {
        if (!seeds_) rec_.elevation.*part = DxfReadConvDouble(pair.text);
    }
    void readLoop(int flags) {
        DX_HATCH_PATH path{};
        path.flags = flags;
        if (const int failed = DxReadHatchPath(&path)) {
            if (!error) error = failed;
            return;
        }
        if (hasRoom(rec_.loops, rec_.loopCount)) rec_.loops.push_back(std::move(path));
    }
    bool takeDef(const DxPair& pair) {
        if (pair.code == 53) {
            isOpen_ = hasRoom(rec_.defs, rec_.defCount);
            if (isOpen_) rec_.defs.push_back(DX_HATCH_DEF{DxfReadConvDouble(pair.text), {}, {}, 0, {}});
            return true;
        }
        if (pair.code != 79 && pair.code != 49 && (pair.code < 43 || pair.code > 46)) return false;
        if (isOpen_) putDef(rec_.defs.back(), pair);
        return true;
    }
    static void putDef(DX_HATCH_DEF& def, const DxPair& pair) {
        switch (pair.code) {
        case 43: def.base.x = DxfReadConvDouble(pair.text); break;
        case 44: def.base.y = DxfReadConvDouble(pair.text); break;
        case 45: def.offset.x = DxfReadConvDouble(pair.text); break;
        case 46: def.offset.y = DxfReadConvDouble(pair.text); break;
        case 79:
            def.dashCount = DxAtoi(pair.text);
            def.dashes.clear();
            break;
        default:
            if (hasRoom(def.dashes, def.dashCount)) def.dashes.push_back(DxfReadConvDouble(pair.text));
        }
    }

    DX_HATCH_TYPE& rec_;
    bool seeds_ = false, isOpen_ = false;
    int colour_ = 0;
};

} // namespace

int DxReadHatchPath(DX_HATCH_PATH* path) {
    LoopReader reader(*path);
    const bool showPercent = DxShowsPercent();
    DxPair pair;
    for (;;) {
        if (const int error = DxReadPair(pair, 161, showPercent)) return error;
        // Group 0 ends a loop too: a file may end the entity within one.
        if (pair.code == 92 || pair.code == 75 || pair.code == 0) {
            DxUnGetLine();
            finishLoop(*path);
            return 0;
        }
        reader.take(pair);
    }
}

int DxReadHatch(DX_HATCH_TYPE* rec) {
    *rec = DX_HATCH_TYPE{};
    DxInitEntityBase(&rec->base);
    DxInitExtrusion(rec->extrusion);
    rec->trueColors[0] = rec->trueColors[1] = -1;
    rec->patternScale = 1;
    HatchLists lists(*rec);
    int error = DxReadEntity(*rec, fields, lists);
    if (!error) error = lists.error;
    if (error) return error;
    rec->loopCount = static_cast<int>(rec->loops.size());
    rec->defCount = static_cast<int>(rec->defs.size());
    for (DX_HATCH_DEF& def : rec->defs) def.dashCount = static_cast<int>(def.dashes.size());
    return 0;
}
