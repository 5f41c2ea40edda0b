// Placement of blocks.
#include "dx_blocks.h"
#include "dx_insert_import.h"
#include "dx_transform.h"
#include "mt.h"

#include <cmath>

static constexpr double radiansADegree = 0.017453292519943295;
static constexpr int notApplicable = 3011;

/// A factor of 0 counts as 1.
static double factor(double scale) {
    return scale == 0 ? 1 : scale;
}

int DxTranslateMat3D(double x, double y, double z, Mat44 m) {
    m[3][0] = x;
    m[3][1] = y;
    m[3][2] = z;
    return 0;
}

int DxRefRotMat3D(const RPT3& origin, double angle, Mat44 out) {
    Mt44MakeRotate(2, angle * radiansADegree, out);
    return DxTranslateMat3D(origin.x, origin.y, origin.z, out);
}

int DxRefScaleMat3D(const RPT3& origin, double sx, double sy, double sz, Mat44 out) {
    Mt44Ident(out);
    out[0][0] = sx;
    out[1][1] = sy;
    out[2][2] = sz;
    return DxTranslateMat3D(origin.x, origin.y, origin.z, out);
}

int DxInsertBlockTrans(const DX_INSERT_TYPE* insert, const DX_BLOCK_TYPE* block, const Mat44 parent,
                       Mat44 out) {
    if (!block) return notApplicable;
    Mat44 scale, placed, toWorld;
    DxRefScaleMat3D({0, 0, 0}, factor(insert->scaleX), factor(insert->scaleY), factor(insert->scaleZ), scale);
    DxRefRotMat3D(insert->position, insert->rotation, placed);
    Mt44Concat(scale, placed, out);
    Mt44Concat(out, DxObjectMatrix(insert->extrusion, parent, toWorld), out);
    const RPT3& b = block->base;
    for (int column = 0; column < 3; ++column)
        out[3][column] -= b.x * out[0][column] + b.y * out[1][column] + b.z * out[2][column];
    return 0;
}

int DxReadInsertMatrix(const DX_INSERT_TYPE* insert, Mat44 m) {
    DX_SAVE save;
    DxSaveActPos(&save);
    DxfEntityFileReference reference;
    DxGetBlock(insert->blockName.view(), reference);
    Mat44 parent;
    Mt44Copy(m, parent);
    const int error = DxInsertBlockTrans(insert, reference.block, parent, m);
    if (reference.place) reference.place->Disarm();
    const int restored = DxRestoreActPos(&save);
    return error ? error : restored;
}
