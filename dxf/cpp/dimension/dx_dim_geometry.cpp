// The geometry and the texts of a dimension's block.
#include "../config/dx_pens.h"
#include "../hatch/dx_hatch_import.h"
#include "../import/dx_blocks.h"
#include "../import/dx_insert_import.h"
#include "../import/dx_insert_level.h"
#include "../import/dx_linework_import.h"
#include "../import/dx_polyline_import.h"
#include "../import/dx_transform.h"
#include "../import/import_state.h"
#include "../session/dx_reader.h"
#include "../text/dx_mtext.h"
#include "../text/dx_text_import.h"
#include "dx_dim_import.h"
#include "mt.h"

#include <cmath>
#include <utility>

namespace {

constexpr double toRadians = 0.017453292519943295;
enum DrawingCode { DRAW = 1, MOVE = 2, ARC = 4 };
constexpr double smallestBulge = 1e-9;
enum PointKind { PLAIN = 0, CLOSED = 4, GEOMETRY_ONLY = -1 };

class BlockReader {
public:
    BlockReader(DX_DIM_GEO& geo, const Mat44 m) : geo_(geo) { Mt44Copy(m, m_); }

    int read(std::string_view end) {
        DxPair pair;
        for (;;) {
            if (const int error = DxReadPair(pair)) return error;
            if (pair.code != 0) continue;
            const bool isEnd = pair.text == end || pair.text == "ENDSEC" || pair.text == "BLOCK";
            if (isEnd || pair.text == "EOF") return 0;
            if (++geo_.entities > DX_DIM_MOST_ENTITIES || geo_.pts.size() > DX_DIM_MOST_POINTS)
                return DX_DIM_TOO_LARGE;
            if (const int error = take(pair.text)) return error;
        }
    }

private:
    int take(std::string_view name) {
        if (name == "LINE") return line();
        if (name == "CIRCLE") return circle();
        if (name == "ARC") return arc();
        if (name == "SOLID") return solid();
        if (name == "LWPOLYLINE") return polyline();
        if (name == "HATCH") return hatch();
        if (name == "POLYLINE" && geo_.seen) return oldPolyline();
        if (name == "TEXT" || name == "MTEXT") return text(name == "MTEXT" ? 1 : 0);
        return name == "INSERT" ? insert() : 0;
    }

    /// False for what isn't to be drawn.
    bool setLook(const DX_ENTITY_BASE_TYPE& base) {
        return DxPenLtToCAD(&base, &look_.pen, &look_.lineType) != 0;
    }

    void add(const RPT3& p, int kind, int code) { add(p, kind, code, m_); }
    void add(const RPT3& p, int kind, int code, const Mat44 m) {
        RPT3 at = p;
        DxTrans3DRpt(&at, m);
        if (!DxIsFinite(at)) at = {0, 0, 0}; // keeps the figure's points together
        push(geo_, at, kind, code);
        if (geo_.seen && !isOutline_) push(*geo_.seen, at, kind, code);
    }
    void push(DX_DIM_GEO& geo, const RPT3& at, int kind, int code) const {
        geo.pts.push_back({at.x, at.y, kind});
        geo.rawKinds.push_back(code);
        geo.looks.push_back(look_);
    }

    int line() {
        DX_LINE_TYPE record;
        if (const int error = DxReadLine(&record)) return error;
        if (!setLook(record.base)) return 0;
        add(record.start, PLAIN, MOVE);
        add(record.end, PLAIN, DRAW);
        return 0;
    }

    /// The circle's point on its right stands for start and end.
    int circle() {
        DX_CIRCLE_TYPE record;
        if (const int error = DxReadCircle(&record)) return error;
        if (!setLook(record.base)) return 0;
        const RPT3 onCircle{record.centre.x + record.radius, record.centre.y, record.centre.z};
        add(onCircle, CLOSED, MOVE);
        add(onCircle, GEOMETRY_ONLY, ARC);
        add(record.centre, GEOMETRY_ONLY, ARC);
        return 0;
    }

    int arc() {
        DX_ARC_TYPE record;
        if (const int error = DxReadArc(&record)) return error;
        if (setLook(record.base))
            addArc(record.centre, record.radius, record.startAngle, record.endAngle, m_);
        return 0;
    }
    /// Counter-clockwise between two angles in degrees.
    void addArc(const RPT3& centre, double radius, double from, double to, const Mat44 m) {
        const auto at = [&](double degrees) {
            return RPT3{centre.x + radius * std::cos(degrees * toRadians),
                        centre.y + radius * std::sin(degrees * toRadians), centre.z};
        };
        RPT3 start = at(from), end = at(to);
        if (DxMirrors(m)) std::swap(start, end);
        const bool isClosed = DxDimSamePoint({start.x, start.y}, {end.x, end.y});
        add(start, isClosed ? CLOSED : PLAIN, MOVE, m);
        add(end, PLAIN, ARC, m);
        add(centre, GEOMETRY_ONLY, ARC, m);
    }

    int solid() {
        DX_SOLID_TYPE record;
        if (const int error = DxReadSolid(&record)) return error;
        if (!setLook(record.base)) return 0;
        const RPT3* c = record.corners;
        const bool isTriangle = DxDimSamePoint({c[2].x, c[2].y}, {c[3].x, c[3].y});
        add(c[0], PLAIN, MOVE);
        for (int i = 1; i < (isTriangle ? 3 : 4); ++i) add(c[i], PLAIN, DRAW);
        add(c[0], GEOMETRY_ONLY, DRAW);
        return 0;
    }

    int polyline() {
        DX_POLYLINE_TYPE record;
        if (const int error = DxReadLwPolyline(&record)) return error;
        if (!setLook(record.base) || record.vertices.empty()) return 0;
        if (geo_.pts.size() + record.vertices.size() > DX_DIM_MOST_POINTS) return DX_DIM_TOO_LARGE;
        int code = MOVE;
        isOutline_ = true;
        for (const DX_VERTEX_TYPE& vertex : record.vertices)
            add(vertex.location, PLAIN, std::exchange(code, DRAW));
        if (record.closed) add(record.vertices[0].location, PLAIN, DRAW);
        isOutline_ = false;
        if (geo_.seen) see(record);
        return 0;
    }

    int oldPolyline() {
        DX_POLYLINE_TYPE record;
        if (const int error = DxReadPolyline(&record)) return error;
        constexpr int meshes = 16 | 64;
        if ((record.flags & meshes) || !setLook(record.base)) return 0;
        if (geo_.seen->pts.size() + 3 * record.vertices.size() > DX_DIM_MOST_POINTS) return DX_DIM_TOO_LARGE;
        constexpr int frame = 16;
        std::erase_if(record.vertices, [](const DX_VERTEX_TYPE& v) { return (v.flags & frame) != 0; });
        see(record);
        return 0;
    }

    /// A polyline with its bulges.
    void see(const DX_POLYLINE_TYPE& record) {
        const std::vector<DX_VERTEX_TYPE>& v = record.vertices;
        for (std::size_t i = 0; i + (record.closed ? 0 : 1) < v.size(); ++i)
            seePiece(v[i].location, v[(i + 1) % v.size()].location, v[i].bulge, i == 0);
    }
    void seePiece(const RPT3& from, const RPT3& to, double bulge, bool isFirst) {
        DX_DIM_GEO& seen = *geo_.seen;
        const auto at = [&](RPT3 p) {
            DxTrans3DRpt(&p, m_);
            return DxIsFinite(p) ? p : RPT3{0, 0, 0};
        };
        if (std::fabs(bulge) < smallestBulge) {
            if (isFirst) push(seen, at(from), PLAIN, MOVE);
            push(seen, at(to), PLAIN, DRAW);
            return;
        }
        const double side = (1 / bulge - bulge) / 4; // from the chord's middle to the centre, in its lengths
        const RPT3 centre{(from.x + to.x) / 2 - side * (to.y - from.y),
                          (from.y + to.y) / 2 + side * (to.x - from.x), from.z};
        const bool turnsLeft = (bulge > 0) != DxMirrors(m_);
        push(seen, at(turnsLeft ? from : to), PLAIN, MOVE);
        push(seen, at(turnsLeft ? to : from), PLAIN, ARC);
        push(seen, at(centre), GEOMETRY_ONLY, ARC);
        push(seen, at(to), PLAIN, MOVE); // a line may go on from here
    }

    /// Its contours: arrow heads are filled areas in some files.
    int hatch() {
        DX_HATCH_TYPE record;
        if (const int error = DxReadHatch(&record)) return error;
        if (!setLook(record.base)) return 0;
        Mat44 storage;
        const double(*object)[4] = DxObjectMatrix(record.extrusion, m_, storage);
        for (const DX_HATCH_PATH& loop : record.loops) {
            if (loop.flags >= DX_PATH_UNUSED) continue;
            if (geo_.pts.size() + 3 * loop.edges.size() > DX_DIM_MOST_POINTS) return DX_DIM_TOO_LARGE;
            if (loop.flags & DX_PATH_POLYLINE)
                vertexLoop(record, loop, object);
            else
                for (const DX_HATCH_EDGE& edge : DxMendHatchEdges(loop)) hatchEdge(record, edge, object);
        }
        return 0;
    }
    void vertexLoop(const DX_HATCH_TYPE& record, const DX_HATCH_PATH& loop, const Mat44 m) {
        int code = MOVE;
        for (const DX_HATCH_EDGE& edge : loop.edges)
            add(DxHatchVertex(record, edge).location, PLAIN, std::exchange(code, DRAW), m);
        if (loop.closed && !loop.edges.empty())
            add(DxHatchVertex(record, loop.edges[0]).location, PLAIN, DRAW, m);
    }
    /// Ellipses and splines are no part of dimensions.
    void hatchEdge(const DX_HATCH_TYPE& record, const DX_HATCH_EDGE& edge, const Mat44 m) {
        if (edge.type == DX_EDGE_LINE) {
            const DX_LINE_TYPE line = DxHatchLine(record, edge);
            add(line.start, PLAIN, MOVE, m);
            add(line.end, PLAIN, DRAW, m);
        } else if (edge.type == DX_EDGE_ARC) {
            const DX_ARC_TYPE arc = DxHatchArc(record, edge);
            const bool turnsLeft = arc.counterClockwise != 0; // else the angles are counted clockwise
            addArc(arc.centre, arc.radius, turnsLeft ? arc.startAngle : -arc.endAngle,
                   turnsLeft ? arc.endAngle : -arc.startAngle, m);
        }
    }

    int text(int isMtext) {
        DX_TEXT_TYPE record;
        if (const int error = DxfReadTextOrMtext(isMtext, &record)) return error;
        std::vector<DX_TEXT_TYPE> pieces;
        if (isMtext)
            DxMtextToTexts(&record, &pieces, DxMirrors(m_));
        else if (!record.text.empty())
            pieces.push_back(std::move(record));
        if (geo_.texts.texts.size() + pieces.size() > DX_DIM_MOST_POINTS) return DX_DIM_TOO_LARGE;
        for (DX_TEXT_TYPE& piece : pieces) addText(std::move(piece));
        return 0;
    }

    /// Texts of an INSERT's block come to the dimension's block.
    void addText(DX_TEXT_TYPE&& piece) {
        DxTrans3DRpt(&piece.point, m_);
        DxTrans3DRpt(&piece.second, m_);
        const double size = std::hypot(m_[0][0], m_[0][1]);
        if (size > 0 && size != 1) piece.height *= size;
        if (m_[0][1] != 0 || m_[0][0] < 0) piece.rotation += std::atan2(m_[0][1], m_[0][0]) / toRadians;
        geo_.texts.texts.push_back(std::move(piece));
    }

    int insert() {
        DX_INSERT_TYPE record;
        if (const int error = DxReadInsert(&record)) return error;
        if (DxBlockLevel >= DX_DEEPEST_BLOCK || !DxCheckRecursion(record.blockName)) return 0;
        if (!setLook(record.base)) return 0;
        Mat44 matrix;
        Mt44Copy(m_, matrix);
        if (DxReadInsertMatrix(&record, matrix)) return 0; // no such block
        DX_SAVE save;
        DxSaveActPos(&save);
        DxfEntityFileReference reference;
        DxGetBlock(record.blockName.view(), reference);
        int error = 0;
        if (reference.block) {
            const DxInsertScope scope(levelOf(record, *reference.block));
            error = scope.error();
            if (!error) error = BlockReader(geo_, matrix).read("ENDBLK");
        }
        const int restored = DxRestoreActPos(&save);
        if (reference.place) reference.place->Disarm();
        return error ? error : restored;
    }

    /// Colour and line type by block are those of the INSERT.
    static DX_INSERT_LEVEL levelOf(const DX_INSERT_TYPE& record, const DX_BLOCK_TYPE& block) {
        DX_INSERT_LEVEL level = DxActLevel;
        ++level.depth;
        level.block = &block;
        if (!record.base.lineType.empty()) level.lineType = record.base.lineType;
        if (record.base.color >= 1 && record.base.color <= 255) level.color = record.base.color;
        return level;
    }

    DX_DIM_GEO& geo_;
    Mat44 m_;
    DX_DIM_LOOK look_;
    bool isOutline_ = false; ///< points of an outline that is seen with its bulges
};

} // namespace

int DxReadDimGeo(std::string_view end, DX_DIM_GEO& geo, const Mat44 m) {
    return BlockReader(geo, m).read(end);
}
