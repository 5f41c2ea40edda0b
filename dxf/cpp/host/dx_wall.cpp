#include "dx_wall.h"

#include "mt.h"
#include "ov_3d.h"
#include "ut.h"

DxWall::DxWall(double height, double radius, double span) {
    int resolution = 0;
    result_ = Uo3dAufloesung(20, &resolution);
    if (result_) return;
    result_ = UoGen3DZylinder(resolution, height, radius, span, 0, &x_, &y_, &z_, &none_[0], &none_[1],
                              &none_[2], &pens_, &lineTypes_, &invisible_, &ops_, &ends_, &faces_, &total_);
}

template <class T>
static void freeArray(T* array) {
    void* block = array;
    if (block) UtFreeMemory(&block);
}

DxWall::~DxWall() {
    for (double* array : {x_, y_, z_, none_[0], none_[1], none_[2]}) freeArray(array);
    for (int* array : {pens_, lineTypes_, invisible_, ops_, ends_}) freeArray(array);
}

int DxWall::addTo(DxFaceList& list, const Mat44 m) const {
    const int points = faces_ > 0 ? ends_[faces_ - 1] : 0;
    if (const int error = list.reserve(static_cast<std::size_t>(points), static_cast<std::size_t>(faces_)))
        return error;
    for (int face = 0, i = 0; face < faces_; ++face) {
        for (; i < ends_[face]; ++i) {
            RPT3 point{x_[i], y_[i], z_[i]};
            Mt44MultRpt3(point, m, &point);
            list.add(point, ops_[i] == 0 ? DX_NO_EDGE : invisible_[i] ? DX_EDGE_HIDDEN : DX_EDGE_SHOWN);
        }
        list.endFace();
    }
    return 0;
}
