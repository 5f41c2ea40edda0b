// CiDrawing, CiWork: the drawing as a file, its georeference and work planes.
#include "ci.h"

#include "drawing/context.h"
#include "drawing/host_state.h"
#include "drawing/objects.h"
#include "ge.h"
#include "services/failure.h"

using namespace host;

// ---- the drawing as a file -------------------------------------------------------------------------

int CiDrawing::StoreWorkFile(int /*mode*/) {
    if (callFails()) return errorNoMemory;
    DrawingState& state = drawingState();
    state.workFile = state.drawing;
    state.workFileName = "work:" + state.drawing.fileName;
    return 0;
}

int CiDrawing::ReadWorkFile(const UtCString& name, int /*mode*/) {
    DrawingState& state = drawingState();
    if (callFails() || !state.workFile || name.str() != state.workFileName) return errorNoSuchObject;
    state.drawing = *state.workFile;
    state.chainRow = -1;
    return 0;
}

UtCString CiDrawing::GetLastWorkFileName() const {
    return drawingState().workFileName;
}

UtCString CiDrawing::GetLockFileName() const {
    return drawingState().lockFileName;
}

int CiDrawing::UnlockDrawing() {
    if (callFails()) return errorNoMemory;
    drawingState().lockFileName.clear();
    return 0;
}

int CiDrawing::CheckReadLock(const UtCString& name) {
    if (callFails()) return errorNoMemory;
    drawingState().lockFileName = name.str();
    return 0;
}

UtCString CiDrawing::GetLastFileName() const {
    return openDrawing().fileName;
}

int CiDrawing::SetLastFileName(const UtCString& name) {
    if (callFails()) return errorNoMemory;
    openDrawing().fileName = name.str();
    return 0;
}

int CiDrawing::SetLastInterfaceIds(_ObObject* const* objects, int count) {
    if (callFails()) return errorNoMemory;
    std::vector<int>& ids = openDrawing().lastInterfaceIds;
    ids.clear();
    for (int i = 0; i < count; ++i)
        if (const int number = patternOf(objects[i])) ids.push_back(number);
    return 0;
}

// ---- georeference ----------------------------------------------------------------------------------

int CiDrawing::ActGeoRef(RPT* point, double* x, double* y, double* angle) {
    const GeoReference& reference = openDrawing().geoReference;
    if (callFails() || !reference.set) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    *point = {reference.point.x * back, reference.point.y * back};
    *x = reference.x * back;
    *y = reference.y * back;
    *angle = reference.angle;
    return 0;
}

int CiDrawing::SetGeoRef(int /*mode*/, const RPT& point, double x, double y, double angle, double height,
                         int /*kind*/) {
    if (callFails()) return errorNoMemory;
    const double factor = contextFactor(contextId_);
    openDrawing().geoReference = {true, scaled({point.x, point.y, height}, factor), x * factor, y * factor,
                                  angle};
    return 0;
}

// ---- work planes -----------------------------------------------------------------------------------

int CiWork::Add(int* id, const RPT3& a, const RPT3& b, const RPT3& c) {
    if (callFails()) return errorNoMemory;
    const double factor = contextFactor(contextId_);
    Drawing& drawing = openDrawing();
    *id = drawing.nextWorkId++;
    drawing.workPlanes[*id] = {scaled(a, factor), scaled(b, factor), scaled(c, factor)};
    return 0;
}

int CiWork::GetMat(int id, Mat44 matrix) {
    const auto found = openDrawing().workPlanes.find(id);
    if (callFails() || found == openDrawing().workPlanes.end()) return errorNoSuchObject;
    const double back = 1 / contextFactor(contextId_);
    const WorkPlane& plane = found->second;
    GeMat44(scaled(plane.a, back), scaled(plane.b, back), scaled(plane.c, back)).CopyTo(matrix);
    return 0;
}
