#include "dx_face_list.h"

#include "../session/session_state.h"
#include "ds.h"
#include "dx_frame.h"
#include "dx_host.h"
#include "ov_3d.h"

#include <climits>
#include <cmath>

int DxFaceList::reserve(std::size_t points, std::size_t faces) {
    if (points > INT_MAX) return 1001;
    for (DxTable<double>* table : {&x_, &y_, &z_})
        if (const int error = table->reserve(points)) return error;
    for (DxTable<int>* table : {&ops_, &pens_, &lineTypes_, &invisible_})
        if (const int error = table->reserve(points)) return error;
    if (const int error = ends_.reserve(faces)) return error;
    return facePens_.reserve(faces);
}

void DxFaceList::add(const RPT3& point, DxEdge edge) {
    x_.add(point.x);
    y_.add(point.y);
    z_.add(point.z);
    ops_.add(edge == DX_NO_EDGE ? 0 : 1);
    pens_.add(edge == DX_EDGE_PENLESS ? 0 : pen_);
    lineTypes_.add(lineType_);
    invisible_.add(edge == DX_EDGE_HIDDEN || edge == DX_EDGE_PENLESS ? 1 : 0);
}

void DxFaceList::endFace() {
    ends_.add(static_cast<int>(x_.size()));
    facePens_.add(pen_);
}

int DxFaceList::addFace(const RPT3* points, const DxEdge* edges, int count) {
    const std::size_t needed = x_.size() + static_cast<std::size_t>(count);
    if (needed > INT_MAX) return 1001;
    if (needed > x_.capacity())
        if (const int error = reserve(needed + needed / 2, ends_.size() + ends_.size() / 2 + 8)) return error;
    if (ends_.size() == ends_.capacity())
        if (const int error = reserve(needed, ends_.size() + ends_.size() / 2 + 8)) return error;
    for (int i = 0; i < count; ++i) add(points[i], edges[i]);
    endFace();
    return 0;
}

bool DxFaceList::isFinite() const {
    for (std::size_t i = 0; i < x_.size(); ++i)
        if (!std::isfinite(x_[i]) || !std::isfinite(y_[i]) || !std::isfinite(z_[i])) return false;
    return true;
}

void DxFaceList::measure(void (*check)(double x, double y, double z)) const {
    for (std::size_t i = 0; i < x_.size(); ++i) check(x_[i], y_[i], z_[i]);
}

int DxFaceList::draw() {
    if (ends_.empty()) return 0;
    for (std::size_t i = 0; i < x_.size(); ++i) {
        const RPT3 host = DxPointToHost(point(i));
        x_[i] = host.x;
        y_[i] = host.y;
        z_[i] = host.z;
        for (double* value : {&x_[i], &y_[i], &z_[i]}) Uo3dWertUserToNm(value);
    }
    int typeCode = 16428, one = 1, faces = static_cast<int>(ends_.size());
    int pattern = DxNew3dElement(static_cast<int>(x_.size()));
    return Dxov3dgenflaeche(&typeCode, &pattern, &one, &faces, ends_.begin(), x_.begin(), y_.begin(),
                            z_.begin(), nullptr, nullptr, nullptr, ops_.begin(), pens_.begin(),
                            lineTypes_.begin(), invisible_.begin(), facePens_.begin());
}

int DxNew3dElement(int pointCount) {
    const int active = DxPolyFillActive;
    DxPolyFillActive = 0;
    DxNewElement(pointCount);
    DxPolyFillActive = active;
    if (DxActPatIndex < 0) return DxActPat;
    DX_PAT_ENTRY& entry = DxPatTable[static_cast<std::size_t>(DxActPatIndex)];
    if (pointCount > 0 && entry.faces3d == 0) {
        Uo3dInitSonder(5, 0.0, DxActPat, 0, &DxActPat);
        _ObObject* const object = DsObListGetOb(DxActPat);
        DsResetFlag(object, 1);
        DsResetFlag(object, 2);
    }
    entry.faces3d += pointCount;
    return DxActPat;
}

int Dxov3dgenflaeche(int* typeCode, int* pattern, int* one, int* faceCount, int* faceEnds, double* x,
                     double* y, double* z, double* none1, double* none2, double* none3, int* ops, int* pens,
                     int* lineTypes, int* invisible, int* facePens) {
    if (const int error = DxCiElemDrawPat()) return error;
    double tolerance = DxScale * 1000.0;
    ov3dgenepsi(&tolerance);
    const int result = ov3dgenflaeche(typeCode, pattern, one, faceCount, faceEnds, x, y, z, none1, none2,
                                      none3, ops, pens, lineTypes, invisible, facePens);
    ov3dgenepsi(&tolerance);
    return result;
}
