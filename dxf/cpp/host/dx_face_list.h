// Faces on their way to the host.
#pragma once

#include "dx_fixed.h"
#include "rpt.h"

/// How an edge runs to a point of a face.
enum DxEdge : int {
    DX_NO_EDGE = 0,      ///< the first point of a face, and points to which no edge runs
    DX_EDGE_SHOWN = 1,   ///< an edge
    DX_EDGE_HIDDEN = 2,  ///< an edge that isn't to be seen
    DX_EDGE_PENLESS = 3, ///< the same, without a pen
};

/// A face list: arrays that run in parallel over the points of all faces. A face's points repeat its first
/// point at the end. Points are world coordinates of the active space, ahead of the shift.
class DxFaceList {
public:
    DxFaceList(int pen, int lineType) : pen_(pen), lineType_(lineType) {}
    /// Makes room. 0 or the host's allocation error.
    int reserve(std::size_t points, std::size_t faces);
    /// For both, reserve() must have made room.
    void add(const RPT3& point, DxEdge edge);
    void endFace();
    /// A face of its own: `count` points with the one that repeats the first. 0 or an allocation error.
    int addFace(const RPT3* points, const DxEdge* edges, int count);

    std::size_t pointCount() const { return x_.size(); }
    std::size_t faceCount() const { return ends_.size(); }
    RPT3 point(std::size_t i) const { return {x_[i], y_[i], z_[i]}; }
    int end(std::size_t face) const { return ends_[face]; } ///< number of points up to the end of a face
    bool isShown(std::size_t i) const { return ops_[i] != 0 && invisible_[i] == 0; }
    bool isFinite() const;

    /// Gives the list to the active pattern and is of no more use then. An empty one is nothing. 0 or the
    /// host's error.
    int draw();
    /// Widens the extents by all points.
    void measure(void (*check)(double x, double y, double z)) const;

private:
    int pen_, lineType_;
    DxTable<double> x_, y_, z_;
    DxTable<int> ops_, pens_, lineTypes_, invisible_, ends_, facePens_;
};

/// Reserves the points of a face list in the active pattern, which may be a new one, and prepares it to carry
/// faces. Its number.
int DxNew3dElement(int pointCount);
/// Gives a face list in lengths of the host to a pattern, with the tolerance of faces set for the time of the
/// call. 0 or the host's error.
int Dxov3dgenflaeche(int* typeCode, int* pattern, int* one, int* faceCount, int* faceEnds, double* x,
                     double* y, double* z, double* none1, double* none2, double* none3, int* ops, int* pens,
                     int* lineTypes, int* invisible, int* facePens);
