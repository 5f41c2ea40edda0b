// Polyface meshes: vertices, and faces that name up to four of them by number.
#include "../config/config_state.h"
#include "../import/dx_entity_base.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_mesh_faces.h"
#include "dx_space_import.h"

#include <cstdlib>

namespace {

enum VertexFlags { MESH_VERTEX = 64, FACE_RECORD = 128 };

/// The vertex that a face names by a number from 1 on, negative for an invisible edge; null for none.
const DX_VERTEX_TYPE* vertexOf(const DX_POLYLINE_TYPE& mesh, int number) {
    const long long index = std::llabs(static_cast<long long>(number)) - 1;
    if (index < 0 || index >= static_cast<long long>(mesh.vertices.size())) return nullptr;
    const DX_VERTEX_TYPE& vertex = mesh.vertices[static_cast<std::size_t>(index)];
    return vertex.flags & (MESH_VERTEX | FACE_RECORD) ? &vertex : nullptr;
}

void copyBase(const DX_POLYLINE_TYPE& mesh, const DX_VERTEX_TYPE& vertex, DX_ENTITY_BASE_TYPE* base) {
    const auto style = static_cast<std::size_t>(vertex.style);
    const bool isOwn = vertex.style >= 0 && style < mesh.styles.size();
    DxCopyEntityBase(base, isOwn ? &mesh.styles[style] : &mesh.base);
    if (base->lineType.empty()) base->lineType = mesh.base.lineType;
    if (base->color == -1) base->color = mesh.base.color;
}

} // namespace

static bool isFace(const DX_VERTEX_TYPE& vertex) {
    return (vertex.flags & (MESH_VERTEX | FACE_RECORD)) == FACE_RECORD;
}

bool DxPolyfaceOf(const DX_POLYLINE_TYPE& mesh, const DX_VERTEX_TYPE& vertex, DX_3DFACE_TYPE* face) {
    if (!isFace(vertex)) return false;
    const int numbers[4] = {vertex.face1, vertex.face2, vertex.face3, vertex.face4};
    face->edgeFlags = 0;
    for (int k = 0; k < 4; ++k) {
        if (const DX_VERTEX_TYPE* corner = vertexOf(mesh, numbers[k])) {
            face->corners[k] = corner->location;
            if (numbers[k] < 0) face->edgeFlags |= 1 << k;
        } else if (k == 0) {
            return false;
        } else {
            face->corners[k] = face->corners[k - 1];
        }
    }
    copyBase(mesh, vertex, &face->base);
    return true;
}

int DxDrawPolyNet(const DX_POLYLINE_TYPE* polyline, const Mat44 m) {
    DX_3DFACE_TYPE face;
    int dropped = 0, endless = 0;
    for (const DX_VERTEX_TYPE& vertex : polyline->vertices) {
        if (!DxPolyfaceOf(*polyline, vertex, &face)) {
            dropped += isFace(vertex);
            continue;
        }
        endless += !DxIsFiniteFace(face, m);
        // With DxMeshEdges on, the flat stage has drawn the edges of all faces.
        if (!DxMeshEdges && DxDrawsPlan())
            if (const int error = DxDrawFace(&face, m)) return error;
        if (DxModus != 3) continue;
        if (const int error = DxDraw3Dface(&face, m)) return error;
    }
    if (dropped > 0 && !DxCheckPass)
        DxProtoMsg(UtFormatMsg("%d faces of a polyface mesh begin at no vertex of it.",
                               "%d faces of a polyface mesh begin at no vertex of it.", dropped),
                   0);
    DxTellEndlessFaces(endless);
    return 0;
}
