#include "dx_kept_markers.h"

#include "../session/dx_numbers.h"

#include <algorithm>
#include <iterator>

namespace {

struct Row {
    std::string_view kind;
    DX_KEPT_MARKERS markers;
};

constexpr Row ROWS[] = {
    {"3DFACE", {"AcDbFace"}},
    {"ARC", {"AcDbCircle", "AcDbArc", {50, 51}}},
    {"ATTDEF", {"AcDbText", "AcDbAttributeDefinition", {3, 2, 70, 73, 74}}},
    {"ATTRIB", {"AcDbText", "AcDbAttribute", {2, 70, 73, 74}}},
    {"CIRCLE", {"AcDbCircle"}},
    {"INSERT", {"AcDbBlockReference"}},
    {"LINE", {"AcDbLine"}},
    {"POINT", {"AcDbPoint"}},
    {"SEQEND", {""}},
    {"SOLID", {"AcDbTrace"}},
    {"TEXT", {"AcDbText", "AcDbText", {73}}},
    {"TRACE", {"AcDbTrace"}},
};

enum PolylineFlag { IN_SPACE = 8, MESH = 16, POLYFACE = 64 };
enum VertexFlag { OF_MESH = 64, OF_POLYFACE = 128 };

int flagsOf(const DX_KEPT_ENTITY& entity) {
    return DxAtoi(entity.value(70));
}

DX_KEPT_MARKERS polylineMarkers(int flags) {
    if (flags & POLYFACE) return {"AcDbPolyFaceMesh"};
    if (flags & MESH) return {"AcDbPolygonMesh"};
    return {flags & IN_SPACE ? "AcDb3dPolyline" : "AcDb2dPolyline"};
}

/// All groups of a vertex stand behind its second marker, but for those of a face, which has one marker
/// alone.
DX_KEPT_MARKERS vertexMarkers(int flags, int ofPolyline) {
    constexpr int isFace = OF_POLYFACE;
    if ((flags & (OF_MESH | OF_POLYFACE)) == isFace && (ofPolyline & POLYFACE)) return {"AcDbFaceRecord"};
    const char* kind = ofPolyline & POLYFACE   ? "AcDbPolyFaceMeshVertex"
                       : ofPolyline & MESH     ? "AcDbPolygonMeshVertex"
                       : ofPolyline & IN_SPACE ? "AcDb3dPolylineVertex"
                                               : "AcDb2dVertex";
    return {"AcDbVertex", kind, {-1}};
}

} // namespace

bool DX_KEPT_MARKERS::isSecond(int code) const {
    if (secondCodes[0] == -1) return true;
    return code != 0 &&
           std::find(std::begin(secondCodes), std::end(secondCodes), code) != std::end(secondCodes);
}

DX_KEPT_MARKERS DxMarkersOf(const DX_KEPT_ENTITY& entity, const DX_KEPT_ENTITY* owner) {
    if (entity.kind == "POLYLINE") return polylineMarkers(flagsOf(entity));
    if (entity.kind == "VERTEX") return vertexMarkers(flagsOf(entity), owner ? flagsOf(*owner) : 0);
    const auto* const row =
        std::find_if(std::begin(ROWS), std::end(ROWS), [&](const Row& r) { return r.kind == entity.kind; });
    return row == std::end(ROWS) ? DX_KEPT_MARKERS{} : row->markers;
}
