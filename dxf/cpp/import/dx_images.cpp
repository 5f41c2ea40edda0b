#include "dx_images.h"

#include "../config/config_state.h"
#include "../host/dx_host_image.h"
#include "../host/host_state.h"
#include "../session/dx_documents.h"
#include "../session/dx_messages.h"
#include "../session/dx_protocol.h"
#include "../session/session_state.h"
#include "dx_transform.h"
#include "image_state.h"
#include "import_state.h"
#include "mt.h"

#include <cmath>

namespace {

/// A picture as the host places it: rows count from the top.
struct Placement {
    RPT3 origin, u, v; ///< upper left corner, upper edge, left edge downward
};

Placement placementOf(const DX_IMAGE_TYPE& image, const Mat44 m) {
    const auto corner = [&](double along, double up) {
        RPT3 p{image.insertion.x + along * image.uVector.x + up * image.vVector.x,
               image.insertion.y + along * image.uVector.y + up * image.vVector.y,
               image.insertion.z + along * image.uVector.z + up * image.vVector.z};
        DxTrans3DRpt(&p, m);
        return p;
    };
    const RPT3 p = corner(0, 0), pu = corner(image.pixelsX, 0), pv = corner(0, image.pixelsY);
    return {pv, {pu.x - p.x, pu.y - p.y, pu.z - p.z}, {p.x - pv.x, p.y - pv.y, p.z - pv.z}};
}

/// What shows of the picture, in parts of its width and height; empty: all.
std::vector<RPT> boundaryOf(const DX_IMAGE_TYPE& image) {
    constexpr int clips = 4, rectangle = 1;
    if (!DxClipImages || !image.clipping || !(image.flags & clips)) return {};
    std::vector<RPT> points = image.boundary;
    if (image.boundaryKind == rectangle && points.size() == 2)
        points = {points[0], {points[1].x, points[0].y}, points[1], {points[0].x, points[1].y}};
    for (RPT& p : points) {
        p = {(p.x + 0.5) / image.pixelsX, (p.y + 0.5) / image.pixelsY};
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) return {};
    }
    return points;
}

/// The file of a definition, found by the search rules. False, with a report, when there is none.
bool findFile(const UtCString& name, UtCString& path) {
    path = name;
    const bool found = DxReadFindPath(path) == 0 && UtIsFile(path);
    DxReport.images.push_back({name.str(), found});
    if (!found) DxProtoMsg(DxMsg(5809, path.c_str()), 1);
    return found;
}

bool hasSize(const RPT3& vector) {
    constexpr double shortest = 0.0001;
    return std::hypot(vector.x, vector.y, vector.z) > shortest;
}

} // namespace

int DxImageQueueAdd(const DX_IMAGE_TYPE* image, const Mat44 m, int patIndex) {
    DX_QUEUED_IMAGE& entry = DxImageQueue.emplace_back();
    entry.image = *image;
    Mt44Copy(m, entry.matrix);
    entry.patIndex = patIndex;
    return 0;
}

int DxImageQueueDraw() {
    for (const DX_QUEUED_IMAGE& entry : DxImageQueue)
        if (const int error = DxCiDrawImage(&entry.image, entry.matrix, entry.patIndex)) return error;
    return 0;
}

void DxImageQueueFree() {
    DxImageQueue.clear();
}

int DxCiDrawImage(const DX_IMAGE_TYPE* image, const Mat44 m, int patIndex) {
    Placement place = placementOf(*image, m);
    const DX_IMAGE_DEF_TYPE* definition =
        DxDocuments.requireCurrent().objects.imageDef(image->imageDefHandle);
    if (!definition || definition->fileName.IsEmpty()) return 0;
    UtCString path;
    if (!findFile(definition->fileName, path)) return 0;
    if (DxModus != 3) place.origin.z = place.u.z = place.v.z = 0;
    if (!hasSize(place.u) || !hasSize(place.v)) {
        DxProtoMsg(DxMsg(5778, path.c_str()), 1);
        return 0;
    }
    const int number = DxPatTable[static_cast<std::size_t>(patIndex)].number;
    return DxovAddBitmap(number, path, place.origin, place.u, place.v, boundaryOf(*image));
}
