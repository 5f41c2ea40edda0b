// The wall of an upright cylinder, as the host makes it.
#pragma once

#include "dx_face_list.h"

/// About the z axis, from angle 0 on, its foot at z 0.
class DxWall {
public:
    /// `span` in radians, 0 a full circle.
    DxWall(double height, double radius, double span);
    ~DxWall();
    DxWall(const DxWall&) = delete;
    DxWall& operator=(const DxWall&) = delete;
    int result() const { return result_; } ///< 0, 3011 for values that make none, or the host's error

    /// Adds its faces, each point through `m`. 0 or an allocation error.
    int addTo(DxFaceList& list, const Mat44 m) const;

private:
    int result_ = 0, faces_ = 0, total_ = 0;
    double *x_ = nullptr, *y_ = nullptr, *z_ = nullptr, *none_[3] = {};
    int *pens_ = nullptr, *lineTypes_ = nullptr, *invisible_ = nullptr, *ops_ = nullptr, *ends_ = nullptr;
};
