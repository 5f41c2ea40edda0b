#include "mt.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

// A pivot this small beside the entries of its row and its column is the rounding of zero.
static constexpr double kSingular = 1e-14;

// ---- 4 by 4 ----------------------------------------------------------------------------------------

void Mt44Ident(Mat44 m) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) m[i][j] = i == j ? 1.0 : 0.0;
}

void Mt44Copy(const Mat44 from, Mat44 to) {
    std::memmove(to, from, sizeof(Mat44));
}

void Mt44Concat(const Mat44 a, const Mat44 b, Mat44 result) {
    Mat44 product;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            product[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j] + a[i][3] * b[3][j];
    Mt44Copy(product, result);
}

namespace {

// One system row: a column of the matrix (so that an affine matrix is solved block by block and a far
// translation costs no precision) and the matching row of the unit matrix behind it.
struct SystemRow {
    double v[8];
};

double largestInRow(const Mat44 m, int i) {
    return std::max({std::fabs(m[i][0]), std::fabs(m[i][1]), std::fabs(m[i][2]), std::fabs(m[i][3])});
}

double largestInColumn(const SystemRow& row) {
    return std::max({std::fabs(row.v[0]), std::fabs(row.v[1]), std::fabs(row.v[2]), std::fabs(row.v[3])});
}

void eliminate(SystemRow rows[4], int pivot) {
    SystemRow& p = rows[pivot];
    const double scale = 1.0 / p.v[pivot];
    for (double& v : p.v) v *= scale;
    for (int r = 0; r < 4; ++r) {
        const double f = rows[r].v[pivot];
        if (r == pivot || f == 0.0) continue;
        for (int c = 0; c < 8; ++c) rows[r].v[c] -= f * p.v[c];
    }
}

} // namespace

int Mt44Invert(const Mat44 m, Mat44 result) {
    SystemRow rows[4];
    double size[4];
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            rows[i].v[j] = m[j][i];
            rows[i].v[4 + j] = i == j ? 1.0 : 0.0;
        }
        size[i] = largestInColumn(rows[i]);
    }
    for (int k = 0; k < 4; ++k) {
        int best = k;
        for (int r = k + 1; r < 4; ++r)
            if (std::fabs(rows[r].v[k]) > std::fabs(rows[best].v[k])) best = r;
        const double pivot = std::fabs(rows[best].v[k]);
        if (!(pivot > kSingular * std::min(size[best], largestInRow(m, k))) || !std::isfinite(pivot))
            return 3011;
        std::swap(rows[k], rows[best]);
        std::swap(size[k], size[best]);
        eliminate(rows, k);
    }
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j) result[j][i] = rows[i].v[4 + j];
    return 0;
}

void Mt44MakeRotate(int axis, double angle, Mat44 m) {
    Mt44Ident(m);
    if (axis < 0 || axis > 2) return;
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    m[u][u] = m[v][v] = std::cos(angle);
    m[u][v] = std::sin(angle);
    m[v][u] = -m[u][v];
}

void Mt44MultRpt3(const RPT3& point, const Mat44 m, RPT3* result) {
    const RPT3 p = point;
    result->x = p.x * m[0][0] + p.y * m[1][0] + p.z * m[2][0] + m[3][0];
    result->y = p.x * m[0][1] + p.y * m[1][1] + p.z * m[2][1] + m[3][1];
    result->z = p.x * m[0][2] + p.y * m[1][2] + p.z * m[2][2] + m[3][2];
}

void Mt44MultRpt3Vec(const RPT3& vector, const Mat44 m, RPT3* result) {
    const RPT3 v = vector;
    result->x = v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0];
    result->y = v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1];
    result->z = v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2];
}

// ---- plane -----------------------------------------------------------------------------------------

void MtIdentMat(Mat32 m) {
    m[0][0] = m[1][1] = 1.0;
    m[0][1] = m[1][0] = m[2][0] = m[2][1] = 0.0;
}

int MtInvertMat(const Mat32 m, Mat32 result) {
    const double det = m[0][0] * m[1][1] - m[0][1] * m[1][0];
    const double size = std::hypot(m[0][0], m[0][1]) * std::hypot(m[1][0], m[1][1]);
    if (!(std::fabs(det) > kSingular * size) || !std::isfinite(det)) return 3011;
    const Mat32 inverse = {
        {m[1][1] / det, -m[0][1] / det},
        {-m[1][0] / det, m[0][0] / det},
        {(m[1][0] * m[2][1] - m[1][1] * m[2][0]) / det, (m[0][1] * m[2][0] - m[0][0] * m[2][1]) / det}};
    std::memcpy(result, inverse, sizeof(Mat32));
    return 0;
}

bool MtIsMirrored(const Mat32 m) {
    return m[0][0] * m[1][1] - m[0][1] * m[1][0] < 0.0;
}

double MtGetScale(const Mat32 m) {
    return std::hypot(m[0][0], m[0][1]);
}

double MtGetRot(const Mat32 m) {
    return std::atan2(m[0][1], m[0][0]);
}

void MtTransRPt(const RPT& point, const Mat32 m, RPT* result) {
    const RPT p = point;
    result->x = p.x * m[0][0] + p.y * m[1][0] + m[2][0];
    result->y = p.x * m[0][1] + p.y * m[1][1] + m[2][1];
}

double MtTransRad(double radius, const Mat32 m) {
    return radius * MtGetScale(m);
}
