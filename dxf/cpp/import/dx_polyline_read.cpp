// Readers of POLYLINE, VERTEX and LWPOLYLINE.
#include "../config/config_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_protocol.h"
#include "dx_account.h"
#include "dx_entity_base.h"
#include "dx_polyline_import.h"

#include <algorithm>
#include <climits>

namespace {

constexpr double smallestWidth = 0.0001;

using P = DX_POLYLINE_TYPE;
constexpr auto polylineFields = dxFields<P>({
    {30, &P::elevation},
    {39, &P::thickness},
    {40, &P::startWidth},
    {41, &P::endWidth},
    {70, &P::flags},
    {71, &P::meshCountM},
    {72, &P::meshCountN},
    {73, &P::smoothCountM},
    {74, &P::smoothCountN},
    {75, &P::curveType},
    {210, &P::extrusion},
});

constexpr auto lwFields = dxFields<P>({
    {38, &P::elevation},
    {39, &P::thickness},
    {43, &P::startWidth},
    {70, &P::flags},
    {90, &P::vertexCount},
    {210, &P::extrusion},
});

/// A VERTEX while it is read: its own groups on top of a copy of the polyline's.
struct VertexRecord {
    DX_ENTITY_BASE_TYPE base;
    RPT3 location;
    double startWidth, endWidth, bulge, thickness;
    int flags, face1, face2, face3, face4;
};
using V = VertexRecord;
constexpr auto vertexFields = dxFields<V>({
    {10, &V::location},
    {39, &V::thickness},
    {40, &V::startWidth},
    {41, &V::endWidth},
    {42, &V::bulge},
    {70, &V::flags},
    {71, &V::face1},
    {72, &V::face2},
    {73, &V::face3},
    {74, &V::face4},
});

void initPolyline(DX_POLYLINE_TYPE& rec) {
    auto vertices = std::move(rec.vertices); // their memory serves the next polyline
    vertices.clear();
    rec = DX_POLYLINE_TYPE{};
    rec.vertices = std::move(vertices);
    DxInitEntityBase(&rec.base);
    DxInitExtrusion(rec.extrusion);
}

/// Sees the first application name of the extended data.
struct CloudHook {
    DX_POLYLINE_TYPE& rec;
    bool seen = false;
    bool operator()(const DxPair& pair) {
        if (pair.code != 1001 || seen) return false;
        seen = true;
        rec.revisionCloud = pair.text == "RevcloudProps";
        return true;
    }
};

void settleFlags(DX_POLYLINE_TYPE& rec) {
    rec.closed = rec.flags & 1 ? 1 : 0;
    rec.closedInN = rec.flags & 32 ? 1 : 0;
    rec.hasWidth = rec.startWidth > smallestWidth || rec.endWidth > smallestWidth;
    if ((DxFillMode == 0 && DxFillContour == 0) || DxNoPolyWidth) rec.hasWidth = 0;
}

bool looksAlike(const DX_ENTITY_BASE_TYPE& a, const DX_ENTITY_BASE_TYPE& b) {
    return a.color == b.color && a.paperSpace == b.paperSpace && a.invisible == b.invisible &&
           a.layer.view() == b.layer.view() && a.lineType.view() == b.lineType.view();
}

/// Index of the style in the polyline's list, -1 for the polyline's own.
int styleOf(DX_POLYLINE_TYPE& owner, const DX_ENTITY_BASE_TYPE& base) {
    if (looksAlike(base, owner.base)) return -1;
    if (owner.styles.empty() || !looksAlike(owner.styles.back(), base)) owner.styles.push_back(base);
    return static_cast<int>(owner.styles.size()) - 1;
}

/// Groups of LWPOLYLINE that belong to its vertices. Each group 10 begins one.
class LwVertices {
public:
    explicit LwVertices(DX_POLYLINE_TYPE& rec) : rec_(rec), cloud_{rec} {}

    bool operator()(const DxPair& pair) {
        if (pair.code == 10) return begin(pair.text);
        switch (pair.code) {
        case 20: return put(&DX_VERTEX_TYPE::location, &RPT3::y, pair.text);
        case 30: return put(&DX_VERTEX_TYPE::location, &RPT3::z, pair.text);
        case 40: return put(&DX_VERTEX_TYPE::startWidth, pair.text);
        case 41: return put(&DX_VERTEX_TYPE::endWidth, pair.text);
        case 42: return put(&DX_VERTEX_TYPE::bulge, pair.text);
        default: return cloud_(pair);
        }
    }

    /// Tells a difference between what is announced and what is there.
    void report() const {
        if (rec_.vertexCount == INT_MIN || met_ == static_cast<std::size_t>(std::max(rec_.vertexCount, 0)))
            return;
        DxProtoMsg(UtFormat("An LWPOLYLINE announces %d vertices and has %zu, %zu are taken.",
                            rec_.vertexCount, met_, rec_.vertices.size()),
                   1);
    }

private:
    /// Vertices beyond the announced number are stored by ALL_VERTICES only; without a number all are.
    bool begin(std::string_view text) {
        const int announced = rec_.vertexCount;
        ++met_;
        full_ = announced != INT_MIN && !DxAllVertices &&
                static_cast<int>(rec_.vertices.size()) >= std::max(announced, 0);
        if (full_ || rec_.vertices.size() >= INT_MAX) return true;
        if (rec_.vertices.empty()) makeRoom(announced);
        DX_VERTEX_TYPE& vertex = rec_.vertices.emplace_back();
        vertex.style = -1;
        vertex.location.x = DxfReadConvDouble(text);
        return true;
    }
    /// Room for what is announced, as far as the file can hold it.
    void makeRoom(int announced) {
        constexpr std::size_t bytesAVertex = 16, most = std::size_t(1) << 22;
        const DxfDocument* const document = DxDocuments.current_;
        if (announced <= 0 || !document) return;
        const std::size_t left = (document->view.size - document->position) / bytesAVertex;
        rec_.vertices.reserve(std::min({static_cast<std::size_t>(announced), left, most}));
    }
    bool put(RPT3 DX_VERTEX_TYPE::*point, double RPT3::*part, std::string_view text) {
        if (!full_ && !rec_.vertices.empty()) rec_.vertices.back().*point.*part = DxfReadConvDouble(text);
        return true;
    }
    bool put(double DX_VERTEX_TYPE::*value, std::string_view text) {
        if (!full_ && !rec_.vertices.empty()) rec_.vertices.back().*value = DxfReadConvDouble(text);
        return true;
    }

    DX_POLYLINE_TYPE& rec_;
    CloudHook cloud_;
    std::size_t met_ = 0; ///< in the file
    bool full_ = false;
};

/// Room for the points of a polygon mesh, as far as the file can hold them.
void makeRoomForMesh(DX_POLYLINE_TYPE& rec) {
    constexpr int polygonMesh = 16;
    constexpr std::size_t bytesAVertex = 30;
    const DxfDocument* const document = DxDocuments.current_;
    if (!(rec.flags & polygonMesh) || rec.meshCountM <= 0 || rec.meshCountN <= 0 || !document) return;
    const std::size_t left = (document->view.size - document->position) / bytesAVertex;
    const auto rows = static_cast<std::size_t>(rec.meshCountM),
               columns = static_cast<std::size_t>(rec.meshCountN);
    rec.vertices.reserve(rows > left / columns ? left : rows * columns);
}

/// Reads on to the next group 0 and says which entity it begins.
int nextEntity(bool& isVertex) {
    DxPair pair;
    do {
        if (const int error = DxReadPair(pair, 161, DxShowsPercent())) return error;
    } while (pair.code != 0);
    isVertex = pair.text == "VERTEX";
    if (isVertex || pair.text == "SEQEND") DxCountPart(pair.text);
    return 0;
}

} // namespace

int DxReadVertex(DX_POLYLINE_TYPE* owner, DX_VERTEX_TYPE* vertex) {
    VertexRecord rec{};
    DxCopyEntityBase(&rec.base, &owner->base);
    rec.thickness = owner->thickness;
    DxElevation raised;
    if (const int error = DxReadEntity(rec, vertexFields, raised)) return error;
    vertex->location = rec.location;
    if (rec.flags < 32) vertex->location.z = owner->elevation;
    vertex->location.z += raised.value;
    vertex->startWidth = rec.startWidth;
    vertex->endWidth = rec.endWidth;
    vertex->bulge = rec.bulge;
    vertex->thickness = rec.thickness;
    vertex->flags = rec.flags;
    vertex->face1 = rec.face1;
    vertex->face2 = rec.face2;
    vertex->face3 = rec.face3;
    vertex->face4 = rec.face4;
    vertex->style = styleOf(*owner, rec.base);
    return 0;
}

int DxReadPolyline(DX_POLYLINE_TYPE* rec) {
    initPolyline(*rec);
    CloudHook cloud{*rec};
    if (const int error = DxReadEntity(*rec, polylineFields, cloud)) return error;
    settleFlags(*rec);
    makeRoomForMesh(*rec);
    for (;;) {
        bool isVertex = false;
        if (const int error = nextEntity(isVertex)) return error;
        if (!isVertex) break;
        DX_VERTEX_TYPE vertex;
        if (const int error = DxReadVertex(rec, &vertex)) return error;
        if (DxIsStoppedAt(rec->vertices.size())) return 9009;
        rec->vertices.push_back(vertex);
    }
    rec->vertexCount = static_cast<int>(std::min<std::size_t>(rec->vertices.size(), INT_MAX));
    return 0;
}

int DxReadLwPolyline(DX_POLYLINE_TYPE* rec) {
    initPolyline(*rec);
    rec->vertexCount = INT_MIN; // no group 90 so far
    LwVertices vertices(*rec);
    if (const int error = DxReadEntity(*rec, lwFields, vertices)) return error;
    vertices.report();
    rec->endWidth = rec->startWidth;
    settleFlags(*rec);
    rec->vertexCount = static_cast<int>(rec->vertices.size());
    for (DX_VERTEX_TYPE& vertex : rec->vertices) {
        if (vertex.startWidth > smallestWidth || vertex.endWidth > smallestWidth) rec->variableWidth = 1;
        vertex.thickness = rec->thickness;
        vertex.location.z += rec->elevation;
    }
    return 0;
}
