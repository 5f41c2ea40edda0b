// ARC and CIRCLE in space: walls of cylinders.
#include "../config/dx_pens.h"
#include "../import/dx_entity_base.h"
#include "../import/dx_insert_import.h"
#include "../import/dx_transform.h"
#include "dx_space_import.h"
#include "dx_space_strip.h"
#include "mt.h"
#include "ov_3d.h"
#include "ut.h"

namespace {

constexpr double radiansADegree = 0.017453292519943295;
constexpr double fullTurn = 6.283185307179586;

/// The wall of a cylinder as the host makes it, about the z axis from angle 0 on.
class Wall {
public:
    /// `span` in radians, 0 a full circle.
    Wall(double height, double radius, double span) {
        int resolution = 0;
        result_ = Uo3dAufloesung(20, &resolution);
        if (result_) return;
        result_ =
            UoGen3DZylinder(resolution, height, radius, span, 0, &x_, &y_, &z_, &none_[0], &none_[1],
                            &none_[2], &pens_, &lineTypes_, &invisible_, &ops_, &ends_, &faces_, &total_);
    }
    ~Wall() {
        for (double** array : {&x_, &y_, &z_, &none_[0], &none_[1], &none_[2]}) free(*array);
        for (int** array : {&pens_, &lineTypes_, &invisible_, &ops_, &ends_}) free(*array);
    }
    Wall(const Wall&) = delete;
    Wall& operator=(const Wall&) = delete;
    int result() const { return result_; }

    /// Adds its faces, each point through `m`. 0 or an allocation error.
    int addTo(DxFaceList& list, const Mat44 m) const {
        const int points = faces_ > 0 ? ends_[faces_ - 1] : 0;
        if (const int error =
                list.reserve(static_cast<std::size_t>(points), static_cast<std::size_t>(faces_)))
            return error;
        for (int face = 0, i = 0; face < faces_; ++face) {
            for (; i < ends_[face]; ++i) {
                RPT3 point{x_[i], y_[i], z_[i]};
                DxTrans3DRpt(&point, m);
                list.add(point, ops_[i] == 0 ? DX_NO_EDGE : invisible_[i] ? DX_EDGE_HIDDEN : DX_EDGE_SHOWN);
            }
            list.endFace();
        }
        return 0;
    }

private:
    template <class T>
    static void free(T* array) {
        void* block = array;
        if (block) UtFreeMemory(&block);
    }
    int result_ = 0, faces_ = 0, total_ = 0;
    double *x_ = nullptr, *y_ = nullptr, *z_ = nullptr, *none_[3] = {};
    int *pens_ = nullptr, *lineTypes_ = nullptr, *invisible_ = nullptr, *ops_ = nullptr, *ends_ = nullptr;
};

/// Gives the wall, turned by `turn` degrees and moved to its centre, to the host.
int drawWall(const DX_ENTITY_BASE_TYPE& base, const Wall& wall, const RPT3& centre, double turn,
             const double extrusion[3], bool isThick, const Mat44 m) {
    int pen = 0, lineType = 0;
    if (!DxPenLtToCAD(&base, &pen, &lineType)) return 0;
    if (const int error = DxSetPenLt(pen, lineType)) return error;
    if (wall.result()) return wall.result() == 3011 ? 0 : wall.result();
    Mat44 placed, storage;
    DxRefRotMat3D(centre, turn, placed);
    Mt44Concat(placed, DxObjectMatrix(extrusion, m, storage), placed);
    DxFaceList faces(pen, lineType);
    if (const int error = wall.addTo(faces, placed)) return error;
    return DxFinishFaces(faces, isThick);
}

} // namespace

int DxDraw3dCircle(const DX_CIRCLE_TYPE* rec, const Mat44 m) {
    return drawWall(rec->base, Wall(rec->thickness, rec->radius, 0), rec->centre, 0, rec->extrusion,
                    rec->thickness != 0, m);
}

int DxDraw3dArc(const DX_ARC_TYPE* rec, const Mat44 m) {
    double span = (rec->endAngle - rec->startAngle) * radiansADegree;
    if (span < 0) span += fullTurn;
    return drawWall(rec->base, Wall(rec->thickness, rec->radius, span), rec->centre, rec->startAngle,
                    rec->extrusion, rec->thickness != 0, m);
}
