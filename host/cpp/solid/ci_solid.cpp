// Solids by cursor: read from files, given out.
#include "ci_3d.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "services/failure.h"
#include "solid/sat_tokens.h"
#include "solid/solid_faces.h"
#include "solid/solid_wires.h"
#include "uo.h"
#include "ut.h"

#include <cmath>

using namespace host;

namespace {

constexpr int errorNoFile = 9001, answerWithoutBodies = 10;
constexpr std::size_t mostWirePoints = 4'000'000; ///< of a solid

bool readFile(const UtCString& path, std::string& data) {
    FILE* const stream = UtFileOpen(path, "rb");
    UT_FILE_VIEW view;
    if (!stream) return false;
    const bool isRead = UtFileMap(stream, view) == 0;
    if (isRead && view.data) data.assign(view.data, view.size);
    if (isRead) UtFileUnmap(view);
    UtFileClose(stream);
    return isRead;
}

/// False for a matrix that isn't one of numbers.
bool takePlace(const GeMat44& matrix, double factor, Solid& solid) {
    bool isSound = true;
    for (int row = 0; row < 4; ++row) {
        const double* const m = matrix.data()[row];
        solid.place[static_cast<std::size_t>(row)] = scaled({m[0], m[1], m[2]}, factor);
        isSound &= std::isfinite(m[0]) && std::isfinite(m[1]) && std::isfinite(m[2]);
    }
    return isSound;
}

void addWires(Solid& solid) {
    for (const std::vector<RPT3>& wire : solidWires(solid.data, mostWirePoints)) {
        for (std::size_t i = 0; i < wire.size(); ++i)
            solid.wires.addPoint(placed(solid, wire[i]), i ? EDGE : 0, solid.pen, solid.lineType);
        solid.wires.endFace(0);
    }
}

/// The pattern that the solid goes to; null when there is none.
Pattern* patternFor(int asSubObjects) {
    Drawing& drawing = openDrawing();
    Pattern* const active = drawing.active();
    if (!active || asSubObjects) return active;
    const int from = active->number;
    Pattern& made = drawing.addPattern(false);
    made.ids = drawing.find(from)->ids;
    drawing.activeNumber = made.number;
    UoCopyAllAttrs(from, made.number);
    return &made;
}

} // namespace

int Ci3d::ReadSatFileByParams(const UtCString& path, int pen, int lineType, MatDbKey material,
                              unsigned long /*materialNumber*/, const GeMat44& matrix, int /*part*/,
                              int asSubObjects) {
    if (callFails()) return errorNoMemory;
    Solid solid;
    if (!readFile(path, solid.data)) return errorNoFile;
    if (splitSat(solid.data).records.empty() || !takePlace(matrix, contextFactor(contextId_), solid))
        return errorNotApplicable;
    Pattern* const pattern = patternFor(asSubObjects);
    if (!pattern) return errorNoSuchObject;
    solid.pen = pen;
    solid.lineType = lineType;
    solid.material = static_cast<std::int64_t>(material.id);
    addWires(solid);
    const bool isShown = !solid.wires.ends.empty();
    pattern->solids.push_back(std::move(solid));
    ++openDrawing().elementCount;
    return isShown ? 0 : answerWithoutBodies;
}

int Ci3d::GetSolid(const DsCsr& cursor, int index, CI_SOLID* solid) const {
    if (callFails()) return errorNoMemory;
    const Pattern* const pattern = openDrawing().find(cursor.Get().patNo);
    if (!pattern || index < 0 || static_cast<std::size_t>(index) >= pattern->solids.size())
        return errorNoSuchObject;
    const Solid& found = pattern->solids[static_cast<std::size_t>(index)];
    const double factor = 1 / contextFactor(contextId_);
    *solid = {found.data, {}, found.pen, found.lineType};
    for (std::size_t row = 0; row < 4; ++row) {
        const RPT3 r = scaled(found.place[row], factor);
        solid->matrix[row][0] = r.x, solid->matrix[row][1] = r.y, solid->matrix[row][2] = r.z;
    }
    solid->matrix[3][3] = 1;
    return 0;
}
